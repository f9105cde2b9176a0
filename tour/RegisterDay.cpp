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

using namespace Qt::StringLiterals;

namespace {

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
    Expect(list->hasFocus(), u"the patient list has not the keys"_s);
    Tour::Press(Qt::Key_Home);
    for (int row = 1; row < list->model()->rowCount() && !fits(); ++row)
        Tour::Press(Qt::Key_Down);
    Expect(fits(), u"there is no such patient in the list"_s);
}

void RegisterDay::LeaveWindow(const QString& step) {
    Quietly(step, [this] {
        Tour::Press(Qt::Key_Escape);
        Tour::Press(Qt::Key_Return);
        Expect(QApplication::activeModalWidget() == nullptr, u"the window stayed"_s);
    });
}

void RegisterDay::RegisterAPatient() {
    Step(u"new registration"_s, [this] {
        Choose(false);
        Tour::Press(Qt::Key_N, Qt::ControlModifier);
        ExpectTitle(u"Registration"_s);
    });
    Step(u"registration typed"_s, [this] {
        Enter(u"Maria O'Neil"_s);
        Enter(u"Active"_s);
        ::Choose(0);
        Enter(u"Chronic kidney disease, stage 5"_s);
        Enter(u"2/3/16"_s);
        Enter(u"03152016"_s);
        ::Choose(3);
        ::Choose(2);
        ::Choose(2);
        for (const char* text :
             {"58.5", "Low salt, low potassium", "140/90", "1 liter a day", "O+", "Non-reactive"})
            Enter(QString::fromLatin1(text));
        for (int field = 0; field < 6; ++field)
            Enter({});
        Enter(u"Lives alone; the neighbour helps with the exchanges."_s);
        Expect(Tour::Find<QWidget>("cmdSave")->hasFocus(),
               u"the fields did not lead to the save button"_s);
    });
    Quietly(u"registration saved"_s, [] { Tour::Press(Qt::Key_Return); });
    ReadBox(u"registration is told"_s, u"Registration Successfully Saved."_s);
    Step(u"number given"_s, [this] {
        m_registered = Patients().HospNum();
        ExpectStored(
            u"SELECT NextKin, Status, Diagnosis, AcutePDStartDate, ChronicPDStartDate, Weight, BP, "
            "WithPeritonitis, ChronicPD, Catheter, Purpose, Remarks FROM "
            "CLINICAL_AREA..tbCAPDPatient WHERE HospNum = '%1'"_s.arg(m_registered),
            u"Maria O'Neil|Active|Chronic kidney disease, stage 5|2/3/2016|3/15/2016|58.5|"
            "140/90|N|  CCPD|  "
            "Tenckhoff|Treatment|Lives alone; the neighbour helps with the exchanges."_s);
        Expect(!Patients().CAPDNum().isEmpty(), u"the list has no CAPD number"_s);
    });
}

void RegisterDay::ChangeTheSheet() {
    Step(u"sheet opened again"_s, [this] {
        Tour::Press(Qt::Key_N, Qt::ControlModifier);
        Expect(Tour::Find<QLineEdit>("txtWeight")->text() == u"58.5"_s &&
                   Tour::Find<QLineEdit>("dtAcutePDStart")->text() == u"2/3/2016"_s,
               u"what was typed is not there"_s);
    });
    Step(u"impossible date"_s, [] {
        auto* box = Tour::Find<QLineEdit>("dtAcutePDStart");
        box->setFocus(Qt::TabFocusReason);
        Enter(u"2/30/2016"_s);
        Tour::Press(Qt::Key_S, Qt::AltModifier);
    });
    Quietly(u"impossible date is read"_s, [this] {
        ExpectTitle(u"Message"_s);
        Tour::Press(Qt::Key_Return);
    });
    Quietly(u"date put right"_s, [] {
        Enter(u"2/13/2016"_s);
        Tour::Press(Qt::Key_S, Qt::AltModifier);
    });
    Quietly(u"change is told"_s, [this] {
        ExpectTitle(u"Message"_s);
        Tour::Press(Qt::Key_Return);
    });
}

void RegisterDay::RegisterAVisit() {
    const auto openVisit = [] { Tour::Press(Qt::Key_R, Qt::ControlModifier); };
    Quietly(u"visit window"_s, openVisit);
    Step(u"visit typed"_s, [this] {
        Expect(Patients().HospNum() == m_registered, u"another patient is chosen"_s);
        Enter(u"Follow-up"_s);
        Tour::Find<QLineEdit>("txtWeight")->setFocus();
        for (const char* text : {"57.5", "Low salt", "130/80"})
            Enter(QString::fromLatin1(text));
    });
    Quietly(u"visit saved"_s, [] { Tour::Press(Qt::Key_S, Qt::AltModifier); });
    ReadBox(u"visit is told"_s, u"Registration Successfully Saved."_s);
    Quietly(u"second visit window"_s, openVisit);
    Quietly(u"second visit typed"_s, [] {
        Enter(u"Once more"_s);
        Tour::Press(Qt::Key_S, Qt::AltModifier);
    });
    ReadBox(u"second visit refused"_s, u"Patient's visit for this day is already registered."_s);
    Quietly(u"second visit is kept"_s, [this] {
        ExpectStored(
            u"SELECT Diagnosis, Weight, Diet, BP FROM CLINICAL_AREA..tbCAPDLogBook WHERE "
            "HospNum = '%1'"_s.arg(m_registered),
            u"Follow-up|57.5|Low salt|130/80"_s);
        Expect(Tour::Find<QLineEdit>("txtDiagnosis")->text() == u"Once more"_s,
               u"what was typed is lost"_s);
    });
    LeaveWindow(u"second visit left"_s);
}

void RegisterDay::ReadVisits() {
    Quietly(u"visit window of another patient"_s, [this] {
        Choose(true, m_registered);
        Tour::Press(Qt::Key_R, Qt::ControlModifier);
    });
    Quietly(u"earlier visits asked for"_s, [] { Tour::Press(Qt::Key_V, Qt::AltModifier); });
    Step(u"earlier visits"_s, [this] {
        Expect(!Tour::Find<toolkit::FlexGrid>("grdTable")->TextMatrix(1, 1).isEmpty(),
               u"no visit is listed"_s);
    });
    Step(u"earlier visit marked"_s, [this] {
        for (int press = 0; press < 2; ++press)
            Tour::Press(Qt::Key_Down);
        Expect(Tour::Find<VisitChart>("chtVisits")->Marked() == 2,
               u"the chart marks another visit"_s);
    });
    LeaveWindow(u"visits left"_s);
}
