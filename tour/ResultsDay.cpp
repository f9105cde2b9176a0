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

using namespace Qt::StringLiterals;

namespace {

constexpr int kResults = 1;
constexpr int kTabs = 7;

bool HasEveryResult(const QString& idNum) {
    return !Tour::Ask(
                u"SELECT v.IdNum FROM PATIENT_DATA..tbOutPatient v INNER JOIN "
                "STATION..tbHeartResult h ON h.IdNum = v.IdNum WHERE v.IdNum = '%1' AND "
                "v.BillingDate IS NULL AND "
                "EXISTS (SELECT 1 FROM STATION..tbPTResult p WHERE p.IdNum = h.IdNum) AND "
                "EXISTS (SELECT 1 FROM PATIENT_DATA..tbLabResult l WHERE l.IdNum = "
                "h.IdNum AND l.ResultDate IS NOT NULL) AND (SELECT COUNT(DISTINCT "
                "x.Modality) FROM RADIOLOGY..tbRadResult x WHERE x.IdNum = h.IdNum) = 3"_s.arg(
                    idNum))
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
        ReadTab(plain.toLower() + u" result"_s, tab, qPrintable(u"mshflex"_s + plain));
        Quietly(plain + u" is read"_s, [this, plain] {
            ExpectText(qPrintable(u"txt%1Interp"_s.arg(plain)));
            Expect(!Tour::Find<QLabel>(qPrintable(u"lbl%1TransNum"_s.arg(plain)))->text().isEmpty(),
                   u"no transaction number"_s);
        });
    };
    radiology("Xray", 0);
    radiology("Ultra", 1);
    ReadTab(u"heart station result"_s, 2, "mshflexHeart");
    PrintHeart();
    ReadTab(u"laboratory results"_s, 3, "mshflexLab");
    ViewLaboratory();
    radiology("CT", 4);
    ReadTab(u"rehabilitation result"_s, 5, "mshflexPT");
    Quietly(u"rehabilitation is read"_s, [this] { ExpectText("txtPT"); });
    Step(u"no nuclear results"_s, [this] {
        GoTo("tabSSTab2", kTabs - 1);
        Expect(!Tour::Find<QLabel>("lblNuclearState")->text().isEmpty(),
               u"nothing says why the list is empty"_s);
    });
    Quietly(u"results left"_s, [] { Tour::Press(Qt::Key_Escape); });
}

void ResultsDay::OpenPatientOfEveryDepartment() {
    Quietly(u"the register for results"_s, [this] {
        ListPatients("OptPatientType0", false, u"a"_s);
        Tour::Press(Qt::Key_Down);
    });
    Quietly(u"patient of every department"_s, [this] {
        auto* list = Tour::Find<toolkit::ListView>("lvwSearchPatient");
        list->setFocus();
        Tour::Press(Qt::Key_Home);
        const auto& patients = *Tour::Find<frmPatientList>("frmPatientList");
        for (int row = 1; row < list->model()->rowCount() && !HasEveryResult(patients.IdNum());
             ++row)
            Tour::Press(Qt::Key_Down);
        Expect(HasEveryResult(patients.IdNum()), u"no patient has results of every department"_s);
        Tour::Press(Qt::Key_Return);
    });
    Quietly(u"result viewing"_s, [] { GoTo("tabSSTab1", kResults); });
}

void ResultsDay::ReadTab(const QString& step, int tab, const char* grid) {
    const QByteArray name = grid;
    Quietly(step + u" listed"_s, [this, tab, name] {
        GoTo("tabSSTab2", tab);
        Expect(!Tour::Find<toolkit::FlexGrid>(name)->TextMatrix(1, 1).isEmpty(),
               u"the list is empty"_s);
    });
    Step(step, [this, tab, name] {
        Tour::Press(Qt::Key_Tab);
        Expect(Tour::Find<toolkit::FlexGrid>(name)->hasFocus(),
               u"Tab does not lead into the list"_s);
        // In the laboratory Enter opens the result.
        Tour::Press(tab == 3 ? Qt::Key_Home : Qt::Key_Return);
    });
}

void ResultsDay::ExpectText(const char* box) {
    Expect(!Tour::Find<QPlainTextEdit>(box)->toPlainText().isEmpty(), u"nothing is read"_s);
}

void ResultsDay::PrintHeart() {
    Quietly(u"heart station print"_s, [this] {
        ExpectText("txtHeartInterpretation");
        Push("cmdHeartPrint");
    });
    SavePdf(u"heart station result on paper"_s, u"Heart Station Result"_s, u"heart-result.pdf"_s);
}

void ResultsDay::ViewLaboratory() {
    Quietly(u"laboratory viewer opened"_s, [] { Tour::Press(Qt::Key_Return); });
    SavePdf(u"laboratory viewer"_s, u"Laboratory Result - "_s, u"laboratory-result.pdf"_s);
}
