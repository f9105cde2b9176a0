#include "patients/clsRegularPatientSearch.h"

#include "WindowTest.h"
#include "patients/frmPatientListing.h"

namespace {

QLineEdit& Box(QDialog& form) {
    return Find<QLineEdit>(form, "txtSearch");
}
toolkit::FlexGrid& Grid(QDialog& form) {
    return Find<toolkit::FlexGrid>(form, "grdTable");
}

}  // namespace

class tst_clsRegularPatientSearch final : public WindowTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        Do(u"INSERT INTO PATIENT_DATA..tbMaster (HospNum, LastName, FirstName, Sex, CivilStatus, "
           "BirthDate, Town) VALUES ('7', 'D''ZZY', 'Zoe', 'F', '', '19800131', 'Quay'), ('8', "
           "'ZZTWO', 'Al', 'M', '3', NULL, NULL), ('9', 'ZZTWO', 'Bo', 'M', NULL, NULL, NULL)"_s);
    }
    void cleanup() { TearDown(); }

    void OnePatient_isTakenWithoutTheListing() {
        // By hospital number, or by a complete last name, whatever its case.
        for (const QString& text : {u"7"_s, u"d'zzy"_s}) {
            clsRegularPatientSearch search;
            QVERIFY(search.ValidatePatient(text, true));
            QCOMPARE((QStringList{search.HospNum(), search.LastName(), search.CivilStatus(),
                                  search.BirthDate(), search.Town(), search.Province()})
                         .join(u'|'),
                     u"7|D'ZZY|1|1/31/1980|Quay|"_s);
            QVERIFY(search.Age().toInt() >= 46);
        }
        const CommandLog log;
        for (const QString& nobody : {u"ZZTWO"_s, u"ZZNOBODY"_s, QString()})
            QVERIFY(!clsRegularPatientSearch().ValidatePatient(nobody, false));
        QCOMPARE(log.Sent.first(), u"RADIOLOGY..spGlobal_RegularPatients '','1', 'ZZTWO'"_s);
    }

    void Listing_isSearchedAndPickedFromByKeys() {
        const CommandLog log;
        PickListKeys keys([&log](QDialog& form) {
            QVERIFY(!Find<QCheckBox>(form, "chkCurrent").isVisible());
            QVERIFY(!Find<QPushButton>(form, "cmdAddWalkIn").isVisible());
            QVERIFY(Box(form).hasFocus());
            QTest::keyClicks(&Box(form), u" zzt "_s);
            QTest::keyClick(&Box(form), Qt::Key_Return);
            QCOMPARE(log.Sent.last(), u"RADIOLOGY..spGlobal_RegularPatients '0','0','ZZT'"_s);
            QTest::keyClick(&Box(form), Qt::Key_Down);
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
            const auto& select = Find<QPushButton>(form, "cmdSelect");
            QCOMPARE(Grid(form).TextMatrix(1, 1), QString());
            QTest::keyClick(&Grid(form), Qt::Key_Return);
            QVERIFY(form.isVisible() && !select.isEnabled());
            // A number is found as soon as the list is told that it is one.
            Box(form).setText(u"8"_s);
            QTest::keyClick(&Box(form), Qt::Key_Return);
            QVERIFY(!select.isEnabled());
            QTest::keyClick(&Find<QComboBox>(form, "cmbSearch"), Qt::Key_Down);
            QTest::keyClick(&Box(form), Qt::Key_Return);
            QVERIFY(select.isEnabled());
            QTest::keyClick(&form, Qt::Key_Escape);
        });
        clsRegularPatientSearch search;
        QVERIFY(!search.ValidatePatient(u"ZZNOBODY"_s, true));
        QCOMPARE(search.HospNum(), QString());
        // Nor is one who is gone when the row is taken.
        PickListKeys late([](QDialog& form) {
            Do(u"DELETE FROM PATIENT_DATA..tbMaster WHERE LastName = 'ZZTWO'"_s);
            Click(form, "cmdSelect");
        });
        QVERIFY(!search.ValidatePatient(u"ZZTWO"_s, true));
        QCOMPARE(keys.Shown + late.Shown, 2);
    }

    void CurrentRegistration_narrowsWhenItIsOffered() {
        Do(u"INSERT INTO PATIENT_DATA..tbOutPatient (IdNum, HospNum, AdmDate, PatientType, RoomID) "
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
};

QTEST_MAIN(tst_clsRegularPatientSearch)
#include "tst_clsRegularPatientSearch.moc"
