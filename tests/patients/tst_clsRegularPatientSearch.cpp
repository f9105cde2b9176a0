#include "patients/clsRegularPatientSearch.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include "CommandLog.h"
#include "FakeComponents.h"
#include "TestHospital.h"
#include "components/PickListKeys.h"
#include "db/Recordset.h"
#include "patients/frmPatientListing.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"

namespace {

template <class Control>
Control& Find(QDialog& form, const char* name) {
    return *form.findChild<Control*>(QString::fromLatin1(name));
}
QLineEdit& Box(QDialog& form) {
    return Find<QLineEdit>(form, "txtSearch");
}
toolkit::FlexGrid& Grid(QDialog& form) {
    return Find<toolkit::FlexGrid>(form, "grdTable");
}

}  // namespace

class tst_clsRegularPatientSearch final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void OnePatient_isTakenWithoutTheListing_data();
    void OnePatient_isTakenWithoutTheListing();
    void NoneOrSeveral_areNobodyWithoutTheListing();
    void Listing_isSearchedAndPickedFromByKeys();
    void Listing_ofNobodyOffersNothing();
    void Pick_thatIsGoneIsNobody();
    void CurrentRegistration_narrowsWhenItIsOffered();

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
};

void tst_clsRegularPatientSearch::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
    const auto user = std::make_shared<fakes::User>();
    user->Session = m_connection;
    modGlobals::gCurrentUser = user;
    m_connection->Execute(QStringLiteral(
        "INSERT INTO PATIENT_DATA..tbMaster (HospNum, LastName, FirstName, Sex, CivilStatus, "
        "BirthDate, Town) VALUES ('7', 'D''ZZY', 'Zoe', 'F', '', '19800131', 'Quay'), ('8', "
        "'ZZTWO', 'Al', 'M', '3', NULL, NULL), ('9', 'ZZTWO', 'Bo', 'M', NULL, NULL, NULL)"));
}

void tst_clsRegularPatientSearch::OnePatient_isTakenWithoutTheListing_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("hospital number") << "7";
    QTest::newRow("complete last name, whatever its case") << "d'zzy";
}

void tst_clsRegularPatientSearch::OnePatient_isTakenWithoutTheListing() {
    QFETCH(QString, text);
    PickListKeys keys;
    clsRegularPatientSearch search;
    QVERIFY(search.ValidatePatient(text, true));
    QCOMPARE(keys.Shown, 0);
    QCOMPARE(search.HospNum(), QStringLiteral("7"));
    QCOMPARE(search.LastName(), QStringLiteral("D'ZZY"));
    QCOMPARE(search.CivilStatus(), QStringLiteral("1"));
    QCOMPARE(search.BirthDate(), QStringLiteral("1/31/1980"));
    QVERIFY(search.Age().toInt() >= 46);
    QCOMPARE(search.Town(), QStringLiteral("Quay"));
    QCOMPARE(search.Province(), QString());
}

void tst_clsRegularPatientSearch::NoneOrSeveral_areNobodyWithoutTheListing() {
    PickListKeys keys;
    clsRegularPatientSearch search;
    const CommandLog log;
    QVERIFY(!search.ValidatePatient(QStringLiteral("ZZTWO"), false));
    QVERIFY(!search.ValidatePatient(QStringLiteral("ZZNOBODY"), false));
    QVERIFY(!search.ValidatePatient(QString(), false));
    QCOMPARE(keys.Shown, 0);
    QCOMPARE(log.Sent.value(0),
             QStringLiteral("RADIOLOGY..spGlobal_RegularPatients '','1', 'ZZTWO'"));
}

void tst_clsRegularPatientSearch::Listing_isSearchedAndPickedFromByKeys() {
    const CommandLog log;
    PickListKeys keys([&log](QDialog& form) {
        QCOMPARE(form.windowTitle(), QStringLiteral("Regular Patients"));
        QCOMPARE(Find<QLabel>(form, "lblTitle").text(), QStringLiteral("    Regular Patients"));
        QVERIFY(!Find<QCheckBox>(form, "chkCurrent").isVisible());
        QVERIFY(!Find<QPushButton>(form, "cmdAddWalkIn").isVisible());
        QVERIFY(Box(form).hasFocus());
        QCOMPARE(Grid(form).Rows(), 3);
        QCOMPARE(Grid(form).Cols(), 6);
        QCOMPARE(Grid(form).ColWidth(0), 200);
        QCOMPARE(Grid(form).ColWidth(5), 1500);
        QTest::keyClicks(&Box(form), QStringLiteral(" zzt "));
        QTest::keyClick(&Box(form), Qt::Key_Return);
        QCOMPARE(log.Sent.last(),
                 QStringLiteral("RADIOLOGY..spGlobal_RegularPatients '0','0','ZZT'"));
        QTest::keyClick(&Box(form), Qt::Key_Down);
        QVERIFY(Grid(form).hasFocus());
        QTest::keyClick(&Grid(form), Qt::Key_Down);
        QTest::keyClick(&Grid(form), Qt::Key_Return);
        QVERIFY(!form.isVisible());
    });
    clsRegularPatientSearch search;
    QVERIFY(search.ValidatePatient(QStringLiteral("ZZTWO"), true));
    QCOMPARE(log.Sent.last(), QStringLiteral("RADIOLOGY..spGlobal_RegularPatients '0','1', '9'"));
    QCOMPARE(search.FirstName(), QStringLiteral("Bo"));
}

void tst_clsRegularPatientSearch::Listing_ofNobodyOffersNothing() {
    PickListKeys keys([](QDialog& form) {
        QCOMPARE(Grid(form).Rows(), 2);
        QCOMPARE(Grid(form).TextMatrix(1, 1), QString());
        QVERIFY(!Find<QPushButton>(form, "cmdSelect").isEnabled());
        QTest::keyClick(&Grid(form), Qt::Key_Return);
        QVERIFY(form.isVisible());
        // A number is found as soon as the list is told that it is one.
        Box(form).setText(QStringLiteral("8"));
        QTest::keyClick(&Box(form), Qt::Key_Return);
        QVERIFY(!Find<QPushButton>(form, "cmdSelect").isEnabled());
        QTest::keyClick(&Find<QComboBox>(form, "cmbSearch"), Qt::Key_Down);
        QTest::keyClick(&Box(form), Qt::Key_Return);
        QVERIFY(Find<QPushButton>(form, "cmdSelect").isEnabled());
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    clsRegularPatientSearch search;
    QVERIFY(!search.ValidatePatient(QStringLiteral("ZZNOBODY"), true));
    QCOMPARE(keys.Shown, 1);
    QCOMPARE(search.HospNum(), QString());
}

void tst_clsRegularPatientSearch::Pick_thatIsGoneIsNobody() {
    PickListKeys keys([this](QDialog& form) {
        m_connection->Execute(
            QStringLiteral("DELETE FROM PATIENT_DATA..tbMaster WHERE LastName = 'ZZTWO'"));
        Find<QPushButton>(form, "cmdSelect").click();
    });
    clsRegularPatientSearch search;
    QVERIFY(!search.ValidatePatient(QStringLiteral("ZZTWO"), true));
}

void tst_clsRegularPatientSearch::CurrentRegistration_narrowsWhenItIsOffered() {
    m_connection->Execute(QStringLiteral(
        "INSERT INTO PATIENT_DATA..tbOutPatient (IdNum, HospNum, AdmDate, PatientType, RoomID) "
        "VALUES ('A9B', '9', '20240105', 'O', 'OPD')"));
    frmPatientListing listing;
    listing.SetPatientQuery(QStringLiteral("RADIOLOGY..spGlobal_RegularPatients '#1','#2','#3'"));
    listing.SetPatientRecord(QStringLiteral("ZZ"));
    listing.SetCurrentCaption(QStringLiteral("Current Registration Only"));
    listing.SetEnableAddPatient(true);
    PickListKeys keys([](QDialog& form) {
        QVERIFY(Find<QPushButton>(form, "cmdAddWalkIn").isVisible());
        QCOMPARE(Grid(form).TextMatrix(1, 1), QStringLiteral("8"));
        QTest::keyClick(&Find<QCheckBox>(form, "chkCurrent"), Qt::Key_Space);
        QCOMPARE(Grid(form).Rows(), 2);
        const QPoint place = Grid(form).visualRect(Grid(form).currentIndex()).center();
        QTest::mouseClick(Grid(form).viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(Grid(form).viewport(), Qt::LeftButton, {}, place);
    });
    listing.exec();
    QVERIFY(listing.Valid());
    QCOMPARE(listing.ResultCode(), QStringLiteral("9"));
}

QTEST_MAIN(tst_clsRegularPatientSearch)
#include "tst_clsRegularPatientSearch.moc"
