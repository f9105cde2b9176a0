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

using namespace Qt::StringLiterals;

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
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
        const auto user = std::make_shared<fakes::User>();
        user->Session = m_connection;
        modGlobals::gCurrentUser = user;
        m_connection->Execute(
            u"INSERT INTO PATIENT_DATA..tbMaster (HospNum, LastName, FirstName, Sex, CivilStatus, "
            "BirthDate, Town) VALUES ('7', 'D''ZZY', 'Zoe', 'F', '', '19800131', 'Quay'), ('8', "
            "'ZZTWO', 'Al', 'M', '3', NULL, NULL), ('9', 'ZZTWO', 'Bo', 'M', NULL, NULL, NULL)"_s);
    }

    void OnePatient_isTakenWithoutTheListing_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("hospital number") << "7";
        QTest::newRow("complete last name, whatever its case") << "d'zzy";
    }

    void OnePatient_isTakenWithoutTheListing() {
        QFETCH(QString, text);
        PickListKeys keys;
        clsRegularPatientSearch search;
        QVERIFY(search.ValidatePatient(text, true));
        QCOMPARE(keys.Shown, 0);
        QCOMPARE(search.HospNum(), u"7"_s);
        QCOMPARE(search.LastName(), u"D'ZZY"_s);
        QCOMPARE(search.CivilStatus(), u"1"_s);
        QCOMPARE(search.BirthDate(), u"1/31/1980"_s);
        QVERIFY(search.Age().toInt() >= 46);
        QCOMPARE(search.Town(), u"Quay"_s);
        QCOMPARE(search.Province(), QString());
    }

    void NoneOrSeveral_areNobodyWithoutTheListing() {
        PickListKeys keys;
        clsRegularPatientSearch search;
        const CommandLog log;
        QVERIFY(!search.ValidatePatient(u"ZZTWO"_s, false));
        QVERIFY(!search.ValidatePatient(u"ZZNOBODY"_s, false));
        QVERIFY(!search.ValidatePatient(QString(), false));
        QCOMPARE(keys.Shown, 0);
        QCOMPARE(log.Sent.value(0), u"RADIOLOGY..spGlobal_RegularPatients '','1', 'ZZTWO'"_s);
    }

    void Listing_isSearchedAndPickedFromByKeys() {
        const CommandLog log;
        PickListKeys keys([&log](QDialog& form) {
            QCOMPARE(form.windowTitle(), u"Regular Patients"_s);
            QCOMPARE(Find<QLabel>(form, "lblTitle").text(), u"    Regular Patients"_s);
            QVERIFY(!Find<QCheckBox>(form, "chkCurrent").isVisible());
            QVERIFY(!Find<QPushButton>(form, "cmdAddWalkIn").isVisible());
            QVERIFY(Box(form).hasFocus());
            QCOMPARE(Grid(form).Rows(), 3);
            QCOMPARE(Grid(form).Cols(), 6);
            QCOMPARE(Grid(form).ColWidth(0), 200);
            QCOMPARE(Grid(form).ColWidth(5), 1500);
            QTest::keyClicks(&Box(form), u" zzt "_s);
            QTest::keyClick(&Box(form), Qt::Key_Return);
            QCOMPARE(log.Sent.last(), u"RADIOLOGY..spGlobal_RegularPatients '0','0','ZZT'"_s);
            QTest::keyClick(&Box(form), Qt::Key_Down);
            QVERIFY(Grid(form).hasFocus());
            QTest::keyClick(&Grid(form), Qt::Key_Down);
            QTest::keyClick(&Grid(form), Qt::Key_Return);
            QVERIFY(!form.isVisible());
        });
        clsRegularPatientSearch search;
        QVERIFY(search.ValidatePatient(u"ZZTWO"_s, true));
        QCOMPARE(log.Sent.last(), u"RADIOLOGY..spGlobal_RegularPatients '0','1', '9'"_s);
        QCOMPARE(search.FirstName(), u"Bo"_s);
    }

    void Listing_ofNobodyOffersNothing() {
        PickListKeys keys([](QDialog& form) {
            QCOMPARE(Grid(form).Rows(), 2);
            QCOMPARE(Grid(form).TextMatrix(1, 1), QString());
            QVERIFY(!Find<QPushButton>(form, "cmdSelect").isEnabled());
            QTest::keyClick(&Grid(form), Qt::Key_Return);
            QVERIFY(form.isVisible());
            // A number is found as soon as the list is told that it is one.
            Box(form).setText(u"8"_s);
            QTest::keyClick(&Box(form), Qt::Key_Return);
            QVERIFY(!Find<QPushButton>(form, "cmdSelect").isEnabled());
            QTest::keyClick(&Find<QComboBox>(form, "cmbSearch"), Qt::Key_Down);
            QTest::keyClick(&Box(form), Qt::Key_Return);
            QVERIFY(Find<QPushButton>(form, "cmdSelect").isEnabled());
            QTest::keyClick(&form, Qt::Key_Escape);
        });
        clsRegularPatientSearch search;
        QVERIFY(!search.ValidatePatient(u"ZZNOBODY"_s, true));
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(search.HospNum(), QString());
    }

    void Pick_thatIsGoneIsNobody() {
        PickListKeys keys([this](QDialog& form) {
            m_connection->Execute(u"DELETE FROM PATIENT_DATA..tbMaster WHERE LastName = 'ZZTWO'"_s);
            Find<QPushButton>(form, "cmdSelect").click();
        });
        clsRegularPatientSearch search;
        QVERIFY(!search.ValidatePatient(u"ZZTWO"_s, true));
    }

    void CurrentRegistration_narrowsWhenItIsOffered() {
        m_connection->Execute(
            u"INSERT INTO PATIENT_DATA..tbOutPatient (IdNum, HospNum, AdmDate, PatientType, "
            u"RoomID) "
            "VALUES ('A9B', '9', '20240105', 'O', 'OPD')"_s);
        frmPatientListing listing;
        listing.SetPatientQuery(u"RADIOLOGY..spGlobal_RegularPatients '#1','#2','#3'"_s);
        listing.SetPatientRecord(u"ZZ"_s);
        listing.SetCurrentCaption(u"Current Registration Only"_s);
        listing.SetEnableAddPatient(true);
        PickListKeys keys([](QDialog& form) {
            QVERIFY(Find<QPushButton>(form, "cmdAddWalkIn").isVisible());
            QCOMPARE(Grid(form).TextMatrix(1, 1), u"8"_s);
            QTest::keyClick(&Find<QCheckBox>(form, "chkCurrent"), Qt::Key_Space);
            QCOMPARE(Grid(form).Rows(), 2);
            const QPoint place = Grid(form).visualRect(Grid(form).currentIndex()).center();
            QTest::mouseClick(Grid(form).viewport(), Qt::LeftButton, {}, place);
            QTest::mouseDClick(Grid(form).viewport(), Qt::LeftButton, {}, place);
        });
        listing.exec();
        QVERIFY(listing.Valid());
        QCOMPARE(listing.ResultCode(), u"9"_s);
    }

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
};

QTEST_MAIN(tst_clsRegularPatientSearch)
#include "tst_clsRegularPatientSearch.moc"
