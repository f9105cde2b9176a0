#include "patients/frmSearch.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QPushButton>

#include "CommandLog.h"
#include "FakeComponents.h"
#include "TestHospital.h"
#include "components/PickListKeys.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"

namespace {

/// The parts of the window under the user's hands.
class Hands final {
public:
    explicit Hands(QWidget& form) : m_form(form) {}
    template <class Control>
    Control& Find(const char* name) const {
        return *m_form.findChild<Control*>(QString::fromLatin1(name));
    }
    QLineEdit& Box() const { return Find<QLineEdit>("txtSearchStr"); }
    toolkit::FlexGrid& Grid() const { return Find<toolkit::FlexGrid>("grdDispWindow"); }
    QPushButton& Select() const { return Find<QPushButton>("cmdSelect"); }
    QString Label(const char* name) const { return Find<QLabel>(name).text(); }
    QStringList Codes() const {
        QStringList codes;
        for (int row = 1; row < Grid().Rows(); ++row)
            codes << Grid().TextMatrix(row, 2);
        return codes;
    }

private:
    QWidget& m_form;
};

QStringList Words(const char* text) {
    return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

}  // namespace

class tst_frmSearch final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void Load_showsTheListOfTheCriteria();
    void Typing_narrowsInUpperCase();
    void Typing_takesQuotesAndPlaceholdersAsText_data();
    void Typing_takesQuotesAndPlaceholdersAsText();
    void Nothing_canBePickedFromAnEmptyList();
    void Moving_rewritesTheBoxButNotTheList();
    void Row_isMarkedOnlyByATextOrAKey();
    void Row_isPickedByKeyAndMouse_data();
    void Row_isPickedByKeyAndMouse();
    void Leaving_withoutAPickKeepsTheLastCode_data();
    void Leaving_withoutAPickKeepsTheLastCode();
    void Template_withoutPlaceholderRunsUnchanged();
    void Failure_atLoadReachesTheCaller();

private:
    /// Shows the window for the criteria and lets `act` work in it.
    void Show(const QString& criteria, const std::function<void(const Hands&)>& act);

    std::unique_ptr<TestHospital> m_hospital;
    std::unique_ptr<frmSearch> m_form;
};

void tst_frmSearch::init() {
    m_hospital = std::make_unique<TestHospital>();
    const auto user = std::make_shared<fakes::User>();
    user->Session = m_hospital->Connect();
    user->Session->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    modGlobals::gCurrentUser = user;
    modGlobals::gCompany = QStringLiteral("Velmora General Hospital");
    m_form = std::make_unique<frmSearch>();
    m_form->SetSearchCaption(QStringLiteral("Revenue Codes"));
    m_form->SetQuery(QStringLiteral("sp_CAPD_SearchRevenue '0','##'"));
}

void tst_frmSearch::Show(const QString& criteria, const std::function<void(const Hands&)>& act) {
    m_form->SetCriteria(criteria);
    PickListKeys keys([&act](QDialog& form) { act(Hands(form)); });
    m_form->exec();
    QCOMPARE(keys.Shown, 1);
}

void tst_frmSearch::Load_showsTheListOfTheCriteria() {
    const CommandLog log;
    Show(QStringLiteral("C"), [&](const Hands& hands) {
        QCOMPARE(log.Sent, QStringList(QStringLiteral("sp_CAPD_SearchRevenue '0','C'")));
        QCOMPARE(m_form->windowTitle(), QStringLiteral("Revenue Codes"));
        QCOMPARE(hands.Label("lblTitle"), QStringLiteral("Revenue Codes"));
        QCOMPARE(hands.Label("lblSTitle"), QStringLiteral("Revenue Codes"));
        QCOMPARE(hands.Label("lblHospital"), QStringLiteral("Velmora General Hospital"));
        QCOMPARE(hands.Label("lblTotalCap"), QStringLiteral("Total Records:"));
        QCOMPARE(hands.Label("lblTotal"), QStringLiteral("3"));
        QVERIFY(!hands.Find<QCheckBox>("chkAutoSearch").isVisible());
        QCOMPARE(hands.Codes(), Words("CY CA CS"));
        const auto& grid = hands.Grid();
        QCOMPARE(grid.TextMatrix(0, 1), QStringLiteral("description"));
        QCOMPARE(grid.TextMatrix(0, 2), QStringLiteral("code"));
        QVERIFY(grid.horizontalHeader()->font().bold());
        QCOMPARE(grid.ColWidth(0), 200);
        QCOMPARE(grid.ColWidth(1), 4150);
        QCOMPARE(grid.ColWidth(2), 1500);
        QCOMPARE(grid.Row(), 1);
        QVERIFY(hands.Box().hasFocus());
        QCOMPARE(hands.Box().selectedText(), QStringLiteral("C"));
    });
}

void tst_frmSearch::Typing_narrowsInUpperCase() {
    Show({}, [](const Hands& hands) {
        QCOMPARE(hands.Codes(), Words("CY CA CS PH MD"));
        const CommandLog log;
        QTest::keyClicks(&hands.Box(), QStringLiteral("ca"));
        QCOMPARE(hands.Box().text(), QStringLiteral("CA"));
        QCOMPARE(log.Sent, QStringList({QStringLiteral("sp_CAPD_SearchRevenue '0','C'"),
                                        QStringLiteral("sp_CAPD_SearchRevenue '0','CA'")}));
        QCOMPARE(hands.Codes(), Words("CY CA"));
        QCOMPARE(hands.Label("lblTotal"), QStringLiteral("2"));
        QTest::keyClick(&hands.Box(), Qt::Key_Left);
        QCOMPARE(log.Sent.size(), 2);
        QCOMPARE(hands.Grid().ColWidth(1), 4150);
    });
}

void tst_frmSearch::Typing_takesQuotesAndPlaceholdersAsText_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("command");
    QTest::newRow("quote") << "O'"
                           << "sp_CAPD_SearchRevenue '0','O'''";
    QTest::newRow("placeholder") << "##"
                                 << "sp_CAPD_SearchRevenue '0','##'";
    QTest::newRow("end of command") << "';--"
                                    << "sp_CAPD_SearchRevenue '0',''';--'";
    const QString longText(1000, u'X');
    QTest::newRow("1,000 letters")
        << longText << QStringLiteral("sp_CAPD_SearchRevenue '0','%1'").arg(longText);
}

void tst_frmSearch::Typing_takesQuotesAndPlaceholdersAsText() {
    QFETCH(QString, typed);
    QFETCH(QString, command);
    Show(QStringLiteral("CA"), [&](const Hands& hands) {
        const CommandLog log;
        hands.Box().selectAll();
        hands.Box().insert(typed.chopped(1));
        QTest::keyClicks(&hands.Box(), typed.right(1));
        QCOMPARE(log.Sent.value(log.Sent.size() - 1), command);
        QCOMPARE(hands.Codes(), QStringList());
    });
}

void tst_frmSearch::Nothing_canBePickedFromAnEmptyList() {
    Show(QStringLiteral("NO SUCH CODE"), [this](const Hands& hands) {
        QCOMPARE(hands.Grid().Rows(), 1);
        QCOMPARE(hands.Label("lblTotal"), QStringLiteral("0"));
        QVERIFY(!hands.Select().isEnabled());
        QTest::keyClick(&hands.Box(), Qt::Key_Return);
        QTest::keyClick(&hands.Box(), Qt::Key_Down);
        QTest::keyClick(&hands.Grid(), Qt::Key_Return);
        QVERIFY(m_form->isVisible());
        QVERIFY(!m_form->Valid());
        // One that finds something again can.
        hands.Box().clear();
        QTest::keyClicks(&hands.Box(), QStringLiteral("P"));
        QCOMPARE(hands.Codes(), Words("PH MD"));
        QVERIFY(hands.Select().isEnabled());
    });
}

void tst_frmSearch::Moving_rewritesTheBoxButNotTheList() {
    Show(QStringLiteral("CAPD"), [](const Hands& hands) {
        const CommandLog log;
        QTest::keyClick(&hands.Box(), Qt::Key_Down);
        QVERIFY(hands.Grid().hasFocus());
        QCOMPARE(hands.Grid().Row(), 1);
        QTest::keyClick(&hands.Grid(), Qt::Key_Down);
        QCOMPARE(hands.Box().text(), QStringLiteral("CAPD SUPPLIES"));
        QTest::keyClick(&hands.Grid(), Qt::Key_Up);
        QCOMPARE(hands.Box().text(), QStringLiteral("CAPD CONSULTATION FEE"));
        QCOMPARE(hands.Codes(), Words("CY CA"));
        QCOMPARE(log.Sent, QStringList());
        // What is typed next is searched from what the box shows.
        hands.Box().setFocus();
        QTest::keyClick(&hands.Box(), Qt::Key_End);
        QTest::keyClick(&hands.Box(), Qt::Key_S);
        QCOMPARE(hands.Label("lblTotal"), QStringLiteral("0"));
    });
}

void tst_frmSearch::Row_isPickedByKeyAndMouse_data() {
    QTest::addColumn<int>("way");
    QTest::addColumn<QString>("code");
    QTest::newRow("Enter in the box: the marked row") << 0 << "CA";
    QTest::newRow("Enter in the grid") << 1 << "CA";
    QTest::newRow("double click") << 2 << "CA";
    QTest::newRow("button") << 3 << "CA";
}

void tst_frmSearch::Row_isMarkedOnlyByATextOrAKey() {
    Show({}, [](const Hands& hands) {
        QTest::keyClick(&hands.Box(), Qt::Key_Return);
        QVERIFY(!hands.Select().isEnabled() && hands.Grid().Row() == 0);
        QTest::keyClick(&hands.Box(), Qt::Key_Down);
        QVERIFY(hands.Select().isEnabled() && hands.Grid().Row() == 1);
    });
    QVERIFY(!m_form->Valid());
}

void tst_frmSearch::Row_isPickedByKeyAndMouse() {
    QFETCH(int, way);
    QFETCH(QString, code);
    Show(QStringLiteral("CAPD"), [way](const Hands& hands) {
        hands.Grid().SetRow(2);
        const QPoint place = hands.Grid().visualRect(hands.Grid().currentIndex()).center();
        if (way == 0)
            QTest::keyClick(&hands.Box(), Qt::Key_Return);
        else if (way == 1)
            QTest::keyClick(&hands.Grid(), Qt::Key_Return);
        else if (way == 3)
            hands.Select().click();
        else
            QTest::mouseClick(hands.Grid().viewport(), Qt::LeftButton, {}, place);
        if (way == 2)
            QTest::mouseDClick(hands.Grid().viewport(), Qt::LeftButton, {}, place);
    });
    QVERIFY(m_form->Valid());
    QCOMPARE(m_form->ResultCode(), code);
}

void tst_frmSearch::Leaving_withoutAPickKeepsTheLastCode_data() {
    QTest::addColumn<int>("way");
    QTest::newRow("cancel") << 0;
    QTest::newRow("escape") << 1;
    QTest::newRow("close box") << 2;
}

void tst_frmSearch::Leaving_withoutAPickKeepsTheLastCode() {
    QFETCH(int, way);
    Show(QStringLiteral("PH"), [](const Hands& hands) { hands.Select().click(); });
    QVERIFY(m_form->Valid());
    Show(QStringLiteral("CAPD"), [&](const Hands& hands) {
        if (way == 0)
            hands.Find<QPushButton>("cmdCancel").click();
        else if (way == 1)
            QTest::keyClick(&hands.Box(), Qt::Key_Escape);
        else
            m_form->close();
        QVERIFY(!m_form->isVisible());
    });
    QVERIFY(!m_form->Valid());
    QCOMPARE(m_form->ResultCode(), QStringLiteral("PH"));
}

void tst_frmSearch::Template_withoutPlaceholderRunsUnchanged() {
    const QString query = QStringLiteral("SELECT DiscType FROM BILLING..tbDiscountType");
    m_form->SetQuery(query);
    Show(QStringLiteral("Z"), [&](const Hands& hands) {
        const CommandLog log;
        QTest::keyClicks(&hands.Box(), QStringLiteral("Q"));
        QCOMPARE(log.Sent, QStringList(query));
        QCOMPARE(hands.Label("lblTotal"), QStringLiteral("6"));
    });
}

void tst_frmSearch::Failure_atLoadReachesTheCaller() {
    m_form->SetQuery(QStringLiteral("sp_NoSuchProcedure '##'"));
    QVERIFY_EXCEPTION_THROWN(m_form->exec(), base::DatabaseError);
    QVERIFY(!m_form->isVisible());
}

QTEST_MAIN(tst_frmSearch)
#include "tst_frmSearch.moc"
