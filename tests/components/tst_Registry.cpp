#include <QTest>

#include "components/CodeSearch.h"
#include "components/CurrentUser.h"
#include "components/PatientFinder.h"
#include "components/PatientLister.h"
#include "components/Registry.h"
#include "components/ResultViewer.h"
#include "components/SupplyInfo.h"
#include "components/SupplyList.h"
#include "components/WardActivity.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using namespace components;

class tst_Registry final : public QObject {
    Q_OBJECT

private slots:
    void BuiltIns_answerForEveryProgId() {
        RegisterBuiltIns();
        QVERIFY(CreateObject<CurrentUser>(u"Corvane_User.clsCurrentUser"_s));
        QVERIFY(CreateObject<PatientLister>(u"PatientLister.clsRadioSearch"_s, {}));
        QVERIFY(CreateObject<PatientFinder>(u"PatientFinder.clsPatientSearch"_s));
        QVERIFY(CreateObject<CodeSearch>(u"CODEFINDER.clscodesearch"_s));
        QVERIFY(CreateObject<SupplyInfo>(u"DrugCatalog.clsDrug"_s));
        QVERIFY(CreateObject<ResultViewer>(u"ResultBrowser.ResultViewer"_s));
        QVERIFY(CreateObject<WardRequest>(u"WardActivity.clsRequest"_s, u"MTS"_s));
        QVERIFY(CreateObject<WardResults>(u"WardActivity.clsResults"_s, u"MTS"_s));
        QVERIFY(CreateObject<Confinement>(u"WardActivity.clsConfinement"_s));
        QVERIFY(CreateObject<ConfinementResults>(u"WardActivity.clsConfinementResults"_s));
        // Charges and the pharmacy each have a list of their own.
        const QString list = u"DrugRoster.clsListDrugs"_s;
        QVERIFY(CreateObject<SupplyList>(list) != CreateObject<SupplyList>(list));
    }

    void Create_namesAnUnknownProgId() {
        try {
            Create(u"No.Such"_s);
            QFAIL("an unknown component was created");
        } catch (const base::RuntimeError& error) {
            QCOMPARE(error.Number(), 429);
            QVERIFY(error.Description().contains(u"No.Such"_s));
        }
    }

    void MissingMember_isError438() {
        try {
            ResultViewer().Show_Results();
            QFAIL("a missing member was called");
        } catch (const base::RuntimeError& error) {
            QCOMPARE(error.Number(), 438);
            QVERIFY(error.Description().contains(u"Show_Results"_s));
        }
    }
};

QTEST_MAIN(tst_Registry)
#include "tst_Registry.moc"
