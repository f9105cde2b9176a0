#include "Rows.h"
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

using namespace Qt::StringLiterals;

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
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        const auto user = std::make_shared<fakes::User>();
        user->Session = m_hospital->Connect();
        user->Session->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        modGlobals::gCurrentUser = user;
        modGlobals::gCompany = u"Velmora General Hospital"_s;
        m_form = std::make_unique<frmSearch>();
        m_form->SetSearchCaption(u"Revenue Codes"_s);
        m_form->SetQuery(u"sp_CAPD_SearchRevenue '0','##'"_s);
    }

    void Load_showsTheListOfTheCriteria() {
        const CommandLog log;
        Show(u"C"_s, [&](const Hands& hands) {
            QCOMPARE(log.Sent, QStringList(u"sp_CAPD_SearchRevenue '0','C'"_s));
            QCOMPARE(m_form->windowTitle(), u"Revenue Codes"_s);
            QCOMPARE(hands.Label("lblTitle"), u"Revenue Codes"_s);
            QCOMPARE(hands.Label("lblSTitle"), u"Revenue Codes"_s);
            QCOMPARE(hands.Label("lblHospital"), u"Velmora General Hospital"_s);
            QCOMPARE(hands.Label("lblTotalCap"), u"Total Records:"_s);
            QCOMPARE(hands.Label("lblTotal"), u"3"_s);
            QVERIFY(!hands.Find<QCheckBox>("chkAutoSearch").isVisible());
            QCOMPARE(hands.Codes(), Words("CY CA CS"));
            const auto& grid = hands.Grid();
            QCOMPARE(grid.TextMatrix(0, 1), u"description"_s);
            QCOMPARE(grid.TextMatrix(0, 2), u"code"_s);
            QVERIFY(grid.horizontalHeader()->font().bold());
            QCOMPARE(grid.ColWidth(0), 200);
            QCOMPARE(grid.ColWidth(1), 4150);
            QCOMPARE(grid.ColWidth(2), 1500);
            QCOMPARE(grid.Row(), 1);
            QVERIFY(hands.Box().hasFocus());
            QCOMPARE(hands.Box().selectedText(), u"C"_s);
        });
    }

    void Typing_narrowsInUpperCase() {
        Show({}, [](const Hands& hands) {
            QCOMPARE(hands.Codes(), Words("CY CA CS PH MD"));
            const CommandLog log;
            QTest::keyClicks(&hands.Box(), u"ca"_s);
            QCOMPARE(hands.Box().text(), u"CA"_s);
            QCOMPARE(log.Sent, QStringList({u"sp_CAPD_SearchRevenue '0','C'"_s,
                                            u"sp_CAPD_SearchRevenue '0','CA'"_s}));
            QCOMPARE(hands.Codes(), Words("CY CA"));
            QCOMPARE(hands.Label("lblTotal"), u"2"_s);
            QTest::keyClick(&hands.Box(), Qt::Key_Left);
            QCOMPARE(log.Sent.size(), 2);
            QCOMPARE(hands.Grid().ColWidth(1), 4150);
        });
    }

    void Typing_takesQuotesAndPlaceholdersAsText_data() {
        Columns<QString, QString>();
        QTest::newRow("quote") << "O'"
                               << "sp_CAPD_SearchRevenue '0','O'''";
        QTest::newRow("placeholder") << "##"
                                     << "sp_CAPD_SearchRevenue '0','##'";
        QTest::newRow("end of command") << "';--"
                                        << "sp_CAPD_SearchRevenue '0',''';--'";
        const QString longText(1000, u'X');
        QTest::newRow("1,000 letters")
            << longText << u"sp_CAPD_SearchRevenue '0','%1'"_s.arg(longText);
    }

    void Typing_takesQuotesAndPlaceholdersAsText() {
        auto [typed, command] = Fetch<QString, QString>();
        Show(u"CA"_s, [&](const Hands& hands) {
            const CommandLog log;
            hands.Box().selectAll();
            hands.Box().insert(typed.chopped(1));
            QTest::keyClicks(&hands.Box(), typed.right(1));
            QCOMPARE(log.Sent.value(log.Sent.size() - 1), command);
            QCOMPARE(hands.Codes(), QStringList());
        });
    }

    void Nothing_canBePickedFromAnEmptyList() {
        Show(u"NO SUCH CODE"_s, [this](const Hands& hands) {
            QCOMPARE(hands.Grid().Rows(), 1);
            QCOMPARE(hands.Label("lblTotal"), u"0"_s);
            QVERIFY(!hands.Select().isEnabled());
            QTest::keyClick(&hands.Box(), Qt::Key_Return);
            QTest::keyClick(&hands.Box(), Qt::Key_Down);
            QTest::keyClick(&hands.Grid(), Qt::Key_Return);
            QVERIFY(m_form->isVisible());
            QVERIFY(!m_form->Valid());
            // One that finds something again can.
            hands.Box().clear();
            QTest::keyClicks(&hands.Box(), u"P"_s);
            QCOMPARE(hands.Codes(), Words("PH MD"));
            QVERIFY(hands.Select().isEnabled());
        });
    }

    void Moving_rewritesTheBoxButNotTheList() {
        Show(u"CAPD"_s, [](const Hands& hands) {
            const CommandLog log;
            QTest::keyClick(&hands.Box(), Qt::Key_Down);
            QVERIFY(hands.Grid().hasFocus());
            QCOMPARE(hands.Grid().Row(), 1);
            QTest::keyClick(&hands.Grid(), Qt::Key_Down);
            QCOMPARE(hands.Box().text(), u"CAPD SUPPLIES"_s);
            QTest::keyClick(&hands.Grid(), Qt::Key_Up);
            QCOMPARE(hands.Box().text(), u"CAPD CONSULTATION FEE"_s);
            QCOMPARE(hands.Codes(), Words("CY CA"));
            QCOMPARE(log.Sent, QStringList());
            // What is typed next is searched from what the box shows.
            hands.Box().setFocus();
            QTest::keyClick(&hands.Box(), Qt::Key_End);
            QTest::keyClick(&hands.Box(), Qt::Key_S);
            QCOMPARE(hands.Label("lblTotal"), u"0"_s);
        });
    }

    void Row_isMarkedOnlyByATextOrAKey() {
        Show({}, [](const Hands& hands) {
            QTest::keyClick(&hands.Box(), Qt::Key_Return);
            QVERIFY(!hands.Select().isEnabled() && hands.Grid().Row() == 0);
            QTest::keyClick(&hands.Box(), Qt::Key_Down);
            QVERIFY(hands.Select().isEnabled() && hands.Grid().Row() == 1);
        });
        QVERIFY(!m_form->Valid());
    }

    void Row_isPickedByKeyAndMouse_data() {
        Columns<int, QString>();
        QTest::newRow("Enter in the box: the marked row") << 0 << "CA";
        QTest::newRow("Enter in the grid") << 1 << "CA";
        QTest::newRow("double click") << 2 << "CA";
        QTest::newRow("button") << 3 << "CA";
    }

    void Row_isPickedByKeyAndMouse() {
        auto [way, code] = Fetch<int, QString>();
        Show(u"CAPD"_s, [way](const Hands& hands) {
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

    void Leaving_withoutAPickKeepsTheLastCode_data() {
        QTest::addColumn<int>("way");
        QTest::newRow("cancel") << 0;
        QTest::newRow("escape") << 1;
        QTest::newRow("close box") << 2;
    }

    void Leaving_withoutAPickKeepsTheLastCode() {
        QFETCH(int, way);
        Show(u"PH"_s, [](const Hands& hands) { hands.Select().click(); });
        QVERIFY(m_form->Valid());
        Show(u"CAPD"_s, [&](const Hands& hands) {
            if (way == 0)
                hands.Find<QPushButton>("cmdCancel").click();
            else if (way == 1)
                QTest::keyClick(&hands.Box(), Qt::Key_Escape);
            else
                m_form->close();
            QVERIFY(!m_form->isVisible());
        });
        QVERIFY(!m_form->Valid());
        QCOMPARE(m_form->ResultCode(), u"PH"_s);
    }

    void Template_withoutPlaceholderRunsUnchanged() {
        const QString query = u"SELECT DiscType FROM BILLING..tbDiscountType"_s;
        m_form->SetQuery(query);
        Show(u"Z"_s, [&](const Hands& hands) {
            const CommandLog log;
            QTest::keyClicks(&hands.Box(), u"Q"_s);
            QCOMPARE(log.Sent, QStringList(query));
            QCOMPARE(hands.Label("lblTotal"), u"6"_s);
        });
    }

    void Failure_atLoadReachesTheCaller() {
        m_form->SetQuery(u"sp_NoSuchProcedure '##'"_s);
        QVERIFY_EXCEPTION_THROWN(m_form->exec(), base::DatabaseError);
        QVERIFY(!m_form->isVisible());
    }

private:
    /// Shows the window for the criteria and lets `act` work in it.
    void Show(const QString& criteria, const std::function<void(const Hands&)>& act) {
        m_form->SetCriteria(criteria);
        PickListKeys keys([&act](QDialog& form) { act(Hands(form)); });
        m_form->exec();
        QCOMPARE(keys.Shown, 1);
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::unique_ptr<frmSearch> m_form;
};

QTEST_MAIN(tst_frmSearch)
#include "tst_frmSearch.moc"
