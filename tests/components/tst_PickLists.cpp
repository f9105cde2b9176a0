#include "PickListKeys.h"
#include "Rows.h"
#include "TestHospital.h"
#include "components/builtin/PickListDelegate.h"
#include "components/builtin/clsCodeSearch.h"
#include "components/builtin/clsPatientLister.h"
#include "components/builtin/clsSupplies.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using namespace components;

namespace {

enum List { Doctors, Dosages, Fees, Medicines, Supplies, UnitSupplies, PharmacySupplies };

/// Letters are typed; > < stand for the arrows down and up, # for Enter, ! for Escape.
void Press(const QString& keys) {
    static const QMap<QChar, Qt::Key> named{
        {u'>', Qt::Key_Down}, {u'<', Qt::Key_Up}, {u'#', Qt::Key_Return}, {u'!', Qt::Key_Escape}};
    for (const QChar key : keys) {
        QWidget* there = QApplication::focusWidget();
        if (named.contains(key))
            QTest::keyClick(there, named[key]);
        else
            QTest::keyClick(there, key.toLatin1());
    }
}

}  // namespace

// A text that names one row gives it; any other text is settled in the pick list.
class tst_PickLists final : public QObject {
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
        m_supplies = clsListDrugs();
        QVERIFY(m_supplies.InitConnection(m_connection));
        m_supplies.SetListTitle(u"List of Medicines"_s);
        m_lister.Initialize_Classes();
        m_lister.SetInitConnection(m_connection);
    }

    void Text_namesOneRowOrShowsTheList_data() {
        Columns<int, QString, QString, int>();
        const auto one = [](List list, const char* text, const char* code) {
            QTest::addRow("%d: %s", list, text)
                << int(list) << QString::fromUtf8(text) << QString::fromUtf8(code) << -1;
        };
        const auto several = [](List list, const char* text, int rows) {
            QTest::addRow("%d: %s", list, text)
                << int(list) << QString::fromUtf8(text) << QString() << rows;
        };
        one(Doctors, "101", "101");
        one(Doctors, "  101 ", "101");
        one(Doctors, "hal", "105");
        one(Doctors, "D'S", "102");
        one(Doctors, "núñ", "106");
        one(Dosages, "bid", "BID");
        one(Dosages, "every", "EOD");
        one(Fees, "505", "505");
        one(Fees, "home", "507");
        one(Medicines, "vanc", "1025");
        one(UnitSupplies, "titan", "109");
        one(UnitSupplies, "116", "116");
        one(PharmacySupplies, "vanc", "1025");
        several(Doctors, "pe", 3);
        several(Doctors, "", 16);
        several(Doctors, "999", 0);
        several(Doctors, "%", 0);
        several(Doctors, "' OR '1'='1", 0);
        // As the charge windows show a doctor: what was chosen before is no search.
        several(Doctors, "DR. Grace", 16);
        several(Dosages, "_ID", 0);
        several(Fees, "50", 9);
        several(Medicines, "", 25);
        several(Medicines, "dialysis", 0);
        several(Medicines, "O'", 0);
        several(Supplies, "", 28);
        several(UnitSupplies, "", 16);
        several(UnitSupplies, "dialysis", 4);
        several(UnitSupplies, "%", 0);
    }

    void Text_namesOneRowOrShowsTheList() {
        auto [list, text, code, rows] = Fetch<int, QString, QString, int>();
        int shown = -1;
        QString title;
        PickListKeys keys([&](QDialog& window) {
            shown = PickListKeys::Total(window);
            title = window.windowTitle();
        });
        QCOMPARE(Asked(List(list), text), code);
        QCOMPARE(shown, rows);
        QCOMPARE(m_codes.Cancelled(), list <= Fees && rows >= 0);
        if (list >= Medicines && rows >= 0)
            QCOMPARE(title, u"List of Medicines"_s);
    }

    void Keys_pickARow_data() {
        Columns<int, QString, QString, QString>();
        const auto row = [](const char* name, List list, const char* text, const char* keys,
                            const char* code) {
            QTest::newRow(name) << int(list) << QString(QLatin1String(text))
                                << QString(QLatin1String(keys)) << QString(QLatin1String(code));
        };
        row("typing replaces the text", Doctors, "nobody", "Pe>>#", "108");
        row("the second row", Medicines, "AMLO", ">>#", "1001");
        row("up within the rows", Medicines, "AMLO", ">><#", "1002");
        row("the first that was searched", UnitSupplies, "dialysis", "#", "101");
        row("given up", Doctors, "pe", "!", "");
        row("nothing found, nothing taken", Doctors, "nobody", "#>hal#", "105");
        row("nothing searched, nothing taken", Dosages, "", "#every#", "EOD");
        row("back to the box from the first row", Dosages, "", ">><<every#", "EOD");
    }

    void Keys_pickARow() {
        auto [list, text, press, code] = Fetch<int, QString, QString, QString>();
        PickListKeys keys([keys = press](QDialog&) { Press(keys); });
        QCOMPARE(Asked(List(list), text), code);
        QCOMPARE(keys.Shown, 1);
    }

    void Code_comesBeforeItsBeginnings() {
        m_connection->Execute(
            u"INSERT INTO PATIENT_DATA..tbDoctor (DoctorID, LastName, FirstName) "
            "VALUES ('1', 'Aldous', 'Ann')"_s);
        PickListKeys keys;
        QCOMPARE(Asked(Doctors, u"1"_s), u"1"_s);
        QCOMPARE(m_codes.Doctor().LastName, u"Aldous"_s);
        m_codes.SetSearchMode(false);
        QCOMPARE(Asked(Doctors, u"1"_s), QString());
        QCOMPARE(keys.Shown, 1);
    }

    void ClosedList_keepsTextAndRecord() {
        QCOMPARE(Asked(Dosages, u"tid"_s), u"TID"_s);
        PickListKeys keys;
        QString unknown = u" once "_s;
        QVERIFY(!m_codes.SearchListing(unknown, CodeSearch::kDosages));
        QCOMPARE(unknown, u" once "_s);
        QCOMPARE(m_codes.Dosage().ResultCode, u"TID"_s);
        QCOMPARE(m_codes.Dosage().Frequency, u"3"_s);
        QVERIFY_EXCEPTION_THROWN(m_codes.SearchListing(unknown, 7), base::RuntimeError);
    }

    // Joined as they stand, as the doctor search does, the parts give the name.
    void Doctor_joinsToACompleteName() {
        const DoctorRecord& doctor = m_codes.Doctor();
        Asked(Doctors, u"101"_s);
        QCOMPARE(doctor.FirstName + doctor.MiddleName + doctor.LastName, u"Clara Wren Abernathy"_s);
        Asked(Doctors, u"Fair"_s);
        QCOMPARE(doctor.FirstName + doctor.MiddleName + doctor.LastName, u"Simon Fairweather"_s);
    }

    void Fee_belongsToItsSection() {
        m_codes.SetOtherSectionID(u"MD"_s);
        QCOMPARE(Asked(Fees, u"804"_s), u"804"_s);
        QCOMPARE(m_codes.OtherRevenue().ResultCode, u"804"_s);
        QCOMPARE(m_codes.OtherRevenue().OtherRevenue, u"CATHETER INSERTION FEE"_s);
        QCOMPARE(m_codes.OtherRevenue().RateA, 6500.0);
        PickListKeys keys;
        QCOMPARE(Asked(Fees, u"501"_s), QString());
    }

    void Supplies_showMoneyStockAndState() {
        for (const QString& change :
             {u"UPDATE BILLING..tbDrugStock SET OnHand = -2.5 WHERE DrugCode = '116'"_s,
              u"INSERT INTO BILLING..tbDrug (DrugCode, DrugName, Kind, Status, SellingPriceIn, "
              "SellingPriceOut) VALUES ('1161', 'W', 'S', 0, 1, 1)"_s,
              u"INSERT INTO BILLING..tbDrugStock (DrugCode, LocationID, OnHand) "
              "VALUES ('1161', '46', 1)"_s})
            m_connection->Execute(change);
        PickListKeys keys([](QDialog& list) {
            const auto shown = [&list](int column) {
                const auto* rows = PickListKeys::Rows(list);
                QStyleOptionViewItem option;
                static_cast<PickListDelegate*>(rows->itemDelegateForColumn(column))
                    ->initStyleOption(&option, rows->model()->index(0, column));
                return option;
            };
            QCOMPARE(PickListKeys::Cell(list, 0, 0), u"116"_s);
            QCOMPARE(PickListKeys::Cell(list, 0, 3), u"480.00"_s);
            QCOMPARE(shown(5).text, u"-2.5"_s);
            QVERIFY(shown(5).palette.color(QPalette::Text).red() > 0x90);
            QVERIFY(shown(5).palette.color(QPalette::Text).green() < 0x40);
            QCOMPARE(shown(6).text, u"Inactive"_s);
        });
        Asked(UnitSupplies, u"116"_s);
        QCOMPARE(keys.Shown, 1);
        QVERIFY(!clsListDrugs().InitConnection(nullptr));
    }

    // The record of another item must not price a line.
    void Supply_thatIsNotThere_leavesNoRecord() {
        clsDrug drug;
        QVERIFY(!drug.InitConnect(nullptr));
        QVERIFY(drug.InitConnect(m_connection) && drug.SearchDrug(u"116"_s, u"46"_s));
        QCOMPARE(drug.Drug().DrugCode, u"116"_s);
        QVERIFY(!drug.SearchDrug(u"1'6"_s, u"46"_s));
        QCOMPARE(drug.Drug().DrugCode + drug.Drug().DrugName, QString());
        QCOMPARE(drug.Drug().SellingPriceOut, 0.0);
    }

    void Listing_findsAStayByItsWholeNumber() {
        for (const int code : {PatientLister::kInpatients, PatientLister::kOutpatients}) {
            const bool inpatients = code == PatientLister::kInpatients;
            const QString number = FirstNumber(inpatients ? "tbPatient" : "tbOutPatient");
            QString asked = u"  %1 "_s.arg(number);
            QVERIFY(m_lister.PatientListing(asked, code, false));
            QCOMPARE(asked, number);
            const ListedPatient& patient =
                inpatients ? m_lister.Inpatient() : m_lister.Outpatient();
            QCOMPARE(patient.IDNumber, number);
            QVERIFY(!patient.HospitalNumber.isEmpty() && !patient.LastName.isEmpty());
            QVERIFY(patient.Age.toInt() > 0 && u"MF"_s.contains(patient.Sex));
        }
        const QString known = m_lister.Outpatient().IDNumber;
        for (QString stranger : {u"A9999999B"_s, u"A'B"_s, u"%"_s, u"A"_s})
            QVERIFY(!m_lister.PatientListing(stranger, PatientLister::kOutpatients, false));
        QCOMPARE(m_lister.Outpatient().IDNumber, known);
    }

    // A list that ends before its rows do says so.
    void Listing_picksWhereNoNumberIsGiven() {
        const QString wanted = FirstNumber("tbOutPatient");
        QString wide, narrow, number;
        PickListKeys keys([&](QDialog& list) {
            const auto* limit = list.findChild<QLabel*>(u"lblLimit"_s);
            Press(u"A0"_s);
            wide = limit->text();
            PickListKeys::Box(list)->clear();
            Press(wanted);
            narrow = limit->text();
            Press(u"#"_s);
        });
        QVERIFY(m_lister.PatientListing(number, PatientLister::kOutpatients, false));
        QCOMPARE(number, wanted);
        QCOMPARE(m_lister.Outpatient().IDNumber, wanted);
        QCOMPARE(wide, u"first 500; type more"_s);
        QCOMPARE(narrow, QString());
        number.clear();
        QVERIFY(!m_lister.PatientListing(number, PatientLister::kOutpatients, false));
        QCOMPARE(number, QString());
        QCOMPARE(m_lister.Outpatient().IDNumber, wanted);
    }

private:
    /// The code that the list gives for the text; empty where it gives none.
    QString Asked(List list, QString text) {
        if (list <= Fees) {
            const int listings[] = {CodeSearch::kDoctors, CodeSearch::kDosages,
                                    CodeSearch::kOtherRevenue};
            return m_codes.SearchListing(text, listings[list]) ? text : QString();
        }
        m_supplies.SetDrugsORCSR(list == Medicines);
        const char* locations[] = {"", "", "46", "20"};
        return m_supplies.ShowList(text, true, QLatin1String(locations[list - Medicines]));
    }

    QString FirstNumber(const char* table) {
        return m_connection
            ->Execute(u"SELECT TOP (1) IdNum FROM PATIENT_DATA..%1 ORDER BY IdNum"_s.arg(
                QLatin1String(table)))
            ->Fields(0)
            .Text();
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    clsCodeSearch m_codes;
    clsListDrugs m_supplies;
    clsPatientLister m_lister;
};

QTEST_MAIN(tst_PickLists)
#include "tst_PickLists.moc"
