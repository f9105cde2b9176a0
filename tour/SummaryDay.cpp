#include "tour/SummaryDay.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <memory>

#include "db/Recordset.h"
#include "session/modGlobals.h"
#include "toolkit/FileNames.h"
#include "toolkit/FlexGrid.h"

using namespace Qt::StringLiterals;

namespace {

// A stay with medicines and examinations of every kind.
QString WellFilled(const char* table) {
    return u"SELECT TOP (1) s.IdNum FROM PATIENT_DATA..%1 s WHERE EXISTS (SELECT 1 FROM "
           "STATION..tbMedicineGiven m WHERE m.IdNum = s.IdNum) AND EXISTS (SELECT 1 FROM "
           "RADIOLOGY..tbRadResult x WHERE x.IdNum = s.IdNum AND x.ResultDate IS NOT NULL)"_s.arg(
               QLatin1String(table));
}

}  // namespace

void SummaryDay::Walk() {
    OpenPatient("OptPatientType2", WellFilled("tbPatient"));
    ReadSummary(u"summary of an admission"_s);
    OpenPatient("OptPatientType1", WellFilled("tbOutPatient"));
    ReadSummary(u"summary of a visit"_s);
}

void SummaryDay::OpenPatient(const char* type, const QString& query) {
    Quietly(u"patient for the summary"_s, [=, this] {
        const auto found = Tour::Ask(query);
        Expect(!found->Eof(), u"there is no such stay"_s);
        ListPatients(type, false, found->Fields(0).Text());
        Tour::Press(Qt::Key_Return);
    });
}

void SummaryDay::ReadSummary(const QString& name) {
    Step(name + u", its stays"_s, [this] {
        QTabBar* bar = Tour::Find<QTabWidget>("tabSSTab1")->tabBar();
        bar->setFocus();
        while (Tour::Find<QTabWidget>("tabSSTab1")->currentIndex() < 2)
            Tour::Press(Qt::Key_Right);
        Tour::Press(Qt::Key_Tab);
        Expect(Tour::Find<toolkit::FlexGrid>("mshflexClin")->hasFocus(),
               u"the stays have not the keys"_s);
        // The stay that the patient was opened with.
        const QString number = Tour::Find<QLineEdit>("txtIdNum")->text();
        auto* stays = Tour::Find<toolkit::FlexGrid>("mshflexClin");
        for (int row = 1; row < stays->Rows() && stays->TextMatrix(stays->Row(), 1) != number;
             ++row)
            Tour::Press(Qt::Key_Down);
        Expect(stays->TextMatrix(stays->Row(), 1) == number, u"the stay is not listed"_s);
    });
    Step(name, [this] {
        Tour::Press(Qt::Key_Return);
        Expect(Tour::Find<QTextEdit>("rtbClinical")->toPlainText().contains(u"Lastname   :"_s),
               u"the summary was not composed"_s);
    });
    Quietly(name + u" saved"_s, [this, name] {
        TypeFileName(QString(name).replace(u' ', u'-') + u".pdf"_s, [] {
            Tour::Find<QPushButton>("cmdSavePdf")->setFocus();
            Tour::Press(Qt::Key_Space);
        });
    });
    Quietly(u"hub left"_s, [] { Tour::Press(Qt::Key_Escape); });
}
