#include "tour/ResultsDay.h"

#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>

#include "db/Recordset.h"
#include "hub/frmFinal.h"
#include "patients/frmPatientList.h"
#include "session/modGlobals.h"
#include "toolkit/FileNames.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/ListView.h"

namespace {

constexpr int kResults = 1;
constexpr int kTabs = 7;

bool HasEveryResult(const QString& idNum) {
    return !Tour::Ask(
                QStringLiteral(
                    "SELECT v.IdNum FROM PATIENT_DATA..tbOutPatient v INNER JOIN "
                    "STATION..tbHeartResult h ON h.IdNum = v.IdNum WHERE v.IdNum = '%1' AND "
                    "v.BillingDate IS NULL AND "
                    "EXISTS (SELECT 1 FROM STATION..tbPTResult p WHERE p.IdNum = h.IdNum) AND "
                    "EXISTS (SELECT 1 FROM PATIENT_DATA..tbLabResult l WHERE l.IdNum = "
                    "h.IdNum AND l.ResultDate IS NOT NULL) AND (SELECT COUNT(DISTINCT "
                    "x.Modality) FROM RADIOLOGY..tbRadResult x WHERE x.IdNum = h.IdNum) = 3")
                    .arg(idNum))
                ->Eof();
}

void GoTo(const char* tabs, int tab) {
    const auto* control = Tour::Find<QTabWidget>(tabs);
    control->tabBar()->setFocus();
    for (int presses = qAbs(tab - control->currentIndex()); presses > 0; --presses)
        Tour::Press(tab > control->currentIndex() ? Qt::Key_Right : Qt::Key_Left);
}

}  // namespace

void ResultsDay::Walk() {
    OpenPatientOfEveryDepartment();
    const auto radiology = [this](const char* name, int tab) {
        const QString plain = QLatin1String(name);
        ReadTab(plain.toLower() + QStringLiteral(" result"), tab,
                qPrintable(QStringLiteral("mshflex") + plain));
        m_tour.Quietly(plain + QStringLiteral(" is read"), [this, plain] {
            ExpectText(qPrintable(QStringLiteral("txt%1Interp").arg(plain)));
            m_tour.Expect(
                !Tour::Find<QLabel>(qPrintable(QStringLiteral("lbl%1TransNum").arg(plain)))
                     ->text()
                     .isEmpty(),
                QStringLiteral("no transaction number"));
        });
    };
    radiology("Xray", 0);
    radiology("Ultra", 1);
    ReadTab(QStringLiteral("heart station result"), 2, "mshflexHeart");
    PrintHeart();
    ReadTab(QStringLiteral("laboratory results"), 3, "mshflexLab");
    ViewLaboratory();
    radiology("CT", 4);
    ReadTab(QStringLiteral("rehabilitation result"), 5, "mshflexPT");
    m_tour.Quietly(QStringLiteral("rehabilitation is read"), [this] { ExpectText("txtPT"); });
    m_tour.Step(QStringLiteral("no nuclear results"), [this] {
        GoTo("tabSSTab2", kTabs - 1);
        m_tour.Expect(!Tour::Find<QLabel>("lblNuclearState")->text().isEmpty(),
                      QStringLiteral("nothing says why the list is empty"));
    });
    m_tour.Quietly(QStringLiteral("results left"), [] { Tour::Press(Qt::Key_Escape); });
}

void ResultsDay::OpenPatientOfEveryDepartment() {
    m_tour.Quietly(QStringLiteral("the register for results"), [this] {
        auto* capd = Tour::Find<QRadioButton>("OptPatientType0");
        capd->setFocus();
        Tour::Press(Qt::Key_Space);
        for (const char* other : {"txtHospNum", "txtLastName"})
            Tour::Find<QLineEdit>(other)->clear();
        auto* current = Tour::Find<QAbstractButton>("chkCurrent");
        if (current->isChecked()) {
            current->setFocus();
            Tour::Press(Qt::Key_Space);
        }
        auto* box = Tour::Find<QLineEdit>("txtIdNum");
        box->clear();
        Tour::Type(box, QStringLiteral("a"));
        Tour::Press(Qt::Key_Return);
        Tour::Press(Qt::Key_Down);
    });
    m_tour.Quietly(QStringLiteral("patient of every department"), [this] {
        auto* list = Tour::Find<toolkit::ListView>("lvwSearchPatient");
        list->setFocus();
        Tour::Press(Qt::Key_Home);
        const auto& patients = *Tour::Find<frmPatientList>("frmPatientList");
        for (int row = 1; row < list->model()->rowCount() && !HasEveryResult(patients.IdNum());
             ++row)
            Tour::Press(Qt::Key_Down);
        m_tour.Expect(HasEveryResult(patients.IdNum()),
                      QStringLiteral("no patient has results of every department"));
        Tour::Press(Qt::Key_Return);
    });
    m_tour.Quietly(QStringLiteral("result viewing"), [] { GoTo("tabSSTab1", kResults); });
}

void ResultsDay::ReadTab(const QString& step, int tab, const char* grid) {
    const QByteArray name = grid;
    m_tour.Quietly(step + QStringLiteral(" listed"), [this, tab, name] {
        GoTo("tabSSTab2", tab);
        m_tour.Expect(!Tour::Find<toolkit::FlexGrid>(name)->TextMatrix(1, 1).isEmpty(),
                      QStringLiteral("the list is empty"));
    });
    m_tour.Step(step, [this, tab, name] {
        Tour::Press(Qt::Key_Tab);
        m_tour.Expect(Tour::Find<toolkit::FlexGrid>(name)->hasFocus(),
                      QStringLiteral("Tab does not lead into the list"));
        // In the laboratory Enter opens the result.
        Tour::Press(tab == 3 ? Qt::Key_Home : Qt::Key_Return);
    });
}

void ResultsDay::ExpectText(const char* box) {
    m_tour.Expect(!Tour::Find<QPlainTextEdit>(box)->toPlainText().isEmpty(),
                  QStringLiteral("nothing is read"));
}

void ResultsDay::PrintHeart() {
    m_tour.Quietly(QStringLiteral("heart station print"), [this] {
        ExpectText("txtHeartInterpretation");
        Tour::Find<QPushButton>("cmdHeartPrint")->setFocus();
        Tour::Press(Qt::Key_Return);
    });
    m_tour.Step(QStringLiteral("heart station result on paper"), [this] {
        m_tour.Expect(QApplication::activeModalWidget() != nullptr,
                      QStringLiteral("no report is shown"));
    });
    SavePdf(QStringLiteral("heart-result.pdf"));
}

void ResultsDay::ViewLaboratory() {
    m_tour.Quietly(QStringLiteral("laboratory viewer opened"), [] { Tour::Press(Qt::Key_Return); });
    m_tour.Step(QStringLiteral("laboratory viewer"), [this] {
        m_tour.Expect(Tour::Window()->objectName() == QStringLiteral("frmResultViewer"),
                      QStringLiteral("the viewer did not open"));
    });
    SavePdf(QStringLiteral("laboratory-result.pdf"));
}

void ResultsDay::SavePdf(const QString& file) {
    m_tour.Quietly(file, [this, file] {
        toolkit::FileNameScript names;
        names.Answer(m_tour.File(file));
        Tour::Press(Qt::Key_S, Qt::ControlModifier);
        m_tour.Expect(names.Leftovers().isEmpty() && QFileInfo(m_tour.File(file)).size() > 1000,
                      QStringLiteral("no PDF was written"));
    });
    m_tour.Quietly(file + QStringLiteral(" closed"), [] { Tour::Press(Qt::Key_Escape); });
}
