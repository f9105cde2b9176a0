#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "patients/frmSearch.h"
#include "toolkit/FlexGrid.h"

namespace bench {

namespace {

constexpr int kCodes = 20'000;
constexpr int kRounds = 21;
constexpr double kFrame = 16.7;

// Words that begin with every letter, so that each key of one narrows the list.
const char* const kWords[] = {"ADAPTER", "BANDAGE", "CATHETER",   "DIALYSATE",     "EXTENSION",
                              "FILTER",  "GAUZE",   "HEATER BAG", "INJECTION CAP", "LINE",
                              "MASK",    "NEEDLE",  "PACK"};

// A hospital whose unit has as many codes as the window must bear; made anew each time.
QString HospitalOfCodes() {
    const QString path = CopyOfDemoHospital(QStringLiteral("-codes"));
    BareSqlite file(path);
    file.Run("BEGIN");
    BareStatement code(
        file,
        "INSERT INTO \"BILLING..tbRevenueCode\" (RevenueID, Revenue, WithItems, SearchInventory, "
        "LocationID, InvCode) VALUES (?1, ?2, 'Y', 1, '46', 'CA')");
    for (int number = 0; number < kCodes; ++number) {
        const std::string digits = std::to_string(10'000 + number);
        code.Bind(1, digits);
        code.Bind(2, kWords[number % std::size(kWords)] + (' ' + digits));
        code.Write();
    }
    file.Run("COMMIT");
    return path;
}

struct Typed {
    std::vector<double> Milliseconds;  // from each key to the painted list
    int FewestFound = kCodes;
};

void TypeWords(frmSearch& form, Typed& typed) {
    auto* box = form.findChild<QLineEdit*>(QStringLiteral("txtSearchStr"));
    auto* grid = form.findChild<toolkit::FlexGrid*>(QStringLiteral("grdDispWindow"));
    for (int round = 0; round < kRounds; ++round) {
        box->clear();
        for (const char* key = kWords[size_t(round) % std::size(kWords)]; *key; ++key) {
            typed.Milliseconds.push_back(Milliseconds([&] {
                QTest::keyClick(box, *key);
                grid->viewport()->repaint();
            }));
        }
        typed.FewestFound = qMin(typed.FewestFound, grid->Rows() - 1);
    }
}

}  // namespace

// From a key in the code search to the narrowed list on screen, 20,000 codes; beside one frame.
void CodeSearchKey() {
    const auto frame = StartSession(HospitalOfCodes());
    Typed typed;
    frmSearch form(frame.get());
    form.SetSearchCaption(QStringLiteral("Revenue Codes"));
    form.SetCriteria({});
    form.SetQuery(QStringLiteral("sp_CAPD_SearchRevenue '0','##'"));
    QTimer::singleShot(0, &form, [&] {
        TypeWords(form, typed);
        form.reject();
    });
    form.exec();
    if (typed.FewestFound < kCodes / int(std::size(kWords)))
        throw std::runtime_error("the code search found too few codes");
    const std::vector<double>& taken = typed.Milliseconds;
    size_t next = 0;
    Print(AlternateTimed(
        QStringLiteral("code-search-key"), QStringLiteral("ms"), int(taken.size()) - 1,
        [&] { return taken[next++]; }, [] { return kFrame; }));
}

}  // namespace bench
