#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "base/Errors.h"
#include "components/CurrentUser.h"
#include "db/Driver.h"
#include "patients/frmPatientList.h"
#include "session/modGlobals.h"
#include "toolkit/ListView.h"
#include "toolkit/MsgBox.h"

using toolkit::BoxAnswer;
using toolkit::BoxScript;
using toolkit::ListView;

namespace {

/// Nine cells, "|" between them; the date is stored text, an empty cell is null.
using Rows = QStringList;

const Rows kTwoPatients{
    QStringLiteral("A10B|H1|2026-11-22 08:30:00.000|O'HARA|Ana|Luz|C7|OPD|12 Mabini St."),
    QStringLiteral("A11B|H2|2025-02-01 00:00:00.000|Peña|Juan|||OPD|")};

class RecordingDriver final : public db::Driver {
public:
    static inline QStringList Commands;
    static inline Rows Answer;
    static inline bool Fails = false;

    qint64 Execute(const QString& command, embedded::RowSink& sink) override {
        Commands << command;
        if (Fails)
            throw base::DatabaseError(4060, QStringLiteral("The server is gone."), command);
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
        m_inpatient.IDNumber = QStringLiteral("1001");
        m_inpatient.roomid = QStringLiteral("R-204");
        m_inpatient.RoomClassID = QStringLiteral("W");
        m_outpatient.IDNumber = QStringLiteral("A10B");
        m_outpatient.AccountNum = QStringLiteral("77");
        m_outpatient.Company = QStringLiteral("Harbour Works");
        m_outpatient.roomid = QStringLiteral("not an out-patient's");
    }
    void Initialize_Classes() override {}
    void SetInitConnection(const std::shared_ptr<db::Connection>&) override {}
    void SetHospital(const QString&) override {}
    void SetRevenueID(const QString&) override {}
    bool PatientListing(QString& idNumber, int code, bool flag) override {
        Asked << QStringLiteral("%1,%2,%3").arg(idNumber).arg(code).arg(flag);
        return Knows;
    }
    const components::ListedPatient& Inpatient() const override { return m_inpatient; }
    const components::ListedPatient& Outpatient() const override { return m_outpatient; }

private:
    components::ListedPatient m_inpatient, m_outpatient;
};

QString Command(const char* arguments) {
    return QStringLiteral("CLINICAL_AREA..sp_CAPD_Patientsearch '") + QString::fromUtf8(arguments) +
           u'\'';
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
    ListView& List() { return *Form.findChild<ListView*>(QStringLiteral("lvwSearchPatient")); }
    QString Cell(int row, int column) {
        return List().model()->index(row, column).data().toString();
    }
    QString Count() { return Form.findChild<QLabel*>(QStringLiteral("lblRecCount"))->text(); }
    void Choose(int option, bool current) {
        Form.findChild<QButtonGroup*>(QStringLiteral("OptPatientType"))->button(option)->click();
        auto* box = Form.findChild<QCheckBox*>(QStringLiteral("chkCurrent"));
        // Out- and CAPD patients alone can be "current".
        QCOMPARE(box->isEnabled(), option < 2);
        QVERIFY(box->isEnabled() || !box->isChecked());
        box->setChecked(current && box->isEnabled());
    }
    void SearchFor(const char* field, const QString& text) {
        Field(field).setText(text);
        Form.findChild<QPushButton*>(QStringLiteral("cmdSearch"))->click();
    }
    QPoint PlaceOf(int row) { return List().visualRect(List().model()->index(row, 3)).center(); }

    frmPatientList Form;
};

}  // namespace

class tst_frmPatientList final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { qRegisterMetaType<OpenedPatient>("OpenedPatient"); }
    void init();
    void FirstList_isOfTodaysOutPatients();
    void FirstList_thatFailsReachesTheCaller();
    void Load_againSearchesForTheChosenPatient();
    void Search_sendsItsMode_data();
    void Search_sendsItsMode();
    void Search_sendsWhatWasTyped_data();
    void Search_sendsWhatWasTyped();
    void Search_withoutATextIsRefused();
    void Search_withoutRowsEmptiesTheList();
    void Search_thatFailsLeavesTheList();
    void Search_refusesANulCharacter();
    void Rows_showTheirColumns();
    void Keys_searchAndReachTheList();
    void Row_isChosenByKeyAndMouse();
    void Renew_choosesNobodyElse();
    void Row_opensAsItWasSearched_data();
    void Row_opensAsItWasSearched();
    void Row_unknownToTheListingIsNamed();

private:
    std::shared_ptr<Lister> m_lister;
};

void tst_frmPatientList::init() {
    RecordingDriver::Commands.clear();
    RecordingDriver::Answer = kTwoPatients;
    RecordingDriver::Fails = false;
    m_lister = std::make_shared<Lister>();
    modGlobals::gCurrentUser = std::make_shared<User>(
        std::make_shared<db::Connection>(std::make_unique<RecordingDriver>()));
    modGlobals::gOutpatientSearch = m_lister;
    modGlobals::gTabNeedsLoad.fill(false);
}

void tst_frmPatientList::FirstList_isOfTodaysOutPatients() {
    frmPatientList form;
    QCOMPARE(RecordingDriver::Commands, QStringList(Command("1','','A','")));
    QVERIFY(form.HospNum().isEmpty() && form.IdNum().isEmpty() && form.CAPDNum().isEmpty());
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QCOMPARE(form.focusWidget()->objectName(), QStringLiteral("txtIdNum"));
    QVERIFY(form.IdNum().isEmpty());
}

void tst_frmPatientList::FirstList_thatFailsReachesTheCaller() {
    RecordingDriver::Fails = true;
    QVERIFY_THROWS_EXCEPTION(base::DatabaseError, frmPatientList());
}

void tst_frmPatientList::Load_againSearchesForTheChosenPatient() {
    Window window;
    window.Choose(3, false);
    window.List().setCurrentIndex(window.List().model()->index(1, 0));
    window.Form.Load();
    QCOMPARE(RecordingDriver::Commands, QStringList(Command("1','H2','A11B','")));
}

void tst_frmPatientList::Search_sendsItsMode_data() {
    QTest::addColumn<int>("option");
    QTest::addColumn<bool>("current");
    QTest::addColumn<QString>("mode");
    const char* const kModes[][2] = {{"4", "3"}, {"2", "1"}, {"6", "6"}, {"5", "5"}};
    for (int option = 0; option < 4; ++option)
        for (const bool current : {false, true})
            QTest::addRow("option %d %s", option, current ? "current" : "all")
                << option << current << QString::fromLatin1(kModes[option][current]);
}

void tst_frmPatientList::Search_sendsItsMode() {
    QFETCH(int, option);
    QFETCH(bool, current);
    QFETCH(QString, mode);
    Window window;
    window.Choose(option, current);
    QVERIFY(RecordingDriver::Commands.isEmpty());
    window.SearchFor("txtLastName", QStringLiteral("CRUZ"));
    QCOMPARE(RecordingDriver::Commands,
             QStringList(Command(qPrintable(mode + QStringLiteral("','','','CRUZ")))));
}

void tst_frmPatientList::Search_sendsWhatWasTyped_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("command");
    const auto row = [](const char* name, const char* field, const QString& pasted,
                        const QString& arguments) {
        QTest::newRow(name) << QString::fromLatin1(field) << pasted
                            << Command(arguments.toUtf8().constData());
    };
    row("number in upper case", "txtIdNum", QStringLiteral("a10b"),
        QStringLiteral("1','','A10B','"));
    row("blanks around", "txtHospNum", QStringLiteral("  h 1  "), QStringLiteral("1','H 1','','"));
    row("quote", "txtLastName", QStringLiteral("o'hara"), QStringLiteral("1','','','O''HARA"));
    row("accent and emoji", "txtLastName", QStringLiteral("peña 🙂"),
        QStringLiteral("1','','','PEÑA 🙂"));
    row("sharp s", "txtLastName", QStringLiteral("straße"), QStringLiteral("1','','','STRAßE"));
    row("lines of a sheet", "txtLastName", QStringLiteral("dela\ncruz\t\r\n"),
        QStringLiteral("1','','','DELA CRUZ"));
    row("10,000 letters", "txtLastName", QString(10000, u'x'),
        QStringLiteral("1','','','") + QString(10000, u'X'));
    row("100,000 letters", "txtIdNum", QString(100000, u'x'),
        QStringLiteral("1','','") + QString(100000, u'X') + QStringLiteral("','"));
}

void tst_frmPatientList::Search_sendsWhatWasTyped() {
    QFETCH(QString, field);
    QFETCH(QString, pasted);
    QFETCH(QString, command);
    Window window;
    QLineEdit& box = window.Field(qPrintable(field));
    QGuiApplication::clipboard()->setText(pasted);
    box.paste();
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(RecordingDriver::Commands, QStringList(command));
}

void tst_frmPatientList::Search_withoutATextIsRefused() {
    Window window;
    window.Field("txtLastName").setText(QStringLiteral("   "));
    BoxScript script;
    script.Answer(BoxAnswer::Ok);
    QTest::keyClick(&window.Field("txtLastName"), Qt::Key_Return);
    QCOMPARE(script.Leftovers(), QStringList());
    QCOMPARE(script.Shown()[0].Text, QStringLiteral("Please Enter a search text."));
    QCOMPARE(script.Shown()[0].Title, QStringLiteral("Message"));
    QCOMPARE(script.Shown()[0].Icon, toolkit::BoxIcon::Information);
    QVERIFY(RecordingDriver::Commands.isEmpty());
    QCOMPARE(window.List().model()->rowCount(), 2);
}

void tst_frmPatientList::Search_withoutRowsEmptiesTheList() {
    Window window;
    window.SearchFor("txtLastName", QStringLiteral("CRUZ"));
    QCOMPARE(window.Form.IdNum(), QStringLiteral("A10B"));
    RecordingDriver::Answer.clear();
    BoxScript script;
    window.SearchFor("txtLastName", QStringLiteral("NOBODY"));
    QCOMPARE(window.List().model()->rowCount(), 0);
    QVERIFY(!window.List().isEnabled());
    QCOMPARE(window.Count(), QStringLiteral("Total No. of Records: 2"));
    QCOMPARE(window.Form.IdNum(), QStringLiteral("A10B"));
    QVERIFY(window.Field("txtLastName").hasFocus());
    QCOMPARE(window.Field("txtLastName").selectedText(), QStringLiteral("NOBODY"));
    QTest::keyClick(&window.Field("txtLastName"), Qt::Key_Down);
    QVERIFY(window.Field("txtLastName").hasFocus());
    QCOMPARE(script.Leftovers(), QStringList());

    RecordingDriver::Answer = kTwoPatients;
    window.SearchFor("txtLastName", QStringLiteral("O"));
    QVERIFY(window.List().isEnabled());
}

void tst_frmPatientList::Search_thatFailsLeavesTheList() {
    Window window;
    window.Choose(2, true);
    RecordingDriver::Fails = true;
    QVERIFY_THROWS_EXCEPTION(base::DatabaseError,
                             window.SearchFor("txtLastName", QStringLiteral("CRUZ")));
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(window.List().model()->rowCount(), 2);
    QCOMPARE(window.Field("txtLastName").text(), QStringLiteral("CRUZ"));
    // The rows on the screen are still those of the out-patients.
    window.List().setCurrentIndex(window.List().model()->index(0, 0));
    QTest::keyClick(&window.List(), Qt::Key_Return);
    QCOMPARE(m_lister->Asked, QStringList(QStringLiteral("A10B,204,0")));
    RecordingDriver::Fails = false;
    window.SearchFor("txtLastName", QStringLiteral("CRUZ"));
    QCOMPARE(RecordingDriver::Commands.size(), 2);
}

void tst_frmPatientList::Search_refusesANulCharacter() {
    Window window;
    QVERIFY_THROWS_EXCEPTION(
        base::DatabaseError,
        window.SearchFor("txtLastName", QStringLiteral("CR") + QChar(QChar::Null)));
    QVERIFY(RecordingDriver::Commands.isEmpty());
    QCOMPARE(window.List().model()->rowCount(), 2);
}

void tst_frmPatientList::Rows_showTheirColumns() {
    Window window;
    QCOMPARE(window.Form.windowTitle(), QStringLiteral("Patient Listing"));
    QStringList headers, cells;
    for (int column = 0; column < 9; ++column) {
        headers << window.List().model()->headerData(column, Qt::Horizontal).toString();
        cells << window.Cell(0, column);
        QCOMPARE(window.List().HeaderMark(column), QStringLiteral("Blank"));
    }
    QCOMPARE(headers.join(u'|'),
             QStringLiteral(" Adm. No.| Hosp.No.| Adm.Date| Last Name| First Name|"
                            " Middle Name| CAPD Num| PatientType  | Address"));
    QCOMPARE(cells.join(u'|'), QStringLiteral("A10B|H1|11/22/2026 8:30:00 AM|O'HARA|Ana|Luz|C7|OPD|"
                                              "12 Mabini St."));
    QCOMPARE(window.Cell(1, 2), QStringLiteral("2/1/2025"));
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
    QCOMPARE(options.join(u'|'),
             QStringLiteral("CAPD Patients |Out Patients |In-Patients |ER Patients "));
}

void tst_frmPatientList::Keys_searchAndReachTheList() {
    Window window;
    QTest::keyClick(&window.Field("txtIdNum"), Qt::Key_Down);
    QVERIFY(window.List().hasFocus());
    QCOMPARE(window.Form.IdNum(), QStringLiteral("A10B"));
    for (const char* field : {"txtIdNum", "txtHospNum", "txtLastName"}) {
        window.Field(field).setFocus();
        window.Field(field).setText(QStringLiteral("A"));
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
        if (QLatin1String(field) == QLatin1String("txtIdNum"))
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
    QVERIFY(window.List().HeaderMark(1) != QStringLiteral("Blank"));
    QTest::keyClick(&window.List(), Qt::Key_Escape);
    QVERIFY(window.Field("txtLastName").hasFocus());
    window.Choose(1, true);
    // Tab comes to the type that is searched, an arrow to the next one.
    auto* type = window.Form.findChild<QAbstractButton*>(QStringLiteral("OptPatientType1"));
    window.Form.findChild<QWidget*>(QStringLiteral("cmdSearch"))->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(type->hasFocus());
    QTest::keyClick(type, Qt::Key_Down);
    QVERIFY(!type->isChecked());
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("OptPatientType2"));
}

void tst_frmPatientList::Row_isChosenByKeyAndMouse() {
    Window window;
    QSignalSpy chosen(&window.Form, &frmPatientList::PatientChosen);
    window.SearchFor("txtLastName", QStringLiteral("A"));
    const QString luz = QStringLiteral("O'HARA, Ana Luz"), juan = QStringLiteral("Peña, Juan");
    QCOMPARE(chosen.takeFirst(), (QVariantList{QStringLiteral("H1"), QStringLiteral("A10B"),
                                               QStringLiteral("C7"), luz}));
    QVERIFY(chosen.isEmpty());
    QTest::keyClick(&window.List(), Qt::Key_Down);
    QCOMPARE(chosen.takeFirst(),
             (QVariantList{QStringLiteral("H2"), QStringLiteral("A11B"), QString(), juan}));
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
    QCOMPARE(window.Form.IdNum(), QStringLiteral("A11B"));
    QCOMPARE(window.Cell(0, 0), QStringLiteral("A11B"));
    QCOMPARE(window.List().currentIndex().row(), 0);
}

void tst_frmPatientList::Renew_choosesNobodyElse() {
    Window window;
    window.SearchFor("txtLastName", QStringLiteral("A"));
    QTest::keyClick(&window.List(), Qt::Key_Down);
    QSignalSpy chosen(&window.Form, &frmPatientList::PatientChosen);
    window.Form.Renew();
    QCOMPARE(window.List().currentIndex().row(), 1);
    for (const QVariantList& patient : chosen)
        QCOMPARE(patient[1], QVariant(QStringLiteral("A11B")));
    chosen.clear();
    // The patient has left the list; a sheet above it closes.
    RecordingDriver::Answer = kTwoPatients.mid(0, 1);
    window.Form.Renew();
    QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(&window.List(), &back);
    QVERIFY(chosen.isEmpty());
    QCOMPARE(window.Form.IdNum(), QStringLiteral("A11B"));
}

void tst_frmPatientList::Row_opensAsItWasSearched_data() {
    QTest::addColumn<int>("searched");
    QTest::addColumn<int>("optionNow");
    QTest::addColumn<bool>("byMouse");
    QTest::addColumn<QString>("asked");
    QTest::newRow("CAPD patient by key") << 0 << 0 << false << QStringLiteral("A10B,204,0");
    QTest::newRow("out-patient, option moved") << 1 << 2 << false << QStringLiteral("A10B,204,0");
    QTest::newRow("in-patient by mouse") << 2 << 2 << true << QStringLiteral("A10B,205,0");
    QTest::newRow("in-patient, option moved") << 2 << 1 << true << QStringLiteral("A10B,205,0");
    QTest::newRow("ER patient") << 3 << 3 << true << QStringLiteral("A10B,204,0");
}

void tst_frmPatientList::Row_opensAsItWasSearched() {
    QFETCH(int, searched);
    QFETCH(int, optionNow);
    QFETCH(bool, byMouse);
    QFETCH(QString, asked);
    Window window;
    QSignalSpy opened(&window.Form, &frmPatientList::PatientOpened);
    window.Choose(searched, true);
    window.SearchFor("txtLastName", QStringLiteral("O"));
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
    QCOMPARE(patient.Record.IDNumber, inPatient ? QStringLiteral("1001") : QStringLiteral("A10B"));
    QCOMPARE(patient.Room, inPatient ? QStringLiteral("R-204") : QStringLiteral("OPD"));
    QCOMPARE(patient.RoomClassID, inPatient ? QStringLiteral("W") : QString());
    QCOMPARE(patient.Company, inPatient ? QStringLiteral(" ") : QStringLiteral("77 Harbour Works"));
    QCOMPARE(patient.CAPDNum, QStringLiteral("C7"));
    QCOMPARE(patient.PatientType, searched);
}

void tst_frmPatientList::Row_unknownToTheListingIsNamed() {
    Window window;
    m_lister->Knows = false;
    QSignalSpy opened(&window.Form, &frmPatientList::PatientOpened);
    QSignalSpy status(&window.Form, &frmPatientList::StatusText);
    BoxScript script;
    QTest::mouseClick(window.List().viewport(), Qt::LeftButton, {}, window.PlaceOf(1));
    QTest::mouseDClick(window.List().viewport(), Qt::LeftButton, {}, window.PlaceOf(1));
    QVERIFY(opened.isEmpty());
    QCOMPARE(status.size(), 1);
    QVERIFY(status[0][0].toString().contains(QStringLiteral("A11B")));
    QCOMPARE(window.Form.IdNum(), QStringLiteral("A11B"));
    QCOMPARE(script.Leftovers(), QStringList());
}

QTEST_MAIN(tst_frmPatientList)
#include "tst_frmPatientList.moc"
