#include "tour/Days.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include "app/modMain.h"
#include "hub/frmFinal.h"
#include "patients/frmPatientList.h"
#include "toolkit/FileNames.h"
#include "toolkit/ListView.h"

using namespace Qt::StringLiterals;

void Day::TypeLogIn(const QString& user, const QString& password) {
    auto* box = Tour::Find<QLineEdit>("txtUser");
    box->clear();
    Tour::Type(box, user);
    Tour::Press(Qt::Key_Tab);
    Tour::Type(Tour::Find<QLineEdit>("txtPassword"), password);
    Tour::Press(Qt::Key_Return);
}

void Day::LogIn(const NurseLogIn& nurse) {
    Step(u"start"_s, [this] { m_frame = modMain::Main(); });
    Step(u"log-in refused"_s, [this, nurse] {
        auto* sources = Tour::Find<QComboBox>("cboSource");
        if (!nurse.Source.isEmpty())
            Tour::Type(sources, nurse.Source);
        TypeLogIn(nurse.User, u"not the password"_s);
    });
    Quietly(u"the refusal is told"_s, [this] {
        Expect(Tour::Find<QLabel>("lblRefusal")->isVisible(), u"nothing told of the refusal"_s);
    });
    Quietly(u"log-in"_s, [this, nurse] { TypeLogIn(nurse.User, nurse.Password); });
    Step(u"first list"_s, [this] {
        Expect(m_frame != nullptr, u"the main window did not open"_s);
        Expect(ShownRows() > 0, u"the first list is empty"_s);
    });
}

void Day::SearchFor(const QString& step, const char* box, const QString& text) {
    Step(step, [=, this] {
        for (const char* other : {"txtIdNum", "txtHospNum", "txtLastName"})
            Tour::Find<QLineEdit>(other)->clear();
        Tour::Type(Tour::Find<QLineEdit>(box), text);
        Tour::Press(Qt::Key_Return);
        Expect(ShownRows() > 0, u"nobody was found"_s);
    });
}

void Day::PickType(const QString& step, const char* option, bool current) {
    Step(step, [=, this] {
        ListPatients(option, current, u"a"_s);
        Expect(ShownRows() > 0, u"the list is empty"_s);
    });
}

void Day::FindPatients() {
    PickType(u"all out-patients"_s, "OptPatientType1", false);
    SearchFor(u"search by last name"_s, "txtLastName", u"de"_s);
    SearchFor(u"search for an apostrophe"_s, "txtLastName", u"o'hara"_s);
    Step(u"search by hospital number"_s, [this] {
        const QString number = Patients().HospNum();
        Tour::Find<QLineEdit>("txtLastName")->clear();
        Tour::Type(Tour::Find<QLineEdit>("txtHospNum"), number);
        Tour::Press(Qt::Key_Return);
        Expect(Patients().HospNum() == number, u"another patient was found"_s);
    });
    Step(u"search by admission number"_s, [this] {
        const QString number = Patients().IdNum();
        Tour::Find<QLineEdit>("txtHospNum")->clear();
        Tour::Type(Tour::Find<QLineEdit>("txtIdNum"), number);
        Tour::Press(Qt::Key_Return);
        Expect(ShownRows() == 1 && Patients().IdNum() == number, u"another visit was found"_s);
    });
    Step(u"nobody found"_s, [this] {
        auto* box = Tour::Find<QLineEdit>("txtIdNum");
        box->clear();
        Tour::Type(box, u"%_'; DROP TABLE x --"_s);
        Tour::Press(Qt::Key_Return);
        Expect(ShownRows() == 0, u"somebody was found"_s);
    });
    Quietly(u"empty search"_s, [] {
        Tour::Find<QLineEdit>("txtIdNum")->clear();
        Tour::Press(Qt::Key_Return);
    });
    Step(u"empty search is told"_s,
         [this] { Expect(Tour::Window() != m_frame.get(), u"no message"_s); });
    Quietly(u"message read"_s, [] { Tour::Press(Qt::Key_Return); });
    PickType(u"CAPD patients"_s, "OptPatientType0", false);
    PickType(u"ER patients"_s, "OptPatientType3", true);
    PickType(u"in-patients"_s, "OptPatientType2", true);
    PickType(u"out-patients of today"_s, "OptPatientType1", true);
}

void Day::ChoosePatients() {
    PickType(u"the register again"_s, "OptPatientType0", false);
    Step(u"sorted by last name"_s, [] {
        const QHeaderView* header = Tour::Find<toolkit::ListView>("lvwSearchPatient")->header();
        const QPoint lastName(header->sectionViewportPosition(3) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, lastName);
    });
    Step(u"chosen by the Down key"_s, [this] {
        Tour::Find<QLineEdit>("txtLastName")->setFocus();
        const QString before = Patients().IdNum();
        Tour::Press(Qt::Key_Down);
        Tour::Press(Qt::Key_Home);
        for (int press = 0; press < 3; ++press)
            Tour::Press(Qt::Key_Down);
        Expect(Patients().IdNum() != before, u"no other patient was chosen"_s);
        Expect(Tour::Find<QLabel>("lblChosenPatient")->text().contains(Patients().IdNum()),
               u"the status bar names nobody"_s);
    });
    Step(u"opened by Enter"_s, [this] {
        Tour::Press(Qt::Key_Return);
        Expect(Tour::Find<frmFinal>("frmFinal")->HospNum() == Patients().HospNum(),
               u"the hub shows another patient"_s);
    });
    Step(u"visit of a registered patient"_s, [this] {
        Tour::Press(Qt::Key_R, Qt::ControlModifier);
        ExpectTitle(u"Register Visit"_s);
    });
    Quietly(u"visit left"_s, [] {
        Tour::Press(Qt::Key_Escape);
        Tour::Press(Qt::Key_Return);
    });
}

void Day::PrintReport(const QString& title, const QString& file, bool dated,
                      std::function<void()> open) {
    Quietly(title + u" asked for"_s, std::move(open));
    if (dated) {
        Step(title + u" dates"_s, [] {
            auto* start = Tour::Find<QWidget>("dtStart");
            start->setFocus();
            Tour::Press(Qt::Key_Home);
            Tour::Press(Qt::Key_Down);
        });
        Quietly(title + u" entered"_s, [] { Tour::Press(Qt::Key_Return); });
    }
    SavePdf(title, title, file);
}

void Day::PrintReports() {
    PrintReport(u"CAPD Visits Report"_s, u"capd-visits.pdf"_s, true,
                [] { Tour::Press(Qt::Key_C, Qt::ControlModifier); });
    PrintReport(u"IncomeReport"_s, u"income.pdf"_s, true,
                [] { Tour::Press(Qt::Key_I, Qt::ControlModifier); });
    PrintReport(u"List of CAPD Patients"_s, u"capd-patients.pdf"_s, false,
                [this] { Frame().findChild<QAction*>(u"mnuCAPDPatients"_s)->trigger(); });
    Quietly(u"the frame is closed"_s, [this] {
        Frame().close();
        Expect(!Frame().isVisible(), u"the frame stayed"_s);
    });
}

mdiCAPD& Day::Frame() const {
    if (!m_frame)
        throw std::runtime_error("there is no main window");
    return *m_frame;
}

frmPatientList& Day::Patients() const {
    return Frame().PatientList();
}

int Day::ShownRows() const {
    return Frame().findChild<toolkit::ListView*>(u"lvwSearchPatient"_s)->model()->rowCount();
}
