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

namespace {

// A stay with medicines and examinations of every kind.
QString WellFilled(const char* table) {
    return QStringLiteral(
               "SELECT TOP (1) s.IdNum FROM PATIENT_DATA..%1 s WHERE EXISTS (SELECT 1 FROM "
               "STATION..tbMedicineGiven m WHERE m.IdNum = s.IdNum) AND EXISTS (SELECT 1 FROM "
               "RADIOLOGY..tbRadResult x WHERE x.IdNum = s.IdNum AND x.ResultDate IS NOT NULL)")
        .arg(QLatin1String(table));
}

}  // namespace

void SummaryDay::Walk() {
    OpenPatient("OptPatientType2", WellFilled("tbPatient"));
    ReadSummary(QStringLiteral("summary of an admission"));
    OpenPatient("OptPatientType1", WellFilled("tbOutPatient"));
    ReadSummary(QStringLiteral("summary of a visit"));
}

void SummaryDay::OpenPatient(const char* type, const QString& query) {
    m_tour.Quietly(QStringLiteral("patient for the summary"), [=, this] {
        auto* current = Tour::Find<QCheckBox>("chkCurrent");
        if (current->isChecked()) {
            current->setFocus();
            Tour::Press(Qt::Key_Space);
        }
        auto* option = Tour::Find<QRadioButton>(type);
        option->setFocus();
        Tour::Press(Qt::Key_Space);
        for (const char* other : {"txtHospNum", "txtLastName"})
            Tour::Find<QLineEdit>(other)->clear();
        auto* box = Tour::Find<QLineEdit>("txtIdNum");
        box->clear();
        const auto found = Tour::Ask(query);
        m_tour.Expect(!found->Eof(), QStringLiteral("there is no such stay"));
        Tour::Type(box, found->Fields(0).Text());
        Tour::Press(Qt::Key_Return);
        Tour::Press(Qt::Key_Return);
    });
}

void SummaryDay::ReadSummary(const QString& name) {
    m_tour.Step(name + QStringLiteral(", its stays"), [this] {
        QTabBar* bar = Tour::Find<QTabWidget>("tabSSTab1")->tabBar();
        bar->setFocus();
        while (Tour::Find<QTabWidget>("tabSSTab1")->currentIndex() < 2)
            Tour::Press(Qt::Key_Right);
        Tour::Press(Qt::Key_Tab);
        m_tour.Expect(Tour::Find<toolkit::FlexGrid>("mshflexClin")->hasFocus(),
                      QStringLiteral("the stays have not the keys"));
        // The stay that the patient was opened with.
        const QString number = Tour::Find<QLineEdit>("txtIdNum")->text();
        auto* stays = Tour::Find<toolkit::FlexGrid>("mshflexClin");
        for (int row = 1; row < stays->Rows() && stays->TextMatrix(stays->Row(), 1) != number;
             ++row)
            Tour::Press(Qt::Key_Down);
        m_tour.Expect(stays->TextMatrix(stays->Row(), 1) == number,
                      QStringLiteral("the stay is not listed"));
    });
    m_tour.Step(name, [this] {
        Tour::Press(Qt::Key_Return);
        m_tour.Expect(Tour::Find<QTextEdit>("rtbClinical")
                          ->toPlainText()
                          .contains(QStringLiteral("Lastname   :")),
                      QStringLiteral("the summary was not composed"));
    });
    m_tour.Quietly(name + QStringLiteral(" saved"), [this, name] {
        auto files = std::make_unique<toolkit::FileNameScript>();
        files->Answer(m_tour.File(QString(name).replace(u' ', u'-') + QStringLiteral(".pdf")));
        auto* save = Tour::Find<QPushButton>("cmdSavePdf");
        save->setFocus();
        Tour::Press(Qt::Key_Space);
        m_tour.Expect(files->Leftovers().isEmpty(), QStringLiteral("no PDF was asked for"));
    });
    m_tour.Quietly(QStringLiteral("hub left"), [] { Tour::Press(Qt::Key_Escape); });
}
