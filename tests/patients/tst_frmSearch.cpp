#include "patients/frmSearch.h"

#include "WindowTest.h"

using toolkit::FlexGrid;

namespace {

QLineEdit& Box(const QWidget& form) {
    return Find<QLineEdit>(form, "txtSearchStr");
}
FlexGrid& Grid(const QWidget& form) {
    return Find<FlexGrid>(form, "grdDispWindow");
}
QString Codes(const QWidget& form) {
    QStringList codes;
    for (int row = 1; row < Grid(form).Rows(); ++row)
        codes << Grid(form).TextMatrix(row, 2);
    return codes.join(u' ');
}

}  // namespace

class tst_frmSearch final : public WindowTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        m_form = std::make_unique<frmSearch>();
        m_form->SetSearchCaption(u"Revenue Codes"_s);
        m_form->SetQuery(u"sp_CAPD_SearchRevenue '0','##'"_s);
    }
    void cleanup() {
        m_form.reset();
        TearDown();
    }

    void Load_showsTheListOfTheCriteria() {
        Show(u"C"_s, [](QDialog& form) {
            QCOMPARE(TextOf(form, "lblTotal"), u"3"_s);
            QCOMPARE(Codes(form), u"CY CA CS"_s);
            QCOMPARE(Grid(form).Row(), 1);
            QVERIFY(Box(form).hasFocus());
            QCOMPARE(Box(form).selectedText(), u"C"_s);
        });
        QVERIFY(!m_form->Valid());
        m_form->SetQuery(u"sp_NoSuchProcedure '##'"_s);
        QVERIFY_EXCEPTION_THROWN(m_form->exec(), base::DatabaseError);
        QVERIFY(!m_form->isVisible());
    }

    void Typing_narrowsInUpperCase() {
        Show(u"P"_s, [](QDialog& form) {
            const CommandLog log;
            Box(form).selectAll();
            QTest::keyClicks(&Box(form), u"ca"_s);
            QCOMPARE(Codes(form), u"CY CA"_s);
            QTest::keyClick(&Box(form), Qt::Key_Left);
            QCOMPARE(log.Sent.size(), 2);
            Box(form).insert(u"';--"_s);
            QTest::keyClicks(&Box(form), u"#"_s);
            QCOMPARE(log.Sent.last(), u"sp_CAPD_SearchRevenue '0','C'';--#A'"_s);
        });
    }

    void Nothing_canBePickedFromAnEmptyList() {
        Show(u"NO SUCH CODE"_s, [](QDialog& form) {
            QCOMPARE(TextOf(form, "lblTotal"), u"0"_s);
            QVERIFY(!Find<QPushButton>(form, "cmdSelect").isEnabled());
            QTest::keyClick(&Box(form), Qt::Key_Return);
            QTest::keyClick(&Box(form), Qt::Key_Down);
            QTest::keyClick(&Grid(form), Qt::Key_Return);
            QVERIFY(form.isVisible());
            // One that finds something again can.
            Box(form).clear();
            QTest::keyClicks(&Box(form), u"P"_s);
            QCOMPARE(Codes(form), u"PH MD"_s);
            QVERIFY(Find<QPushButton>(form, "cmdSelect").isEnabled());
        });
        // Without a text no row is marked until a key goes to the list.
        Show({}, [](QDialog& form) {
            QTest::keyClick(&Box(form), Qt::Key_Return);
            QVERIFY(!Find<QPushButton>(form, "cmdSelect").isEnabled() && Grid(form).Row() == 0);
            QTest::keyClick(&Box(form), Qt::Key_Down);
            QVERIFY(Find<QPushButton>(form, "cmdSelect").isEnabled() && Grid(form).Row() == 1);
        });
        QVERIFY(!m_form->Valid());
    }

    void Moving_rewritesTheBoxButNotTheList() {
        Show(u"CAPD"_s, [](QDialog& form) {
            const CommandLog log;
            QTest::keyClick(&Box(form), Qt::Key_Down);
            QCOMPARE(Grid(form).Row(), 1);
            QTest::keyClick(&Grid(form), Qt::Key_Down);
            QCOMPARE(Box(form).text(), u"CAPD SUPPLIES"_s);
            QTest::keyClick(&Grid(form), Qt::Key_Up);
            QCOMPARE(Box(form).text(), u"CAPD CONSULTATION FEE"_s);
            QCOMPARE(Codes(form), u"CY CA"_s);
            QCOMPARE(log.Sent, QStringList());
            // What is typed next is searched from what the box shows.
            Box(form).setFocus();
            QTest::keyClick(&Box(form), Qt::Key_End);
            QTest::keyClick(&Box(form), Qt::Key_S);
            QCOMPARE(TextOf(form, "lblTotal"), u"0"_s);
        });
    }

    void Row_isPickedOrLeft() {
        const auto leave = [](auto act) {
            return [act](QDialog& form) {
                Grid(form).SetRow(2);
                act(form);
                QVERIFY(!form.isVisible());
            };
        };
        const auto place = [](QDialog& form) {
            return Grid(form).visualRect(Grid(form).currentIndex()).center();
        };
        const std::function<void(QDialog&)> picks[] = {
            leave([](QDialog& form) { QTest::keyClick(&Box(form), Qt::Key_Return); }),
            leave([](QDialog& form) { QTest::keyClick(&Grid(form), Qt::Key_Return); }),
            leave([place](QDialog& form) {
                QTest::mouseClick(Grid(form).viewport(), Qt::LeftButton, {}, place(form));
                QTest::mouseDClick(Grid(form).viewport(), Qt::LeftButton, {}, place(form));
            })};
        const std::function<void(QDialog&)> leaves[] = {
            leave([](QDialog& form) { Click(form, "cmdCancel"); }),
            leave([](QDialog& form) { QTest::keyClick(&Box(form), Qt::Key_Escape); })};
        for (const auto& pick : picks) {
            Show(u"CAPD"_s, pick);
            QVERIFY(m_form->Valid());
            QCOMPARE(m_form->ResultCode(), u"CA"_s);
        }
        // One who leaves keeps the code picked before.
        for (const auto& act : leaves) {
            Show(u"P"_s, act);
            QVERIFY(!m_form->Valid());
            QCOMPARE(m_form->ResultCode(), u"CA"_s);
        }
    }

private:
    /// Shows the window for the criteria and lets `act` work in it.
    void Show(const QString& criteria, const std::function<void(QDialog&)>& act) {
        m_form->SetCriteria(criteria);
        PickListKeys keys(act);
        m_form->exec();
        QCOMPARE(keys.Shown, 1);
    }

    std::unique_ptr<frmSearch> m_form;
};

QTEST_MAIN(tst_frmSearch)
#include "tst_frmSearch.moc"
