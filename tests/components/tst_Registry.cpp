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

using namespace components;

class tst_Registry final : public QObject {
    Q_OBJECT

private slots:
    void BuiltIns_answerForEveryProgId();
    void Create_namesAnUnknownProgId();
    void MissingMember_isError438();
};

void tst_Registry::BuiltIns_answerForEveryProgId() {
    RegisterBuiltIns();
    QVERIFY(CreateObject<CurrentUser>(QStringLiteral("Corvane_User.clsCurrentUser")));
    QVERIFY(CreateObject<PatientLister>(QStringLiteral("PatientLister.clsRadioSearch"), {}));
    QVERIFY(CreateObject<PatientFinder>(QStringLiteral("PatientFinder.clsPatientSearch")));
    QVERIFY(CreateObject<CodeSearch>(QStringLiteral("CODEFINDER.clscodesearch")));
    QVERIFY(CreateObject<SupplyInfo>(QStringLiteral("DrugCatalog.clsDrug")));
    QVERIFY(CreateObject<ResultViewer>(QStringLiteral("ResultBrowser.ResultViewer")));
    QVERIFY(CreateObject<WardRequest>(QStringLiteral("WardActivity.clsRequest"),
                                      QStringLiteral("MTS")));
    QVERIFY(CreateObject<WardResults>(QStringLiteral("WardActivity.clsResults"),
                                      QStringLiteral("MTS")));
    QVERIFY(CreateObject<Confinement>(QStringLiteral("WardActivity.clsConfinement")));
    QVERIFY(CreateObject<ConfinementResults>(QStringLiteral("WardActivity.clsConfinementResults")));
    // Charges and the pharmacy each have a list of their own.
    const QString list = QStringLiteral("DrugRoster.clsListDrugs");
    QVERIFY(CreateObject<SupplyList>(list) != CreateObject<SupplyList>(list));
}

void tst_Registry::Create_namesAnUnknownProgId() {
    try {
        Create(QStringLiteral("No.Such"));
        QFAIL("an unknown component was created");
    } catch (const base::RuntimeError& error) {
        QCOMPARE(error.Number(), 429);
        QVERIFY(error.Description().contains(QStringLiteral("No.Such")));
    }
}

void tst_Registry::MissingMember_isError438() {
    try {
        ResultViewer().Show_Results();
        QFAIL("a missing member was called");
    } catch (const base::RuntimeError& error) {
        QCOMPARE(error.Number(), 438);
        QVERIFY(error.Description().contains(QStringLiteral("Show_Results")));
    }
}

QTEST_MAIN(tst_Registry)
#include "tst_Registry.moc"
