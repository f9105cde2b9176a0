#include "Rows.h"
#include "charges/clsComputeDiscount.h"

#include <QTest>

#include "CommandLog.h"
#include "FakeComponents.h"
#include "TestHospital.h"
#include "charges/PatientClass.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"

using namespace Qt::StringLiterals;

namespace {

QString HospNumQuery(const char* table, const QString& idNum) {
    return u"SELECT Hospnum from Patient_Data..%1 WHERE IdNum = '%2'"_s.arg(
        QString::fromLatin1(table), idNum);
}

/// The five commands behind one amount.
QStringList AmountCommands(const char* table, const QString& idNum, const QString& hospNum,
                           const QString& discount) {
    return {HospNumQuery(table, idNum.trimmed()),
            u"RADIOLOGY..spRadio_GetDiscountType '%1','%2'"_s.arg(hospNum, idNum),
            HospNumQuery(table, idNum.trimmed()),
            u"SELECT MSSClassification FROM PATIENT_DATA..tbMaster "
            "WHERE HospNum = '%1'"_s.arg(hospNum),
            u"RADIOLOGY..spRadio_GetDiscount "_s + discount};
}

}  // namespace

// Over the demo hospital: item 101 of "CA" stands at a price, 20 % off for senior citizens, half
// off for the social service's class C2.
class tst_clsComputeDiscount final : public QObject {
    Q_OBJECT
private slots:
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
        m_connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        const auto user = std::make_shared<fakes::User>();
        user->Session = m_connection;
        modGlobals::gCurrentUser = user;
        m_visit = TextOf(u"SELECT TOP (1) IdNum FROM PATIENT_DATA..tbOutPatient"_s);
        m_hospNum = TextOf(
            u"SELECT HospNum FROM PATIENT_DATA..tbOutPatient "
            "WHERE IdNum = '%1'"_s.arg(m_visit));
        m_admission = TextOf(
            u"SELECT TOP (1) IdNum FROM PATIENT_DATA..tbPatient "
            "WHERE RoomClassID = 'S' AND HospNum <> '%1'"_s.arg(m_hospNum));
        m_price = TextOf(u"SELECT SellingPriceOut FROM BILLING..tbDrug WHERE DrugCode = '101'"_s);
    }

    void Amount_asksFiveCommandsEachTime_data() {
        Columns<bool, QString>();
        QTest::newRow("visit") << false << "";
        QTest::newRow("admission") << true << "";
        QTest::newRow("blanks around the number") << true << " ";
    }

    void Amount_asksFiveCommandsEachTime() {
        auto [admission, around] = Fetch<bool, QString>();
        Grant(u"QF"_s, u"C2"_s);
        const QString number = admission ? m_admission : m_visit;
        const char* table = admission ? "tbPatient" : "tbOutPatient";
        const QString hospNum = TextOf(
            u"SELECT HospNum FROM PATIENT_DATA..%1 WHERE "
            "IdNum = '%2'"_s.arg(QString::fromLatin1(table), number));
        const QString idNum = around + number + around;
        clsComputeDiscount discount;
        discount.SetIdNum(idNum);
        discount.SetRevenueID(u"CA"_s);
        discount.SetItemCode(u"101"_s);
        discount.SetWithMarkUp(0);
        const CommandLog log;
        discount.NetAmount();
        const QStringList expected =
            AmountCommands(table, idNum, hospNum, u"'CA','101','QF','C2', '0'"_s);
        QCOMPARE(log.Sent, expected);
        discount.DiscountAmount();
        discount.ItemPrice();
        QCOMPARE(log.Sent, expected + expected + expected);
        QCOMPARE(discount.DiscountType(), u"QF"_s);
        QCOMPARE(discount.MSSClassification(), u"C2"_s);
    }

    void Amounts_addUpToThePrice_data() {
        Columns<QString, QString, double>();
        QTest::newRow("none") << ""
                              << "" << 0.0;
        QTest::newRow("senior citizen") << "SM"
                                        << "" << 0.20;
        QTest::newRow("senior citizen with a class") << "SM"
                                                     << "C2" << 0.20;
        QTest::newRow("social service") << "QF"
                                        << "C2" << 0.50;
        QTest::newRow("social service, everything") << "QF"
                                                    << "D" << 1.0;
        QTest::newRow("social service without a class") << "QF"
                                                        << "" << 0.0;
        QTest::newRow("unknown type") << "XX"
                                      << "" << 0.0;
    }

    void Amounts_addUpToThePrice() {
        auto [type, classification, rate] = Fetch<QString, QString, double>();
        Grant(type, classification);
        clsComputeDiscount discount;
        discount.SetIdNum(m_visit);
        discount.SetRevenueID(u"CA"_s);
        discount.SetItemCode(u"101"_s);
        QCOMPARE(discount.ItemPrice(), m_price.toDouble());
        QVERIFY(qAbs(discount.DiscountAmount() - m_price.toDouble() * rate) < 0.00501);
        QVERIFY(qAbs(discount.NetAmount() + discount.DiscountAmount() - discount.ItemPrice()) <
                1e-9);
    }

    void Amount_countsWhatWasGrantedAMinuteAgo() {
        Grant({}, {});
        clsComputeDiscount discount;
        discount.SetIdNum(m_visit);
        discount.SetRevenueID(u"CA"_s);
        discount.SetItemCode(u"101"_s);
        QCOMPARE(discount.DiscountAmount(), 0.0);
        Grant(u"QF"_s, u"D"_s);
        QCOMPARE(discount.NetAmount(), 0.0);
        Grant({}, {});
        QCOMPARE(discount.DiscountAmount(), 0.0);
        QCOMPARE(discount.DiscountType(), QString());
        QCOMPARE(discount.MSSClassification(), QString());
    }

    void Item_withoutAPriceCostsTheLinesPrice() {
        Grant(u"SM"_s, {});
        clsComputeDiscount discount;
        QCOMPARE(discount.NetAmount(), 0.0);
        discount.SetIdNum(m_visit);
        discount.SetRevenueID(u"CA"_s);
        discount.SetItemCode(u"101"_s);
        discount.SetFullPrice(m_price.toDouble());
        QVERIFY(discount.DiscountAmount() > 0);
        // The next line must not be charged with the amounts of this one.
        discount.SetItemCode(u"99999"_s);
        discount.SetFullPrice(12.5);
        QCOMPARE(discount.NetAmount(), 12.5);
        QCOMPARE(discount.DiscountAmount(), 0.0);
        QCOMPARE(discount.ItemPrice(), 0.0);
    }

    void Visit_unknownGetsNoDiscount_data() {
        QTest::addColumn<QString>("idNum");
        QTest::newRow("admission") << "99999999";
        QTest::newRow("visit") << "A99999999B";
        QTest::newRow("none") << "";
        QTest::newRow("quote") << "A'1B";
    }

    void Visit_unknownGetsNoDiscount() {
        QFETCH(QString, idNum);
        clsComputeDiscount discount;
        discount.SetIdNum(idNum);
        discount.SetRevenueID(u"CA"_s);
        discount.SetItemCode(u"101"_s);
        const CommandLog log;
        QCOMPARE(discount.NetAmount(), m_price.toDouble());
        QCOMPARE(log.Sent.size(), 5);
        QVERIFY(log.Sent[1].startsWith(u"RADIOLOGY..spRadio_GetDiscountType '','"));
        QVERIFY(log.Sent[3].endsWith(u"HospNum = ''"));
        QCOMPARE(discount.DiscountAmount(), 0.0);
        QCOMPARE(discount.DiscountName(), QString());
    }

    void Visit_ofAnotherPatientForgetsTheOneBefore() {
        Grant(u"QF"_s, u"D"_s);
        clsComputeDiscount discount;
        discount.SetIdNum(m_visit);
        discount.SetRevenueID(u"CA"_s);
        discount.SetItemCode(u"101"_s);
        QCOMPARE(discount.NetAmount(), 0.0);
        discount.SetIdNum(u"A99999999B"_s);
        QCOMPARE(discount.DiscountType(), QString());
        QCOMPARE(discount.NetAmount(), m_price.toDouble());
        QCOMPARE(discount.MSSClassification(), QString());
    }

    void MarkUp_isSentAsAWholeNumber() {
        Grant({}, {});
        clsComputeDiscount discount;
        discount.SetIdNum(m_visit);
        discount.SetRevenueID(u"C'A"_s);
        discount.SetItemCode(u"101"_s);
        discount.SetWithMarkUp(-15);
        const CommandLog log;
        discount.NetAmount();
        QCOMPARE(log.Sent[4], u"RADIOLOGY..spRadio_GetDiscount 'C''A','101','','', '-15'"_s);
    }

    void DiscountName_namesEachType_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("SM") << "Senior Citizen";
        QTest::newRow("QF") << "Med.Social Service Discount";
        QTest::newRow("GE") << "Gov`t Employees Discount";
        QTest::newRow("GD") << "Gov`t Employees Dependent Discount";
        QTest::newRow("KE") << "Velmora Employees Discount";
        QTest::newRow("KD") << "Velmora Employees Dependent Discount";
        QTest::newRow("XX") << "";
        QTest::newRow("") << "";
    }

    void DiscountName_namesEachType() {
        Grant(QString::fromLatin1(QTest::currentDataTag()), {});
        clsComputeDiscount discount;
        discount.SetIdNum(m_visit);
        QTEST(discount.DiscountName(), "name");
    }

    void Labels_nameClassAndDiscount_data() {
        QTest::addColumn<bool>("admission");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("classification");
        QTest::addColumn<QString>("labels");
        QTest::newRow("pay, no discount") << false << ""
                                          << ""
                                          << "Pay|Pay Patient|";
        QTest::newRow("pay, senior") << false << "SM"
                                     << ""
                                     << "Pay|Pay Patient|Senior Citizen";
        QTest::newRow("service by class")
            << false << "QF"
            << "C2"
            << "Service|Class: C2 Service Patient|Med.Social Service Discount Class: C2";
        QTest::newRow("service by room, without a class")
            << true << "SM"
            << ""
            << "Service| Service Patient|Senior Citizen ";
        QTest::newRow("service by room, nothing granted") << true << ""
                                                          << ""
                                                          << "Service| Service Patient| ";
    }

    void Labels_nameClassAndDiscount() {
        QFETCH(bool, admission);
        QFETCH(QString, type);
        QFETCH(QString, classification);
        Grant(type, classification);
        clsComputeDiscount discount;
        const QString idNum = admission ? m_admission : m_visit;
        discount.SetIdNum(idNum);
        const PatientClass shown = PatientClassLabels(discount, idNum);
        QTEST(QStringList({shown.ClassWord, shown.ClassLabel, shown.DiscountLabel}).join(u'|'),
              "labels");
    }

    void Labels_sendTheirCommandsInOrder() {
        Grant(u"QF"_s, u"C2"_s);
        clsComputeDiscount discount;
        discount.SetIdNum(m_visit);
        {
            const CommandLog log;
            PatientClassLabels(discount, m_visit);
            const QStringList amount = AmountCommands("tbOutPatient", m_visit, m_hospNum, {});
            QCOMPARE(log.Sent,
                     QStringList({u"RADIOLOGY..spRadio_CheckPatientClass '%1'"_s.arg(m_visit),
                                  amount[2], amount[3], amount[0], amount[1]}));
        }
        const CommandLog log;
        discount.SetIdNum(u"A99999999B"_s);
        const PatientClass unknown = PatientClassLabels(discount, u"A99999999B"_s);
        QCOMPARE(log.Sent.size(), 1);
        QVERIFY(unknown.ClassWord.isEmpty() && unknown.ClassLabel.isEmpty() &&
                unknown.DiscountLabel.isEmpty());
    }

private:
    QString TextOf(const QString& query) { return m_connection->Execute(query)->Fields(0).Text(); }

    void Run(const QString& command) { m_connection->Execute(command); }
    // An empty text is a null: nothing granted.
    void Grant(const QString& discountType, const QString& classification) {
        const auto orNull = [](const QString& text) {
            return text.isEmpty() ? u"NULL"_s : db::Quoted(text);
        };
        for (const QString& stay : {u"tbOutPatient"_s, u"tbPatient"_s})
            Run(u"UPDATE PATIENT_DATA..%1 SET DiscType = %2 WHERE IdNum IN ('%3','%4')"_s.arg(
                stay, orNull(discountType), m_visit, m_admission));
        Run(u"UPDATE PATIENT_DATA..tbMaster SET MSSClassification = %1 WHERE HospNum "
            "IN ('%2', (SELECT HospNum FROM PATIENT_DATA..tbPatient WHERE "
            "IdNum = '%3'))"_s.arg(orNull(classification), m_hospNum, m_admission));
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    QString m_visit;      ///< an out-patient's
    QString m_hospNum;    ///< of the same patient
    QString m_admission;  ///< of another one, in a service room
    QString m_price;      ///< of item 101
};

QTEST_MAIN(tst_clsComputeDiscount)
#include "tst_clsComputeDiscount.moc"
