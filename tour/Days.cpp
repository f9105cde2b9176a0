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

void Day::TypeLogIn(const QString& user, const QString& password) {
    auto* box = Tour::Find<QLineEdit>("txtUser");
    box->clear();
    Tour::Type(box, user);
    Tour::Press(Qt::Key_Tab);
    Tour::Type(Tour::Find<QLineEdit>("txtPassword"), password);
    Tour::Press(Qt::Key_Return);
}

void Day::LogIn(const NurseLogIn& nurse) {
    m_tour.Step(QStringLiteral("start"), [this] { m_frame = modMain::Main(); });
    m_tour.Step(QStringLiteral("log-in refused"), [this, nurse] {
        auto* sources = Tour::Find<QComboBox>("cboSource");
        if (!nurse.Source.isEmpty())
            Tour::Type(sources, nurse.Source);
        TypeLogIn(nurse.User, QStringLiteral("not the password"));
    });
    m_tour.Quietly(QStringLiteral("the refusal is told"), [this] {
        m_tour.Expect(Tour::Find<QLabel>("lblRefusal")->isVisible(),
                      QStringLiteral("nothing told of the refusal"));
    });
    m_tour.Quietly(QStringLiteral("log-in"),
                   [this, nurse] { TypeLogIn(nurse.User, nurse.Password); });
    m_tour.Step(QStringLiteral("first list"), [this] {
        m_tour.Expect(m_frame != nullptr, QStringLiteral("the main window did not open"));
        m_tour.Expect(ShownRows() > 0, QStringLiteral("the first list is empty"));
    });
}

void Day::SearchFor(const QString& step, const char* box, const QString& text) {
    m_tour.Step(step, [=, this] {
        for (const char* other : {"txtIdNum", "txtHospNum", "txtLastName"})
            Tour::Find<QLineEdit>(other)->clear();
        Tour::Type(Tour::Find<QLineEdit>(box), text);
        Tour::Press(Qt::Key_Return);
        m_tour.Expect(ShownRows() > 0, QStringLiteral("nobody was found"));
    });
}

void Day::PickType(const QString& step, const char* option, bool current) {
    m_tour.Step(step, [=, this] {
        auto* check = Tour::Find<QAbstractButton>("chkCurrent");
        if (check->isChecked() != current) {
            check->setFocus();
            Tour::Press(Qt::Key_Space);
        }
        auto* button = Tour::Find<QRadioButton>(option);
        button->setFocus();
        Tour::Press(Qt::Key_Space);
        for (const char* other : {"txtHospNum", "txtLastName"})
            Tour::Find<QLineEdit>(other)->clear();
        auto* box = Tour::Find<QLineEdit>("txtIdNum");
        box->clear();
        Tour::Type(box, QStringLiteral("a"));
        Tour::Press(Qt::Key_Return);
        m_tour.Expect(ShownRows() > 0, QStringLiteral("the list is empty"));
    });
}

void Day::FindPatients() {
    PickType(QStringLiteral("all out-patients"), "OptPatientType1", false);
    SearchFor(QStringLiteral("search by last name"), "txtLastName", QStringLiteral("de"));
    SearchFor(QStringLiteral("search for an apostrophe"), "txtLastName", QStringLiteral("o'hara"));
    m_tour.Step(QStringLiteral("search by hospital number"), [this] {
        const QString number = Patients().HospNum();
        Tour::Find<QLineEdit>("txtLastName")->clear();
        Tour::Type(Tour::Find<QLineEdit>("txtHospNum"), number);
        Tour::Press(Qt::Key_Return);
        m_tour.Expect(Patients().HospNum() == number, QStringLiteral("another patient was found"));
    });
    m_tour.Step(QStringLiteral("search by admission number"), [this] {
        const QString number = Patients().IdNum();
        Tour::Find<QLineEdit>("txtHospNum")->clear();
        Tour::Type(Tour::Find<QLineEdit>("txtIdNum"), number);
        Tour::Press(Qt::Key_Return);
        m_tour.Expect(ShownRows() == 1 && Patients().IdNum() == number,
                      QStringLiteral("another visit was found"));
    });
    m_tour.Step(QStringLiteral("nobody found"), [this] {
        auto* box = Tour::Find<QLineEdit>("txtIdNum");
        box->clear();
        Tour::Type(box, QStringLiteral("%_'; DROP TABLE x --"));
        Tour::Press(Qt::Key_Return);
        m_tour.Expect(ShownRows() == 0, QStringLiteral("somebody was found"));
    });
    m_tour.Quietly(QStringLiteral("empty search"), [] {
        Tour::Find<QLineEdit>("txtIdNum")->clear();
        Tour::Press(Qt::Key_Return);
    });
    m_tour.Step(QStringLiteral("empty search is told"), [this] {
        m_tour.Expect(Tour::Window() != m_frame.get(), QStringLiteral("no message"));
    });
    m_tour.Quietly(QStringLiteral("message read"), [] { Tour::Press(Qt::Key_Return); });
    PickType(QStringLiteral("CAPD patients"), "OptPatientType0", false);
    PickType(QStringLiteral("ER patients"), "OptPatientType3", true);
    PickType(QStringLiteral("in-patients"), "OptPatientType2", true);
    PickType(QStringLiteral("out-patients of today"), "OptPatientType1", true);
}

void Day::ChoosePatients() {
    PickType(QStringLiteral("the register again"), "OptPatientType0", false);
    m_tour.Step(QStringLiteral("sorted by last name"), [] {
        const QHeaderView* header = Tour::Find<toolkit::ListView>("lvwSearchPatient")->header();
        const QPoint lastName(header->sectionViewportPosition(3) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, lastName);
    });
    m_tour.Step(QStringLiteral("chosen by the Down key"), [this] {
        Tour::Find<QLineEdit>("txtLastName")->setFocus();
        const QString before = Patients().IdNum();
        Tour::Press(Qt::Key_Down);
        Tour::Press(Qt::Key_Home);
        for (int press = 0; press < 3; ++press)
            Tour::Press(Qt::Key_Down);
        m_tour.Expect(Patients().IdNum() != before, QStringLiteral("no other patient was chosen"));
        m_tour.Expect(Tour::Find<QLabel>("lblChosenPatient")->text().contains(Patients().IdNum()),
                      QStringLiteral("the status bar names nobody"));
    });
    m_tour.Step(QStringLiteral("opened by Enter"), [this] {
        Tour::Press(Qt::Key_Return);
        m_tour.Expect(Tour::Find<frmFinal>("frmFinal")->HospNum() == Patients().HospNum(),
                      QStringLiteral("the hub shows another patient"));
    });
    m_tour.Step(QStringLiteral("visit of a registered patient"), [this] {
        Tour::Press(Qt::Key_R, Qt::ControlModifier);
        m_tour.Expect(Tour::Window()->windowTitle() == QStringLiteral("Register Visit"),
                      QStringLiteral("the visit was refused"));
    });
    m_tour.Quietly(QStringLiteral("visit left"), [] {
        Tour::Press(Qt::Key_Escape);
        Tour::Press(Qt::Key_Return);
    });
}

void Day::PrintReport(const QString& title, const QString& file, bool dated,
                      std::function<void()> open) {
    m_tour.Quietly(title + QStringLiteral(" asked for"), std::move(open));
    if (dated) {
        m_tour.Step(title + QStringLiteral(" dates"), [] {
            auto* start = Tour::Find<QWidget>("dtStart");
            start->setFocus();
            Tour::Press(Qt::Key_Home);
            Tour::Press(Qt::Key_Down);
        });
        m_tour.Quietly(title + QStringLiteral(" entered"), [] { Tour::Press(Qt::Key_Return); });
    }
    m_tour.Step(title, [this, title] {
        m_tour.Expect(Tour::Window()->windowTitle() == title,
                      QStringLiteral("the viewer is not there"));
    });
    m_tour.Quietly(title + QStringLiteral(" saved"), [this, file] {
        toolkit::FileNameScript names;
        names.Answer(m_tour.File(file));
        Tour::Press(Qt::Key_S, Qt::ControlModifier);
        m_tour.Expect(names.Leftovers().isEmpty() && QFileInfo(m_tour.File(file)).size() > 1000,
                      QStringLiteral("no PDF was written"));
    });
    m_tour.Quietly(title + QStringLiteral(" closed"), [] { Tour::Press(Qt::Key_Escape); });
}

void Day::PrintReports() {
    PrintReport(QStringLiteral("CAPD Visits Report"), QStringLiteral("capd-visits.pdf"), true,
                [] { Tour::Press(Qt::Key_C, Qt::ControlModifier); });
    PrintReport(QStringLiteral("IncomeReport"), QStringLiteral("income.pdf"), true,
                [] { Tour::Press(Qt::Key_I, Qt::ControlModifier); });
    PrintReport(
        QStringLiteral("List of CAPD Patients"), QStringLiteral("capd-patients.pdf"), false,
        [this] { Frame().findChild<QAction*>(QStringLiteral("mnuCAPDPatients"))->trigger(); });
    m_tour.Quietly(QStringLiteral("the frame is closed"), [this] {
        Frame().close();
        m_tour.Expect(!Frame().isVisible(), QStringLiteral("the frame stayed"));
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
    return Frame()
        .findChild<toolkit::ListView*>(QStringLiteral("lvwSearchPatient"))
        ->model()
        ->rowCount();
}
