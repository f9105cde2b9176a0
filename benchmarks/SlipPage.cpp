#include <QApplication>
#include <QPaintEvent>

#include "app/mdiCAPD.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "charges/SlipPrint.h"
#include "reports/frmReportViewer.h"

namespace bench {

namespace {

constexpr int kLines = 20;
constexpr double kLimitMilliseconds = 100;

/// Sees the first page of a report being painted.
class FirstPage final : public QObject {
public:
    bool eventFilter(QObject* object, QEvent* event) override {
        m_painted = m_painted ||
                    (event->type() == QEvent::Paint && object->parent() &&
                     QByteArray(object->parent()->metaObject()->className()).contains("PageView"));
        return false;
    }
    bool IsPainted() const { return m_painted; }

private:
    bool m_painted = false;
};

double ShowSlip() {
    SlipTexts texts;
    texts.SlipNumber = QStringLiteral("C1D");
    PrintLine line;
    line.ItemCode = QStringLiteral("102");
    line.Description = QStringLiteral("DIALYSIS SOLUTION 2.5% 2 L");
    line.Price = line.Amount = line.NetAmount = 390;
    const std::vector<PrintLine> lines(kLines, line);
    FirstPage page;
    qApp->installEventFilter(&page);
    frmReportViewer viewer;
    const double taken = Milliseconds([&] {
        SlipPrint::Open(SlipPrint::Layout::Plain, texts, lines);
        viewer.show();
        while (!page.IsPainted())
            QCoreApplication::processEvents();
    });
    qApp->removeEventFilter(&page);
    return taken;
}

}  // namespace

// From "print" to the first page on screen, a slip of 20 lines.
void SlipFirstPage() {
    const auto frame = StartSession(CopyOfDemoHospital(QStringLiteral("-page")));
    Print(AlternateTimed(QStringLiteral("slip-first-page"), QStringLiteral("ms"), 21, ShowSlip,
                         [] { return kLimitMilliseconds; }));
}

}  // namespace bench
