#include "PickListKeys.h"
#include "TestHospital.h"
#include "components/builtin/clsCodeSearch.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

using components::clsCodeSearch;
using components::CodeSearch;

// A text that names one row gives it; any other text is settled in the pick list.
class tst_clsCodeSearch final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void SearchListing_givesTheOneRowWithoutAList_data();
    void SearchListing_givesTheOneRowWithoutAList();
    void SearchListing_showsTheListForAnyOtherText_data();
    void SearchListing_showsTheListForAnyOtherText();
    void SearchListing_prefersTheExactCode();
    void SearchListing_picksByKeys();
    void SearchListing_keepsTextAndRecordWhenTheListIsClosed();
    void SearchListing_refusesAnUnknownList();
    void Doctor_joinsToACompleteName_data();
    void Doctor_joinsToACompleteName();
    void OtherRevenue_belongsToItsSection();
    void PickList_selectsNothingWhereNothingIsFound();
    void PickList_goesBackToTheBoxFromTheFirstRow();

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    clsCodeSearch m_codes;
};

void tst_clsCodeSearch::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
    m_codes.SetMTS_Server({});
    m_codes.Initialize_Classes();
    m_codes.SetCompanyName(QStringLiteral("Velmora General Hospital"));
    m_codes.SetSearchMode(true);
    m_codes.SetConnection(m_connection);
    m_codes.SetOtherSectionID(QStringLiteral("CY"));
}

void tst_clsCodeSearch::SearchListing_givesTheOneRowWithoutAList_data() {
    QTest::addColumn<int>("listing");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("code");
    const auto row = [](const char* name, int listing, const char* text, const char* code) {
        QTest::newRow(name) << listing << QString::fromUtf8(text) << QString::fromUtf8(code);
    };
    row("doctor's code", CodeSearch::kDoctors, "101", "101");
    row("blanks around it", CodeSearch::kDoctors, "  101 ", "101");
    row("beginning of a name", CodeSearch::kDoctors, "hal", "105");
    row("quote in the name", CodeSearch::kDoctors, "D'S", "102");
    row("name with accent", CodeSearch::kDoctors, "núñ", "106");
    row("dosage code in small letters", CodeSearch::kDosages, "bid", "BID");
    row("dosage name", CodeSearch::kDosages, "every", "EOD");
    row("fee's code", CodeSearch::kOtherRevenue, "505", "505");
    row("fee's name", CodeSearch::kOtherRevenue, "home", "507");
}

void tst_clsCodeSearch::SearchListing_givesTheOneRowWithoutAList() {
    QFETCH(int, listing);
    QFETCH(QString, text);
    QFETCH(QString, code);
    PickListKeys keys;
    QVERIFY(m_codes.SearchListing(text, listing));
    QCOMPARE(keys.Shown, 0);
    QCOMPARE(text, code);
    QVERIFY(!m_codes.Cancelled());
    const QString kept = listing == CodeSearch::kDoctors   ? m_codes.Doctor().ResultCode
                         : listing == CodeSearch::kDosages ? m_codes.Dosage().ResultCode
                                                           : m_codes.OtherRevenue().ResultCode;
    QCOMPARE(kept, code);
}

void tst_clsCodeSearch::SearchListing_showsTheListForAnyOtherText_data() {
    QTest::addColumn<int>("listing");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("rows");
    QTest::newRow("several names") << CodeSearch::kDoctors << QStringLiteral("pe") << 3;
    QTest::newRow("empty") << CodeSearch::kDoctors << QString() << 16;
    QTest::newRow("unknown") << CodeSearch::kDoctors << QStringLiteral("999") << 0;
    QTest::newRow("wild card") << CodeSearch::kDoctors << QStringLiteral("%") << 0;
    QTest::newRow("one letter's wild card") << CodeSearch::kDosages << QStringLiteral("_ID") << 0;
    QTest::newRow("quote") << CodeSearch::kDoctors << QStringLiteral("' OR '1'='1") << 0;
    QTest::newRow("several codes") << CodeSearch::kOtherRevenue << QStringLiteral("50") << 9;
    QTest::newRow("doctor as shown") << CodeSearch::kDoctors << QStringLiteral("DR. Grace") << 16;
}

void tst_clsCodeSearch::SearchListing_showsTheListForAnyOtherText() {
    QFETCH(int, listing);
    QFETCH(QString, text);
    QFETCH(int, rows);
    int shownRows = -1;
    PickListKeys keys([&shownRows](QDialog& list) { shownRows = PickListKeys::Total(list); });
    QVERIFY(!m_codes.SearchListing(text, listing));
    QCOMPARE(keys.Shown, 1);
    QCOMPARE(shownRows, rows);
    QVERIFY(m_codes.Cancelled());
}

void tst_clsCodeSearch::SearchListing_prefersTheExactCode() {
    m_connection->Execute(
        QStringLiteral("INSERT INTO PATIENT_DATA..tbDoctor (DoctorID, LastName, FirstName) "
                       "VALUES ('1', 'Aldous', 'Ann')"));
    PickListKeys keys;
    QString code = QStringLiteral("1");
    QVERIFY(m_codes.SearchListing(code, CodeSearch::kDoctors));
    QCOMPARE(m_codes.Doctor().LastName, QStringLiteral("Aldous"));
    // Without searching by code the same text is a mere beginning, of seventeen codes.
    m_codes.SetSearchMode(false);
    QVERIFY(!m_codes.SearchListing(code, CodeSearch::kDoctors));
    QCOMPARE(keys.Shown, 1);
}

void tst_clsCodeSearch::SearchListing_picksByKeys() {
    PickListKeys keys([](QDialog& list) {
        QVERIFY(PickListKeys::Box(list)->hasFocus());
        // The text stands selected: typing replaces it.
        QTest::keyClicks(PickListKeys::Box(list), QStringLiteral("Pe"));
        QCOMPARE(PickListKeys::Total(list), 3);
        QTest::keyClick(PickListKeys::Box(list), Qt::Key_Down);
        QVERIFY(PickListKeys::Rows(list)->hasFocus());
        QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Down);
        QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Return);
    });
    QString text = QStringLiteral("nobody");
    QVERIFY(m_codes.SearchListing(text, CodeSearch::kDoctors));
    QCOMPARE(text, QStringLiteral("108"));
    QCOMPARE(m_codes.Doctor().LastName, QStringLiteral("Penrose"));
    QVERIFY(!m_codes.Cancelled());
}

void tst_clsCodeSearch::SearchListing_keepsTextAndRecordWhenTheListIsClosed() {
    QString known = QStringLiteral("TID");
    QVERIFY(m_codes.SearchListing(known, CodeSearch::kDosages));
    QCOMPARE(m_codes.Dosage().Frequency, QStringLiteral("3"));
    PickListKeys keys([](QDialog& list) { QTest::keyClick(&list, Qt::Key_Escape); });
    QString unknown = QStringLiteral(" once ");
    QVERIFY(!m_codes.SearchListing(unknown, CodeSearch::kDosages));
    QVERIFY(m_codes.Cancelled());
    QCOMPARE(unknown, QStringLiteral(" once "));
    QCOMPARE(m_codes.Dosage().ResultCode, QStringLiteral("TID"));
    QVERIFY(m_codes.SearchListing(known, CodeSearch::kDosages));
    QVERIFY(!m_codes.Cancelled());
}

void tst_clsCodeSearch::SearchListing_refusesAnUnknownList() {
    QString text;
    QVERIFY_EXCEPTION_THROWN(m_codes.SearchListing(text, 7), base::RuntimeError);
}

// Joined as they stand, as the doctor search does, the parts give the name.
void tst_clsCodeSearch::Doctor_joinsToACompleteName_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("joined");
    QTest::addColumn<QString>("trimmed");
    QTest::newRow("three names") << QStringLiteral("101") << QStringLiteral("Clara Wren Abernathy")
                                 << QStringLiteral("Clara Abernathy");
    QTest::newRow("no middle name") << QStringLiteral("Fair") << QStringLiteral("Simon Fairweather")
                                    << QStringLiteral("Simon Fairweather");
}

void tst_clsCodeSearch::Doctor_joinsToACompleteName() {
    QFETCH(QString, text);
    QFETCH(QString, joined);
    QFETCH(QString, trimmed);
    QVERIFY(m_codes.SearchListing(text, CodeSearch::kDoctors));
    const components::DoctorRecord& doctor = m_codes.Doctor();
    QCOMPARE(doctor.FirstName + doctor.MiddleName + doctor.LastName, joined);
    QCOMPARE(doctor.FirstName.trimmed() + QLatin1Char(' ') + doctor.LastName, trimmed);
}

void tst_clsCodeSearch::OtherRevenue_belongsToItsSection() {
    m_codes.SetOtherSectionID(QStringLiteral("MD"));
    QString code = QStringLiteral("804");
    QVERIFY(m_codes.SearchListing(code, CodeSearch::kOtherRevenue));
    QCOMPARE(m_codes.OtherRevenue().OtherRevenue, QStringLiteral("CATHETER INSERTION FEE"));
    QCOMPARE(m_codes.OtherRevenue().RateA, 6500.0);
    PickListKeys keys;
    QString otherSection = QStringLiteral("501");
    QVERIFY(!m_codes.SearchListing(otherSection, CodeSearch::kOtherRevenue));
    QCOMPARE(keys.Shown, 1);
}

void tst_clsCodeSearch::PickList_selectsNothingWhereNothingIsFound() {
    PickListKeys keys([](QDialog& list) {
        QTest::keyClick(PickListKeys::Box(list), Qt::Key_Return);
        QVERIFY(list.isVisible());
        QTest::keyClick(PickListKeys::Box(list), Qt::Key_Down);
        QVERIFY(PickListKeys::Box(list)->hasFocus());
    });
    QString text = QStringLiteral("nobody");
    QVERIFY(!m_codes.SearchListing(text, CodeSearch::kDoctors));
}

void tst_clsCodeSearch::PickList_goesBackToTheBoxFromTheFirstRow() {
    PickListKeys keys([](QDialog& list) {
        // Without a text no row is marked, and Enter takes none.
        QTest::keyClick(PickListKeys::Box(list), Qt::Key_Return);
        QVERIFY(list.isVisible() && !PickListKeys::Rows(list)->currentIndex().isValid());
        QTest::keyClick(PickListKeys::Box(list), Qt::Key_Down);
        QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Down);
        QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Up);
        QVERIFY(PickListKeys::Rows(list)->hasFocus());
        QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Up);
        QVERIFY(PickListKeys::Box(list)->hasFocus());
    });
    QString text;
    QVERIFY(!m_codes.SearchListing(text, CodeSearch::kDosages));
    QCOMPARE(keys.Shown, 1);
}

QTEST_MAIN(tst_clsCodeSearch)
#include "tst_clsCodeSearch.moc"
