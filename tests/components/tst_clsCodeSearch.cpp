#include "PickListKeys.h"
#include "Rows.h"
#include "TestHospital.h"
#include "components/builtin/clsCodeSearch.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using components::clsCodeSearch;
using components::CodeSearch;

// A text that names one row gives it; any other text is settled in the pick list.
class tst_clsCodeSearch final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
        m_codes.SetMTS_Server({});
        m_codes.Initialize_Classes();
        m_codes.SetCompanyName(u"Velmora General Hospital"_s);
        m_codes.SetSearchMode(true);
        m_codes.SetConnection(m_connection);
        m_codes.SetOtherSectionID(u"CY"_s);
    }

    void SearchListing_givesTheOneRowWithoutAList_data() {
        Columns<int, QString, QString>();
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

    void SearchListing_givesTheOneRowWithoutAList() {
        auto [listing, text, code] = Fetch<int, QString, QString>();
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

    void SearchListing_showsTheListForAnyOtherText_data() {
        Columns<int, QString, int>();
        QTest::newRow("several names") << CodeSearch::kDoctors << u"pe"_s << 3;
        QTest::newRow("empty") << CodeSearch::kDoctors << QString() << 16;
        QTest::newRow("unknown") << CodeSearch::kDoctors << u"999"_s << 0;
        QTest::newRow("wild card") << CodeSearch::kDoctors << u"%"_s << 0;
        QTest::newRow("one letter's wild card") << CodeSearch::kDosages << u"_ID"_s << 0;
        QTest::newRow("quote") << CodeSearch::kDoctors << u"' OR '1'='1"_s << 0;
        QTest::newRow("several codes") << CodeSearch::kOtherRevenue << u"50"_s << 9;
        QTest::newRow("doctor as shown") << CodeSearch::kDoctors << u"DR. Grace"_s << 16;
    }

    void SearchListing_showsTheListForAnyOtherText() {
        auto [listing, text, rows] = Fetch<int, QString, int>();
        int shownRows = -1;
        PickListKeys keys([&shownRows](QDialog& list) { shownRows = PickListKeys::Total(list); });
        QVERIFY(!m_codes.SearchListing(text, listing));
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(shownRows, rows);
        QVERIFY(m_codes.Cancelled());
    }

    void SearchListing_prefersTheExactCode() {
        m_connection->Execute(
            u"INSERT INTO PATIENT_DATA..tbDoctor (DoctorID, LastName, FirstName) "
            "VALUES ('1', 'Aldous', 'Ann')"_s);
        PickListKeys keys;
        QString code = u"1"_s;
        QVERIFY(m_codes.SearchListing(code, CodeSearch::kDoctors));
        QCOMPARE(m_codes.Doctor().LastName, u"Aldous"_s);
        // Without searching by code the same text is a mere beginning, of seventeen codes.
        m_codes.SetSearchMode(false);
        QVERIFY(!m_codes.SearchListing(code, CodeSearch::kDoctors));
        QCOMPARE(keys.Shown, 1);
    }

    void SearchListing_picksByKeys() {
        PickListKeys keys([](QDialog& list) {
            QVERIFY(PickListKeys::Box(list)->hasFocus());
            // The text stands selected: typing replaces it.
            QTest::keyClicks(PickListKeys::Box(list), u"Pe"_s);
            QCOMPARE(PickListKeys::Total(list), 3);
            QTest::keyClick(PickListKeys::Box(list), Qt::Key_Down);
            QVERIFY(PickListKeys::Rows(list)->hasFocus());
            QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Down);
            QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Return);
        });
        QString text = u"nobody"_s;
        QVERIFY(m_codes.SearchListing(text, CodeSearch::kDoctors));
        QCOMPARE(text, u"108"_s);
        QCOMPARE(m_codes.Doctor().LastName, u"Penrose"_s);
        QVERIFY(!m_codes.Cancelled());
    }

    void SearchListing_keepsTextAndRecordWhenTheListIsClosed() {
        QString known = u"TID"_s;
        QVERIFY(m_codes.SearchListing(known, CodeSearch::kDosages));
        QCOMPARE(m_codes.Dosage().Frequency, u"3"_s);
        PickListKeys keys([](QDialog& list) { QTest::keyClick(&list, Qt::Key_Escape); });
        QString unknown = u" once "_s;
        QVERIFY(!m_codes.SearchListing(unknown, CodeSearch::kDosages));
        QVERIFY(m_codes.Cancelled());
        QCOMPARE(unknown, u" once "_s);
        QCOMPARE(m_codes.Dosage().ResultCode, u"TID"_s);
        QVERIFY(m_codes.SearchListing(known, CodeSearch::kDosages));
        QVERIFY(!m_codes.Cancelled());
    }

    void SearchListing_refusesAnUnknownList() {
        QString text;
        QVERIFY_EXCEPTION_THROWN(m_codes.SearchListing(text, 7), base::RuntimeError);
    }

    // Joined as they stand, as the doctor search does, the parts give the name.
    void Doctor_joinsToACompleteName_data() {
        Columns<QString, QString, QString>();
        QTest::newRow("three names")
            << u"101"_s << u"Clara Wren Abernathy"_s << u"Clara Abernathy"_s;
        QTest::newRow("no middle name")
            << u"Fair"_s << u"Simon Fairweather"_s << u"Simon Fairweather"_s;
    }

    void Doctor_joinsToACompleteName() {
        auto [text, joined, trimmed] = Fetch<QString, QString, QString>();
        QVERIFY(m_codes.SearchListing(text, CodeSearch::kDoctors));
        const components::DoctorRecord& doctor = m_codes.Doctor();
        QCOMPARE(doctor.FirstName + doctor.MiddleName + doctor.LastName, joined);
        QCOMPARE(doctor.FirstName.trimmed() + QLatin1Char(' ') + doctor.LastName, trimmed);
    }

    void OtherRevenue_belongsToItsSection() {
        m_codes.SetOtherSectionID(u"MD"_s);
        QString code = u"804"_s;
        QVERIFY(m_codes.SearchListing(code, CodeSearch::kOtherRevenue));
        QCOMPARE(m_codes.OtherRevenue().OtherRevenue, u"CATHETER INSERTION FEE"_s);
        QCOMPARE(m_codes.OtherRevenue().RateA, 6500.0);
        PickListKeys keys;
        QString otherSection = u"501"_s;
        QVERIFY(!m_codes.SearchListing(otherSection, CodeSearch::kOtherRevenue));
        QCOMPARE(keys.Shown, 1);
    }

    void PickList_selectsNothingWhereNothingIsFound() {
        PickListKeys keys([](QDialog& list) {
            QTest::keyClick(PickListKeys::Box(list), Qt::Key_Return);
            QVERIFY(list.isVisible());
            QTest::keyClick(PickListKeys::Box(list), Qt::Key_Down);
            QVERIFY(PickListKeys::Box(list)->hasFocus());
        });
        QString text = u"nobody"_s;
        QVERIFY(!m_codes.SearchListing(text, CodeSearch::kDoctors));
    }

    void PickList_goesBackToTheBoxFromTheFirstRow() {
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

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    clsCodeSearch m_codes;
};

QTEST_MAIN(tst_clsCodeSearch)
#include "tst_clsCodeSearch.moc"
