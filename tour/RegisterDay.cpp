#include "tour/RegisterDay.h"

#include <QApplication>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include "app/mdiCAPD.h"
#include "patients/frmPatientList.h"
#include "toolkit/DateEdit.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/ListView.h"
#include "visits/VisitChart.h"

namespace {

/// Key by key to whoever has the keyboard, and on.
void Enter(const QString& text) {
    if (!text.isEmpty())
        QTest::keyClicks(QApplication::focusWidget(), text);
    Tour::Press(Qt::Key_Return);
}

/// Chooses the option of the group that has the keyboard, and goes on.
void Choose(int option) {
    Tour::Press(Qt::Key_Space);
    for (int press = 0; press < option; ++press)
        Tour::Press(Qt::Key_Right);
    Tour::Press(Qt::Key_Return);
}

}  // namespace

void RegisterDay::Walk() {
    RegisterAPatient();
    ChangeTheSheet();
    RegisterAVisit();
    ReadVisits();
}

frmPatientList& RegisterDay::Patients() const {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* frame = qobject_cast<mdiCAPD*>(window))
            return frame->PatientList();
    throw std::runtime_error("there is no main window");
}

void RegisterDay::Choose(bool registered, const QString& butNot) {
    auto* list = Tour::Find<toolkit::ListView>("lvwSearchPatient");
    const auto fits = [&] {
        return Patients().CAPDNum().isEmpty() != registered && Patients().HospNum() != butNot;
    };
    if (!list->hasFocus())
        Tour::Press(Qt::Key_Down);
    m_tour.Expect(list->hasFocus(), QStringLiteral("the patient list has not the keys"));
    Tour::Press(Qt::Key_Home);
    for (int row = 1; row < list->model()->rowCount() && !fits(); ++row)
        Tour::Press(Qt::Key_Down);
    m_tour.Expect(fits(), QStringLiteral("there is no such patient in the list"));
}

void RegisterDay::ReadBox(const QString& step, const QString& said) {
    m_tour.Step(step, [this, said] {
        const QWidget* box = Tour::Window();
        m_tour.Expect(box->windowTitle() == QStringLiteral("Message"),
                      QStringLiteral("no message: ") + said);
    });
    m_tour.Quietly(step + QStringLiteral(" is read"), [] { Tour::Press(Qt::Key_Return); });
}

void RegisterDay::LeaveWindow(const QString& step) {
    m_tour.Quietly(step, [this] {
        Tour::Press(Qt::Key_Escape);
        Tour::Press(Qt::Key_Return);
        m_tour.Expect(QApplication::activeModalWidget() == nullptr,
                      QStringLiteral("the window stayed"));
    });
}

void RegisterDay::RegisterAPatient() {
    m_tour.Step(QStringLiteral("new registration"), [this] {
        Choose(false);
        Tour::Press(Qt::Key_N, Qt::ControlModifier);
        m_tour.Expect(Tour::Window()->windowTitle() == QStringLiteral("Registration"),
                      QStringLiteral("the sheet did not open"));
    });
    m_tour.Step(QStringLiteral("registration typed"), [this] {
        Enter(QStringLiteral("Maria O'Neil"));
        Enter(QStringLiteral("Active"));
        ::Choose(0);
        Enter(QStringLiteral("Chronic kidney disease, stage 5"));
        Enter(QStringLiteral("2/3/16"));
        Enter(QStringLiteral("03152016"));
        ::Choose(3);
        ::Choose(2);
        ::Choose(2);
        for (const char* text :
             {"58.5", "Low salt, low potassium", "140/90", "1 liter a day", "O+", "Non-reactive"})
            Enter(QString::fromLatin1(text));
        for (int field = 0; field < 6; ++field)
            Enter({});
        Enter(QStringLiteral("Lives alone; the neighbour helps with the exchanges."));
        m_tour.Expect(Tour::Find<QWidget>("cmdSave")->hasFocus(),
                      QStringLiteral("the fields did not lead to the save button"));
    });
    m_tour.Quietly(QStringLiteral("registration saved"), [] { Tour::Press(Qt::Key_Return); });
    ReadBox(QStringLiteral("registration is told"),
            QStringLiteral("Registration Successfully Saved."));
    m_tour.Step(QStringLiteral("number given"), [this] {
        m_registered = Patients().HospNum();
        m_tour.Expect(!Patients().CAPDNum().isEmpty(),
                      QStringLiteral("the list has no CAPD number"));
    });
}

void RegisterDay::ChangeTheSheet() {
    m_tour.Step(QStringLiteral("sheet opened again"), [this] {
        Tour::Press(Qt::Key_N, Qt::ControlModifier);
        m_tour.Expect(
            Tour::Find<QLineEdit>("txtWeight")->text() == QStringLiteral("58.5") &&
                Tour::Find<QLineEdit>("dtAcutePDStart")->text() == QStringLiteral("2/3/2016"),
            QStringLiteral("what was typed is not there"));
    });
    m_tour.Step(QStringLiteral("impossible date"), [] {
        auto* box = Tour::Find<QLineEdit>("dtAcutePDStart");
        box->setFocus(Qt::TabFocusReason);
        Enter(QStringLiteral("2/30/2016"));
        Tour::Press(Qt::Key_S, Qt::AltModifier);
    });
    m_tour.Quietly(QStringLiteral("impossible date is read"), [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == QStringLiteral("Message"),
                      QStringLiteral("2/30 was saved"));
        Tour::Press(Qt::Key_Return);
    });
    m_tour.Quietly(QStringLiteral("date put right"), [] {
        Enter(QStringLiteral("2/13/2016"));
        Tour::Press(Qt::Key_S, Qt::AltModifier);
    });
    m_tour.Quietly(QStringLiteral("change is told"), [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == QStringLiteral("Message"),
                      QStringLiteral("the change was not saved"));
        Tour::Press(Qt::Key_Return);
    });
}

void RegisterDay::RegisterAVisit() {
    const auto openVisit = [] { Tour::Press(Qt::Key_R, Qt::ControlModifier); };
    m_tour.Quietly(QStringLiteral("visit window"), openVisit);
    m_tour.Step(QStringLiteral("visit typed"), [this] {
        m_tour.Expect(Patients().HospNum() == m_registered,
                      QStringLiteral("another patient is chosen"));
        Enter(QStringLiteral("Follow-up"));
        Tour::Find<QLineEdit>("txtWeight")->setFocus();
        for (const char* text : {"57.5", "Low salt", "130/80"})
            Enter(QString::fromLatin1(text));
    });
    m_tour.Quietly(QStringLiteral("visit saved"), [] { Tour::Press(Qt::Key_S, Qt::AltModifier); });
    ReadBox(QStringLiteral("visit is told"), QStringLiteral("Registration Successfully Saved."));
    m_tour.Quietly(QStringLiteral("second visit window"), openVisit);
    m_tour.Quietly(QStringLiteral("second visit typed"), [] {
        Enter(QStringLiteral("Once more"));
        Tour::Press(Qt::Key_S, Qt::AltModifier);
    });
    ReadBox(QStringLiteral("second visit refused"),
            QStringLiteral("Patient's visit for this day is already registered."));
    m_tour.Quietly(QStringLiteral("second visit is kept"), [this] {
        m_tour.Expect(Tour::Find<QLineEdit>("txtDiagnosis")->text() == QStringLiteral("Once more"),
                      QStringLiteral("what was typed is lost"));
    });
    LeaveWindow(QStringLiteral("second visit left"));
}

void RegisterDay::ReadVisits() {
    m_tour.Quietly(QStringLiteral("visit window of another patient"), [this] {
        Choose(true, m_registered);
        Tour::Press(Qt::Key_R, Qt::ControlModifier);
    });
    m_tour.Quietly(QStringLiteral("earlier visits asked for"),
                   [] { Tour::Press(Qt::Key_V, Qt::AltModifier); });
    m_tour.Step(QStringLiteral("earlier visits"), [this] {
        m_tour.Expect(!Tour::Find<toolkit::FlexGrid>("grdTable")->TextMatrix(1, 1).isEmpty(),
                      QStringLiteral("no visit is listed"));
    });
    m_tour.Step(QStringLiteral("earlier visit marked"), [this] {
        for (int press = 0; press < 2; ++press)
            Tour::Press(Qt::Key_Down);
        m_tour.Expect(Tour::Find<VisitChart>("chtVisits")->Marked() == 2,
                      QStringLiteral("the chart marks another visit"));
    });
    LeaveWindow(QStringLiteral("visits left"));
}
