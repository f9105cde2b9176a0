#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Rows.h"
#include "base/Errors.h"
#include "components/CurrentUser.h"
#include "db/Driver.h"
#include "patients/frmPatientList.h"
#include "session/modGlobals.h"
#include "toolkit/ListView.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;
using toolkit::BoxAnswer;
using toolkit::BoxScript;
using toolkit::ListView;

namespace {

/// Nine cells, "|" between them; the date is stored text, an empty cell is null.
using Rows = QStringList;

const Rows kTwoPatients{u"A10B|H1|2026-11-22 08:30:00.000|O'HARA|Ana|Luz|C7|OPD|12 Mabini St."_s,
                        u"A11B|H2|2025-02-01 00:00:00.000|Peña|Juan|||OPD|"_s};

class RecordingDriver final : public db::Driver {
public:
    static inline QStringList Commands;
    static inline Rows Answer;
    static inline bool Fails = false;

    qint64 Execute(const QString& command, embedded::RowSink& sink) override {
        Commands << command;
        if (Fails)
            throw base::DatabaseError(4060, u"The server is gone."_s, command);
        using embedded::ColumnKind;
        std::vector<embedded::ResultColumn> columns;
        for (const char* name : {"IdNum", "HospNum", "AdmDate", "LastName", "FirstName",
                                 "MiddleName", "CAPDNum", "roomid", "Address"})
            columns.push_back({QString::fromLatin1(name), ColumnKind::Text});
        columns[2].Kind = ColumnKind::DateTime;
        sink.BeginResult(columns);
        for (const QString& row : Answer)
            SendRow(row.split(u'|'), sink);
        return -1;
    }
    void SetDefaultDatabase(const QString&) override {}
    void BeginTrans() override {}
    void CommitTrans() override {}
    void RollbackTrans() override {}
    std::vector<QString> KeyColumns(const QString&) override { return {}; }

private:
    static void SendRow(const QStringList& cells, embedded::RowSink& sink) {
        for (int column = 0; column < cells.size(); ++column) {
            const QByteArray utf8 = cells[column].toUtf8();
            if (utf8.isEmpty())
                sink.Null();
            else if (column == 2)
                sink.DateTime({utf8.constData(), size_t(utf8.size())});
            else
                sink.Text({utf8.constData(), size_t(utf8.size())});
        }
        sink.EndRow();
    }
};

class User final : public components::CurrentUser {
public:
    explicit User(std::shared_ptr<db::Connection> connection)
        : m_connection(std::move(connection)) {}
    void SetPasswordDeptCode(const QString&) override {}
    void ShowMain() override {}
    bool Connected() const override { return true; }
    std::shared_ptr<db::Connection> SQLConnection() const override { return m_connection; }
    QString EmployeeCode() const override { return {}; }
    QString employeename() const override { return {}; }
    QString ServerName() const override { return {}; }

private:
    std::shared_ptr<db::Connection> m_connection;
};

class Lister final : public components::PatientLister {
public:
    bool Knows = true;
    QStringList Asked;

    Lister() {
        m_inpatient.IDNumber = u"1001"_s;
        m_inpatient.roomid = u"R-204"_s;
        m_inpatient.RoomClassID = u"W"_s;
        m_outpatient.IDNumber = u"A10B"_s;
        m_outpatient.AccountNum = u"77"_s;
        m_outpatient.Company = u"Harbour Works"_s;
        m_outpatient.roomid = u"not an out-patient's"_s;
    }
    void Initialize_Classes() override {}
    void SetInitConnection(const std::shared_ptr<db::Connection>&) override {}
    void SetHospital(const QString&) override {}
    void SetRevenueID(const QString&) override {}
    bool PatientListing(QString& idNumber, int code, bool flag) override {
        Asked << u"%1,%2,%3"_s.arg(idNumber).arg(code).arg(flag);
        return Knows;
    }
    const components::ListedPatient& Inpatient() const override { return m_inpatient; }
    const components::ListedPatient& Outpatient() const override { return m_outpatient; }

private:
    components::ListedPatient m_inpatient, m_outpatient;
};

QString Command(const char* arguments) {
    return u"CLINICAL_AREA..sp_CAPD_Patientsearch '"_s + QString::fromUtf8(arguments) + u'\'';
}

/// The window on the screen, after its first list.
class Window final {
public:
    Window() {
        Form.show();
        if (!QTest::qWaitForWindowActive(&Form))
            QFAIL("the window did not come up");
        Field("txtIdNum").setFocus();
        RecordingDriver::Commands.clear();
    }
    QLineEdit& Field(const char* name) {
        return *Form.findChild<QLineEdit*>(QString::fromLatin1(name));
    }
    ListView& List() { return *Form.findChild<ListView*>(u"lvwSearchPatient"_s); }
    QString Cell(int row, int column) {
        return List().model()->index(row, column).data().toString();
    }
    QString Count() { return Form.findChild<QLabel*>(u"lblRecCount"_s)->text(); }
    void Choose(int option, bool current) {
        Form.findChild<QButtonGroup*>(u"OptPatientType"_s)->button(option)->click();
        auto* box = Form.findChild<QCheckBox*>(u"chkCurrent"_s);
        // Out- and CAPD patients alone can be "current".
        QCOMPARE(box->isEnabled(), option < 2);
        QVERIFY(box->isEnabled() || !box->isChecked());
        box->setChecked(current && box->isEnabled());
    }
    void SearchFor(const char* field, const QString& text) {
        Field(field).setText(text);
        Form.findChild<QPushButton*>(u"cmdSearch"_s)->click();
    }
    QPoint PlaceOf(int row) { return List().visualRect(List().model()->index(row, 3)).center(); }

    frmPatientList Form;
};

}  // namespace

class tst_frmPatientList final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { qRegisterMetaType<OpenedPatient>("OpenedPatient"); }
    void init() {
        RecordingDriver::Commands.clear();
        RecordingDriver::Answer = kTwoPatients;
        RecordingDriver::Fails = false;
        m_lister = std::make_shared<Lister>();
        modGlobals::gCurrentUser = std::make_shared<User>(
            std::make_shared<db::Connection>(std::make_unique<RecordingDriver>()));
        modGlobals::gOutpatientSearch = m_lister;
        modGlobals::gTabNeedsLoad.fill(false);
    }

    void FirstList_isOfTodaysOutPatients() {
        frmPatientList form;
        QCOMPARE(RecordingDriver::Commands, QStringList(Command("1','','A','")));
        QVERIFY(form.HospNum().isEmpty() && form.IdNum().isEmpty() && form.CAPDNum().isEmpty());
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(form.focusWidget()->objectName(), u"txtIdNum"_s);
        QVERIFY(form.IdNum().isEmpty());
    }

    void FirstList_thatFailsReachesTheCaller() {
        RecordingDriver::Fails = true;
        QVERIFY_THROWS_EXCEPTION(base::DatabaseError, frmPatientList());
    }

    void Load_againSearchesForTheChosenPatient() {
        Window window;
        window.Choose(3, false);
        window.List().setCurrentIndex(window.List().model()->index(1, 0));
        window.Form.Load();
        QCOMPARE(RecordingDriver::Commands, QStringList(Command("1','H2','A11B','")));
    }

    void Search_sendsItsMode_data() {
        Columns<int, bool, QString>();
        const char* const kModes[][2] = {{"4", "3"}, {"2", "1"}, {"6", "6"}, {"5", "5"}};
        for (int option = 0; option < 4; ++option)
            for (const bool current : {false, true})
                QTest::addRow("option %d %s", option, current ? "current" : "all")
                    << option << current << QString::fromLatin1(kModes[option][current]);
    }

    void Search_sendsItsMode() {
        auto [option, current, mode] = Fetch<int, bool, QString>();
        Window window;
        window.Choose(option, current);
        QVERIFY(RecordingDriver::Commands.isEmpty());
        window.SearchFor("txtLastName", u"CRUZ"_s);
        QCOMPARE(RecordingDriver::Commands,
                 QStringList(Command(qPrintable(mode + u"','','','CRUZ"_s))));
    }

    void Search_sendsWhatWasTyped_data() {
        Columns<QString, QString, QString>();
        const auto row = [](const char* name, const char* field, const QString& pasted,
                            const QString& arguments) {
            QTest::newRow(name) << QString::fromLatin1(field) << pasted
                                << Command(arguments.toUtf8().constData());
        };
        row("number in upper case", "txtIdNum", u"a10b"_s, u"1','','A10B','"_s);
        row("blanks around", "txtHospNum", u"  h 1  "_s, u"1','H 1','','"_s);
        row("quote", "txtLastName", u"o'hara"_s, u"1','','','O''HARA"_s);
        row("accent and emoji", "txtLastName", u"peña 🙂"_s, u"1','','','PEÑA 🙂"_s);
        row("sharp s", "txtLastName", u"straße"_s, u"1','','','STRAßE"_s);
        row("lines of a sheet", "txtLastName", u"dela\ncruz\t\r\n"_s, u"1','','','DELA CRUZ"_s);
        row("10,000 letters", "txtLastName", QString(10000, u'x'),
            u"1','','','"_s + QString(10000, u'X'));
        row("100,000 letters", "txtIdNum", QString(100000, u'x'),
            u"1','','"_s + QString(100000, u'X') + u"','"_s);
    }

    void Search_sendsWhatWasTyped() {
        auto [field, pasted, command] = Fetch<QString, QString, QString>();
        Window window;
        QLineEdit& box = window.Field(qPrintable(field));
        QGuiApplication::clipboard()->setText(pasted);
        box.paste();
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(RecordingDriver::Commands, QStringList(command));
    }

    void Search_withoutATextIsRefused() {
        Window window;
        window.Field("txtLastName").setText(u"   "_s);
        BoxScript script;
        script.Answer(BoxAnswer::Ok);
        QTest::keyClick(&window.Field("txtLastName"), Qt::Key_Return);
        QCOMPARE(script.Leftovers(), QStringList());
        QCOMPARE(script.Shown()[0].Text, u"Please Enter a search text."_s);
        QCOMPARE(script.Shown()[0].Title, u"Message"_s);
        QCOMPARE(script.Shown()[0].Icon, toolkit::BoxIcon::Information);
        QVERIFY(RecordingDriver::Commands.isEmpty());
        QCOMPARE(window.List().model()->rowCount(), 2);
    }

    void Search_withoutRowsEmptiesTheList() {
        Window window;
        window.SearchFor("txtLastName", u"CRUZ"_s);
        QCOMPARE(window.Form.IdNum(), u"A10B"_s);
        RecordingDriver::Answer.clear();
        BoxScript script;
        window.SearchFor("txtLastName", u"NOBODY"_s);
        QCOMPARE(window.List().model()->rowCount(), 0);
        QVERIFY(!window.List().isEnabled());
        QCOMPARE(window.Count(), u"Total No. of Records: 2"_s);
        QCOMPARE(window.Form.IdNum(), u"A10B"_s);
        QVERIFY(window.Field("txtLastName").hasFocus());
        QCOMPARE(window.Field("txtLastName").selectedText(), u"NOBODY"_s);
        QTest::keyClick(&window.Field("txtLastName"), Qt::Key_Down);
        QVERIFY(window.Field("txtLastName").hasFocus());
        QCOMPARE(script.Leftovers(), QStringList());

        RecordingDriver::Answer = kTwoPatients;
        window.SearchFor("txtLastName", u"O"_s);
        QVERIFY(window.List().isEnabled());
    }

    void Search_thatFailsLeavesTheList() {
        Window window;
        window.Choose(2, true);
        RecordingDriver::Fails = true;
        QVERIFY_THROWS_EXCEPTION(base::DatabaseError, window.SearchFor("txtLastName", u"CRUZ"_s));
        QVERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(window.List().model()->rowCount(), 2);
        QCOMPARE(window.Field("txtLastName").text(), u"CRUZ"_s);
        // The rows on the screen are still those of the out-patients.
        window.List().setCurrentIndex(window.List().model()->index(0, 0));
        QTest::keyClick(&window.List(), Qt::Key_Return);
        QCOMPARE(m_lister->Asked, QStringList(u"A10B,204,0"_s));
        RecordingDriver::Fails = false;
        window.SearchFor("txtLastName", u"CRUZ"_s);
        QCOMPARE(RecordingDriver::Commands.size(), 2);
    }

    void Search_refusesANulCharacter() {
        Window window;
        QVERIFY_THROWS_EXCEPTION(base::DatabaseError,
                                 window.SearchFor("txtLastName", u"CR"_s + QChar(QChar::Null)));
        QVERIFY(RecordingDriver::Commands.isEmpty());
        QCOMPARE(window.List().model()->rowCount(), 2);
    }

    void Rows_showTheirColumns() {
        Window window;
        QCOMPARE(window.Form.windowTitle(), u"Patient Listing"_s);
        QStringList headers, cells;
        for (int column = 0; column < 9; ++column) {
            headers << window.List().model()->headerData(column, Qt::Horizontal).toString();
            cells << window.Cell(0, column);
            QCOMPARE(window.List().HeaderMark(column), u"Blank"_s);
        }
        QCOMPARE(headers.join(u'|'),
                 u" Adm. No.| Hosp.No.| Adm.Date| Last Name| First Name|"
                 " Middle Name| CAPD Num| PatientType  | Address"_s);
        QCOMPARE(cells.join(u'|'),
                 u"A10B|H1|11/22/2026 8:30:00 AM|O'HARA|Ana|Luz|C7|OPD|"
                 "12 Mabini St."_s);
        QCOMPARE(window.Cell(1, 2), u"2/1/2025"_s);
        QCOMPARE(window.Cell(1, 6), QString());
        const auto isStarred = [&](int row) {
            const auto mark = window.List().model()->index(row, 0).data(Qt::DecorationRole);
            return mark.value<QIcon>().pixmap(16, 16).toImage().pixelColor(8, 8).alpha() > 0;
        };
        QVERIFY(isStarred(0));
        QVERIFY(!isStarred(1));
        QStringList options;
        for (int option = 0; option < 4; ++option)
            options << window.Form.findChild<QButtonGroup*>()->button(option)->text();
        QCOMPARE(options.join(u'|'), u"CAPD Patients |Out Patients |In-Patients |ER Patients "_s);
    }

    void Keys_searchAndReachTheList() {
        Window window;
        QTest::keyClick(&window.Field("txtIdNum"), Qt::Key_Down);
        QVERIFY(window.List().hasFocus());
        QCOMPARE(window.Form.IdNum(), u"A10B"_s);
        for (const char* field : {"txtIdNum", "txtHospNum", "txtLastName"}) {
            window.Field(field).setFocus();
            window.Field(field).setText(u"A"_s);
            QTest::keyClick(&window.Field(field), Qt::Key_Enter);
            QVERIFY(window.List().hasFocus());
        }
        QCOMPARE(RecordingDriver::Commands.size(), 3);
        QTest::keyClick(&window.Form, Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(RecordingDriver::Commands.size(), 4);
        // What is typed over the list is a new search: a name, a hospital number, an admission's.
        window.Choose(1, true);
        for (const auto& [typed, field] :
             {std::pair("ña", "txtLastName"), {"20", "txtHospNum"}, {"10", "txtIdNum"}}) {
            if (QLatin1String(field) == "txtIdNum"_L1)
                window.Choose(2, false);
            window.List().setFocus();
            for (const QChar letter : QString::fromUtf8(typed))
                QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown,
                                    QString(letter), Qt::NoModifier);
            QCOMPARE(window.Field("txtIdNum").text() + window.Field("txtHospNum").text() +
                         window.Field("txtLastName").text(),
                     QString::fromUtf8(typed).toUpper());
            QVERIFY(window.Field(field).hasFocus());
        }
        window.List().setFocus();
        QTest::keyClick(&window.List(), Qt::Key_2, Qt::ControlModifier);
        QVERIFY(window.List().HeaderMark(1) != u"Blank"_s);
        QTest::keyClick(&window.List(), Qt::Key_Escape);
        QVERIFY(window.Field("txtLastName").hasFocus());
        window.Choose(1, true);
        // Tab comes to the type that is searched, an arrow to the next one.
        auto* type = window.Form.findChild<QAbstractButton*>(u"OptPatientType1"_s);
        window.Form.findChild<QWidget*>(u"cmdSearch"_s)->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(type->hasFocus());
        QTest::keyClick(type, Qt::Key_Down);
        QVERIFY(!type->isChecked());
        QCOMPARE(QApplication::focusWidget()->objectName(), u"OptPatientType2"_s);
    }

    void Row_isChosenByKeyAndMouse() {
        Window window;
        QSignalSpy chosen(&window.Form, &frmPatientList::PatientChosen);
        window.SearchFor("txtLastName", u"A"_s);
        const QString luz = u"O'HARA, Ana Luz"_s, juan = u"Peña, Juan"_s;
        QCOMPARE(chosen.takeFirst(), (QVariantList{u"H1"_s, u"A10B"_s, u"C7"_s, luz}));
        QVERIFY(chosen.isEmpty());
        QTest::keyClick(&window.List(), Qt::Key_Down);
        QCOMPARE(chosen.takeFirst(), (QVariantList{u"H2"_s, u"A11B"_s, QString(), juan}));
        QVERIFY(window.Form.CAPDNum().isEmpty());
        for (const bool raised : modGlobals::gTabNeedsLoad)
            QVERIFY(raised);
        // A click on the same row again is a choice too.
        modGlobals::gTabNeedsLoad.fill(false);
        QTest::mouseClick(window.List().viewport(), Qt::LeftButton, {}, window.PlaceOf(1));
        QVERIFY(modGlobals::gTabNeedsLoad.front() && modGlobals::gTabNeedsLoad.back());
        QCOMPARE(chosen.takeFirst().last(), QVariant(juan));
        // Sorting moves the row, not the choice.
        window.List().SortBy(0);
        window.List().SortBy(0);
        QVERIFY(chosen.isEmpty());
        QCOMPARE(window.Form.IdNum(), u"A11B"_s);
        QCOMPARE(window.Cell(0, 0), u"A11B"_s);
        QCOMPARE(window.List().currentIndex().row(), 0);
    }

    void Renew_choosesNobodyElse() {
        Window window;
        window.SearchFor("txtLastName", u"A"_s);
        QTest::keyClick(&window.List(), Qt::Key_Down);
        QSignalSpy chosen(&window.Form, &frmPatientList::PatientChosen);
        window.Form.Renew();
        QCOMPARE(window.List().currentIndex().row(), 1);
        for (const QVariantList& patient : chosen)
            QCOMPARE(patient[1], QVariant(u"A11B"_s));
        chosen.clear();
        // The patient has left the list; a sheet above it closes.
        RecordingDriver::Answer = kTwoPatients.mid(0, 1);
        window.Form.Renew();
        QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(&window.List(), &back);
        QVERIFY(chosen.isEmpty());
        QCOMPARE(window.Form.IdNum(), u"A11B"_s);
    }

    void Row_opensAsItWasSearched_data() {
        Columns<int, int, bool, QString>();
        QTest::newRow("CAPD patient by key") << 0 << 0 << false << u"A10B,204,0"_s;
        QTest::newRow("out-patient, option moved") << 1 << 2 << false << u"A10B,204,0"_s;
        QTest::newRow("in-patient by mouse") << 2 << 2 << true << u"A10B,205,0"_s;
        QTest::newRow("in-patient, option moved") << 2 << 1 << true << u"A10B,205,0"_s;
        QTest::newRow("ER patient") << 3 << 3 << true << u"A10B,204,0"_s;
    }

    void Row_opensAsItWasSearched() {
        auto [searched, optionNow, byMouse, asked] = Fetch<int, int, bool, QString>();
        Window window;
        QSignalSpy opened(&window.Form, &frmPatientList::PatientOpened);
        window.Choose(searched, true);
        window.SearchFor("txtLastName", u"O"_s);
        window.Choose(optionNow, true);
        if (byMouse) {
            QTest::mouseClick(window.List().viewport(), Qt::LeftButton, {}, window.PlaceOf(0));
            QTest::mouseDClick(window.List().viewport(), Qt::LeftButton, {}, window.PlaceOf(0));
        } else {
            window.List().setFocus();
            QTest::keyClick(&window.List(), Qt::Key_Return);
        }
        QCOMPARE(m_lister->Asked, QStringList(asked));
        QCOMPARE(opened.size(), 1);
        const auto patient = opened[0][0].value<OpenedPatient>();
        const bool inPatient = searched == 2;
        QCOMPARE(patient.Record.IDNumber, inPatient ? u"1001"_s : u"A10B"_s);
        QCOMPARE(patient.Room, inPatient ? u"R-204"_s : u"OPD"_s);
        QCOMPARE(patient.RoomClassID, inPatient ? u"W"_s : QString());
        QCOMPARE(patient.Company, inPatient ? u" "_s : u"77 Harbour Works"_s);
        QCOMPARE(patient.CAPDNum, u"C7"_s);
        QCOMPARE(patient.PatientType, searched);
    }

    void Row_unknownToTheListingIsNamed() {
        Window window;
        m_lister->Knows = false;
        QSignalSpy opened(&window.Form, &frmPatientList::PatientOpened);
        QSignalSpy status(&window.Form, &frmPatientList::StatusText);
        BoxScript script;
        QTest::mouseClick(window.List().viewport(), Qt::LeftButton, {}, window.PlaceOf(1));
        QTest::mouseDClick(window.List().viewport(), Qt::LeftButton, {}, window.PlaceOf(1));
        QVERIFY(opened.isEmpty());
        QCOMPARE(status.size(), 1);
        QVERIFY(status[0][0].toString().contains(u"A11B"_s));
        QCOMPARE(window.Form.IdNum(), u"A11B"_s);
        QCOMPARE(script.Leftovers(), QStringList());
    }

private:
    std::shared_ptr<Lister> m_lister;
};

QTEST_MAIN(tst_frmPatientList)
#include "tst_frmPatientList.moc"
