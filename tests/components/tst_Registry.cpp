#include <QTest>

#include "components/CurrentUser.h"
#include "components/Registry.h"
#include "components/ResultViewer.h"
#include "components/SupplyList.h"

using namespace Qt::StringLiterals;
using namespace components;

class tst_Registry final : public QObject {
    Q_OBJECT

private slots:
    // Charges and the pharmacy each have a list of their own.
    void Create_makesAnotherEachTime() {
        RegisterBuiltIns();
        const auto list = [](const QString& progId) { return CreateObject<SupplyList>(progId); };
        QVERIFY(list(u"DrugRoster.clsListDrugs"_s) != list(u"DRUGROSTER.clslistdrugs"_s));
    }

    void Refusals_haveTheirNumbers() {
        const auto refusal = [](auto work) {
            try {
                work();
            } catch (const base::RuntimeError& error) {
                return u"%1 %2"_s.arg(error.Number()).arg(error.Description());
            }
            return QString();
        };
        QCOMPARE(refusal([] { Create(u"No.Such"_s); }),
                 u"429 The component No.Such cannot be created."_s);
        QCOMPARE(refusal([] { CreateObject<CurrentUser>(u"DrugCatalog.clsDrug"_s); }),
                 u"429 The component DrugCatalog.clsDrug cannot be created."_s);
        const QString missing = refusal([] { ResultViewer().Show_Results(); });
        QVERIFY(missing.startsWith(u"438 "_s) && missing.contains(u"Show_Results"_s));
    }
};

QTEST_MAIN(tst_Registry)
#include "tst_Registry.moc"
