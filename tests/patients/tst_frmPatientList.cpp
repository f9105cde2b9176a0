#include "patients/frmPatientList.h"

#include "WindowTest.h"
#include "toolkit/ListView.h"

using toolkit::ListView;

namespace {

QString Search(const QString& arguments) {
    return u"CLINICAL_AREA..sp_CAPD_Patientsearch '%1'"_s.arg(arguments);
}

}  // namespace

// The list over the demo hospital, to which two patients are added: both are here today, one of
// them is on the register and also an in-patient.
class tst_frmPatientList final : public WindowTest {
    Q_OBJECT
private slots:
    void initTestCase() { qRegisterMetaType<OpenedPatient>("OpenedPatient"); }
    void init() {
        SetUp();
        for (const char* rows :
             {"PATIENT_DATA..tbMaster (HospNum, LastName, FirstName, MiddleName, Sex, Address) "
              "VALUES ('H1', 'ZZO''HARA', 'Ana', 'Luz', 'F', '12 Mabini St.'), ('H2', 'ZZPEÑA', "
              "'Juan', NULL, 'M', NULL)",
              "PATIENT_DATA..tbOutPatient (IdNum, HospNum, AdmDate, PatientType, RoomID, "
              "AccountNum, Company) VALUES ('A10B', 'H1', CONVERT(datetime, CONVERT(varchar(10), "
              "GETDATE(), 101) + ' 00:00:01', 101), 'O', 'OPD', '77', 'Harbour Works'), ('A11B', "
              "'H2', CONVERT(datetime, CONVERT(varchar(10), GETDATE(), 101), 101), 'O', 'OPD', "
              "NULL, NULL)",
              "PATIENT_DATA..tbPatient (IdNum, HospNum, AdmDate, RoomID, RoomClassID) VALUES "
              "('1001', 'H1', GETDATE(), 'R-204', 'W')",
              "CLINICAL_AREA..tbCAPDPatient (HospNum, CAPDNum, RegisteredAt, RegisteredBy) VALUES "
              "('H1', 'C7', GETDATE(), '4601')"})
            Do(u"INSERT INTO "_s + QString::fromUtf8(rows));
        m_form = std::make_unique<frmPatientList>();
        BringUp(*m_form);
        modGlobals::gTabNeedsLoad.fill(false);
    }

    void cleanup() {
        m_form.reset();
        TearDown();
    }

    void FirstList_isOfTodaysOutPatientsAndChoosesNobody() {
        QCOMPARE(m_form->focusWidget()->objectName(), u"txtIdNum"_s);
        QCOMPARE(m_form->HospNum() + m_form->IdNum() + m_form->CAPDNum(), QString());
        const CommandLog log;
        const frmPatientList second;
        SearchFor("txtLastName", u"ZZPEÑA"_s);
        Choose(3, false);
        m_form->Load();
        QCOMPARE(log.Sent, QStringList({Search(u"1','','A','"_s), Search(u"1','','','ZZPEÑA"_s),
                                        Search(u"1','H2','A11B','"_s)}));
        PluggedDriver::GoesAfter(0);
        QVERIFY_THROWS_EXCEPTION(base::DatabaseError, frmPatientList());
    }

    void Search_sendsItsMode() {
        const CommandLog log;
        QStringList modes;
        for (int option = 0; option < 4; ++option)
            for (const bool current : {false, true}) {
                Choose(option, current);
                SearchFor("txtLastName", u"ZZ"_s);
                modes << log.Sent.last().section(u'\'', 1, 1);
            }
        QCOMPARE(modes.join(u' '), u"4 3 2 1 6 6 5 5"_s);
        QCOMPARE(log.Sent.size(), 8);
    }

    void Search_sendsWhatWasTyped_data() {
        Columns<QString, QString, QString>();
        const auto row = [](const char* name, const char* field, const QString& pasted,
                            const QString& arguments) {
            QTest::newRow(name) << QString::fromLatin1(field) << pasted << Search(arguments);
        };
        row("blanks around", "txtHospNum", u"  h 1  "_s, u"1','H 1','','"_s);
        row("accent and emoji", "txtLastName", u"peña 🙂"_s, u"1','','','PEÑA 🙂"_s);
        row("100,000 letters", "txtIdNum", QString(100000, u'x'),
            u"1','','"_s + QString(100000, u'X') + u"','"_s);
    }

    void Search_sendsWhatWasTyped() {
        auto [field, pasted, command] = Fetch<QString, QString, QString>();
        auto& box = Find<QLineEdit>(*m_form, qPrintable(field));
        QGuiApplication::clipboard()->setText(pasted);
        const CommandLog log;
        box.paste();
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(log.Sent, QStringList(command));
    }

    void Search_withoutATextIsRefused() {
        const int rows = List().model()->rowCount();
        Answer(BoxAnswer::Ok);
        const CommandLog log;
        SearchFor("txtLastName", u"   "_s);
        QCOMPARE(Said().Text + u'|' + Said().Title, u"Please Enter a search text.|Message"_s);
        QCOMPARE(Said().Icon, BoxIcon::Information);
        QVERIFY_THROWS_EXCEPTION(base::DatabaseError,
                                 SearchFor("txtLastName", u"CR"_s + QChar(QChar::Null)));
        QVERIFY(log.Sent.isEmpty());
        QCOMPARE(List().model()->rowCount(), rows);
    }

    void Search_withoutRowsEmptiesTheList() {
        SearchFor("txtLastName", u"ZZ"_s);
        QCOMPARE(m_form->IdNum(), u"A10B"_s);
        SearchFor("txtLastName", u"NOBODY"_s);
        QCOMPARE(List().model()->rowCount(), 0);
        QVERIFY(!List().isEnabled());
        QCOMPARE(m_form->IdNum(), u"A10B"_s);
        auto& box = Find<QLineEdit>(*m_form, "txtLastName");
        QCOMPARE(box.selectedText(), u"NOBODY"_s);
        QTest::keyClick(&box, Qt::Key_Down);
        QVERIFY(box.hasFocus());
        SearchFor("txtLastName", u"ZZ"_s);
        QVERIFY(List().isEnabled());
    }

    void Search_thatFailsLeavesTheList() {
        SearchFor("txtLastName", u"ZZ"_s);
        Choose(2, true);
        PluggedDriver::GoesAfter(0);
        QVERIFY_THROWS_EXCEPTION(base::DatabaseError, SearchFor("txtLastName", u"CRUZ"_s));
        PluggedDriver::Returns();
        QVERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(List().model()->rowCount(), 2);
        QCOMPARE(TextOf(*m_form, "txtLastName"), u"CRUZ"_s);
        // The rows on the screen are still those of the out-patients.
        const CommandLog log;
        QTest::keyClick(&List(), Qt::Key_Return);
        QCOMPARE(log.Sent, QStringList(u"PATIENT_DATA..sp_Listing_Outpatient 'A10B'"_s));
    }

    void Rows_showThePatient() {
        SearchFor("txtLastName", u"ZZ"_s);
        QStringList cells;
        for (int column = 0; column < 9; ++column)
            cells << Cell(0, column);
        const QString today = QLocale::c().toString(QDate::currentDate(), u"M/d/yyyy");
        if (!m_session->IsOnServer())
            QCOMPARE(cells.join(u'|'),
                     u"A10B|H1|%1 12:00:01 AM|ZZO'HARA|Ana|Luz|C7|OPD|12 Mabini "
                     "St."_s.arg(today));
        QCOMPARE(Cell(1, 6), QString());
        const auto isStarred = [this](int row) {
            const auto mark = List().model()->index(row, 0).data(Qt::DecorationRole);
            return mark.value<QIcon>().pixmap(16, 16).toImage().pixelColor(8, 8).alpha() > 0;
        };
        QVERIFY(isStarred(0) && !isStarred(1));
    }

    void Keys_searchAndReachTheList() {
        const CommandLog log;
        SearchFor("txtLastName", u"ZZ"_s);
        for (const char* field : {"txtIdNum", "txtHospNum", "txtLastName"}) {
            auto& box = Find<QLineEdit>(*m_form, field);
            box.setFocus();
            QTest::keyClick(&box, Qt::Key_Down);
            QVERIFY(List().hasFocus());
            box.setFocus();
            QTest::keyClick(&box, Qt::Key_Enter);
            QVERIFY(List().hasFocus());
        }
        QTest::keyClick(m_form.get(), Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(log.Sent.size(), 5);
        // What is typed over the list is a new search: a name, a hospital number, an admission's.
        Choose(1, true);
        for (const auto& [typed, field] :
             {std::pair("ña", "txtLastName"), {"20", "txtHospNum"}, {"a1", "txtIdNum"}}) {
            List().setFocus();
            for (const QChar letter : QString::fromUtf8(typed))
                QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown,
                                    QString(letter), Qt::NoModifier);
            QCOMPARE(TextOf(*m_form, "txtIdNum") + TextOf(*m_form, "txtHospNum") +
                         TextOf(*m_form, "txtLastName"),
                     QString::fromUtf8(typed).toUpper());
            QVERIFY(Find<QLineEdit>(*m_form, field).hasFocus());
        }
        Choose(2, false);
        List().setFocus();
        PressKey(Qt::Key_1);
        QVERIFY(Find<QLineEdit>(*m_form, "txtIdNum").hasFocus());
        List().setFocus();
        PressKey(Qt::Key_Escape);
        QVERIFY(Find<QLineEdit>(*m_form, "txtLastName").hasFocus());
        // Tab comes to the type that is searched, an arrow to the next one.
        Choose(1, true);
        Find<QWidget>(*m_form, "cmdSearch").setFocus();
        PressKey(Qt::Key_Tab);
        QCOMPARE(Focused()->objectName(), u"OptPatientType1"_s);
        PressKey(Qt::Key_Down);
        QCOMPARE(Focused()->objectName(), u"OptPatientType2"_s);
    }

    void Row_isChosenByKeyAndMouse() {
        QSignalSpy chosen(m_form.get(), &frmPatientList::PatientChosen);
        SearchFor("txtLastName", u"ZZ"_s);
        const QString luz = u"ZZO'HARA, Ana Luz"_s, juan = u"ZZPEÑA, Juan"_s;
        QCOMPARE(chosen.takeFirst(), (QVariantList{u"H1"_s, u"A10B"_s, u"C7"_s, luz}));
        QVERIFY(chosen.isEmpty());
        QTest::keyClick(&List(), Qt::Key_Down);
        QCOMPARE(chosen.takeFirst(), (QVariantList{u"H2"_s, u"A11B"_s, QString(), juan}));
        QVERIFY(m_form->CAPDNum().isEmpty());
        QCOMPARE(std::ranges::count(modGlobals::gTabNeedsLoad, false), 0);
        // A click on the same row again is a choice too.
        modGlobals::gTabNeedsLoad.fill(false);
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(1));
        QCOMPARE(std::ranges::count(modGlobals::gTabNeedsLoad, false), 0);
        QCOMPARE(chosen.takeFirst().last(), QVariant(juan));
        // Sorting moves the row, not the choice.
        List().SortBy(0);
        List().SortBy(0);
        QVERIFY(chosen.isEmpty());
        QCOMPARE(Cell(0, 0) + m_form->IdNum(), u"A11BA11B"_s);
        QCOMPARE(List().currentIndex().row(), 0);
    }

    void Renew_choosesNobodyElse() {
        SearchFor("txtLastName", u"ZZ"_s);
        QTest::keyClick(&List(), Qt::Key_Down);
        QSignalSpy chosen(m_form.get(), &frmPatientList::PatientChosen);
        m_form->Renew();
        QCOMPARE(List().currentIndex().row(), 1);
        for (const QVariantList& patient : chosen)
            QCOMPARE(patient[1], QVariant(u"A11B"_s));
        chosen.clear();
        // The patient has left the list; a sheet above it closes.
        Do(u"DELETE PATIENT_DATA..tbOutPatient WHERE IdNum = 'A11B'"_s);
        m_form->Renew();
        QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(&List(), &back);
        QVERIFY(chosen.isEmpty());
        QCOMPARE(m_form->IdNum(), u"A11B"_s);
    }

    void Row_opensAsItWasSearched_data() {
        Columns<int, int, bool, QString>();
        const QString out = u"A10B|OPD||77 Harbour Works|C7"_s, in = u"1001|R-204|W| |C7"_s;
        QTest::newRow("CAPD patient by key") << 0 << 0 << false << out;
        QTest::newRow("out-patient, option moved") << 1 << 2 << false << out;
        QTest::newRow("in-patient by mouse") << 2 << 2 << true << in;
        QTest::newRow("in-patient, option moved") << 2 << 1 << true << in;
    }

    void Row_opensAsItWasSearched() {
        auto [searched, optionNow, byMouse, found] = Fetch<int, int, bool, QString>();
        QSignalSpy opened(m_form.get(), &frmPatientList::PatientOpened);
        Choose(searched, true);
        SearchFor("txtLastName", u"ZZO"_s);
        Choose(optionNow, true);
        if (byMouse)
            Open(0);
        else
            QTest::keyClick(&List(), Qt::Key_Return);
        QCOMPARE(opened.size(), 1);
        const auto patient = opened[0][0].value<OpenedPatient>();
        QCOMPARE((QStringList{patient.Record.IDNumber, patient.Room, patient.RoomClassID,
                              patient.Company, patient.CAPDNum})
                     .join(u'|'),
                 found);
        QCOMPARE(patient.PatientType, searched);
        // One who has left meanwhile is named, and not opened.
        Do(u"DELETE PATIENT_DATA..%1 WHERE HospNum = 'H1'"_s.arg(
            searched == 2 ? u"tbPatient"_s : u"tbOutPatient"_s));
        QSignalSpy status(m_form.get(), &frmPatientList::StatusText);
        Open(0);
        QCOMPARE(opened.size(), 1);
        QVERIFY(status.last()[0].toString().contains(found.section(u'|', 0, 0)));
    }

private:
    ListView& List() const { return Find<ListView>(*m_form, "lvwSearchPatient"); }
    QString Cell(int row, int column) const {
        return List().model()->index(row, column).data().toString();
    }
    void Choose(int option, bool current) const {
        Find<QRadioButton>(*m_form, qPrintable(u"OptPatientType%1"_s.arg(option))).click();
        auto& box = Find<QCheckBox>(*m_form, "chkCurrent");
        // Out- and CAPD patients alone can be "current".
        QCOMPARE(box.isEnabled(), option < 2);
        QVERIFY(box.isEnabled() || !box.isChecked());
        box.setChecked(current && box.isEnabled());
    }
    void SearchFor(const char* field, const QString& text) const {
        Find<QLineEdit>(*m_form, field).setText(text);
        Click(*m_form, "cmdSearch");
    }
    QPoint PlaceOf(int row) const {
        return List().visualRect(List().model()->index(row, 3)).center();
    }
    void Open(int row) const {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(row));
        QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(row));
    }

    std::unique_ptr<frmPatientList> m_form;
};

QTEST_MAIN(tst_frmPatientList)
#include "tst_frmPatientList.moc"
