#include <QMap>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <algorithm>

#include "TestHospital.h"
#include "db/Driver.h"
#include "embedded/TextRows.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kCalls = 5000;
constexpr quint32 kSeed = 46;

/// What stands in braces is drawn at random from what the demo hospital holds.
const QMap<QString, QString> kSources{
    {u"H"_s, u"SELECT HospNum FROM PATIENT_DATA..tbMaster"_s},
    {u"O"_s, u"SELECT IdNum FROM PATIENT_DATA..tbOutPatient"_s},
    {u"I"_s, u"SELECT IdNum FROM PATIENT_DATA..tbPatient"_s},
    {u"L"_s, u"SELECT LastName FROM PATIENT_DATA..tbMaster"_s},
    {u"D"_s, u"SELECT DoctorID FROM PATIENT_DATA..tbDoctor"_s},
    {u"R"_s, u"SELECT RevenueID FROM BILLING..tbRevenueCode"_s},
    {u"F"_s, u"SELECT ItemCode FROM BILLING..tbOtherRevenue"_s},
    {u"G"_s, u"SELECT DrugCode FROM BILLING..tbDrug"_s},
    {u"T"_s, u"SELECT DiscType FROM BILLING..tbDiscountType"_s},
    {u"A"_s, u"SELECT AccountNum FROM BILLING..tbFundAccount"_s},
};

const QStringList kCommands{
    u"CLINICAL_AREA..sp_CAPD_Patientsearch '{#6}','{H}','',''"_s,
    u"CLINICAL_AREA..sp_CAPD_Patientsearch '{#6}','','{O}',''"_s,
    u"CLINICAL_AREA..sp_CAPD_Patientsearch '{#6}','','','{L}'"_s,
    u"CLINICAL_AREA..sp_CAPD_Patientsearch '{#6}','{H}','{O}','{L}'"_s,
    u"RADIOLOGY..spGlobal_RegularPatients '1','{#1}','{L}'"_s,
    u"CLINICAL_AREA..sp_CAPD_AddToRegister '{H}','4601'"_s,
    u"CLINICAL_AREA..sp_CAPD_SearchRevenue '{#2}','{R}'"_s,
    u"CLINICAL_AREA..sp_CAPD_SearchPatientData '{H}'"_s,
    u"CLINICAL_AREA..sp_CAPD_SheetChange '{H}'"_s,
    u"CLINICAL_AREA..sp_CAPD_GetVisits '{H}'"_s,
    u"CLINICAL_AREA..Nurse_CheckRequest '{O}','X'"_s,
    u"CLINICAL_AREA..Nurse_GetHrt '{O}'"_s,
    u"CLINICAL_AREA..sp_CAPD_AssessmentStatus '{L}'"_s,
    u"CLINICAL_AREA..sp_CAPD_GetRequest '{O}'"_s,
    u"PATIENT_DATA..sp_Listing_Outpatient '{O}'"_s,
    u"PATIENT_DATA..sp_Listing_Search '205','{L}'"_s,
    u"PATIENT_DATA..sp_Doctor_Search '{D}'"_s,
    u"PATIENT_DATA..sp_Finder_OutPatient '{O}','{H}'"_s,
    u"PATIENT_DATA..sp_Confinement_Period '{H}'"_s,
    u"PATIENT_DATA..sp_Confinement_Results '{I}','{#4}'"_s,
    u"PATIENT_DATA..sp_AOPD_ViewLabExams '{H}','{O}'"_s,
    u"BILLING..sp_OtherRevenue_Find '{R}','{F}'"_s,
    u"BILLING..sp_Drug_Search '{G}','',''"_s,
    u"BILLING..sp_PDAF_GetAllocation '{H}','CY'"_s,
    u"BILLING..sp_PDAF_GetBalance '{H}','MD'"_s,
    u"BILLING..sp_PDAF_GetRemBill '{O}','CY'"_s,
    u"RADIOLOGY..spRadio_GetDiscountType '{H}','{O}'"_s,
    u"RADIOLOGY..spRadio_GetDiscount '{R}','{F}','{T}','{#5}','0'"_s,
    u"RADIOLOGY..spRadio_GetDiscount 'CS','{G}','{T}','','0'"_s,
    u"RADIOLOGY..spGlobal_RegularPatients '0','0','{L}'"_s,
    u"STATION..Nurse_GetXray '{O}'"_s,
    u"CLINICAL_AREA..sp_CAPD_ReportPatients"_s,
    u"CLINICAL_AREA..sp_CAPD_ReportVisits '1{#2}/1{#9}/2026','12/31/2026'"_s,
    u"CLINICAL_AREA..sp_CAPD_ReportIncome '1{#2}/1{#9}/2026','11/2{#9}/2026'"_s,
    u"CLINICAL_AREA..Nurse_GetPT '{O}'"_s,
    u"PATIENT_DATA..sp_Listing_Inpatient '{I}'"_s,
    u"PATIENT_DATA..sp_Listing_Search '204','{O}'"_s,
    u"PATIENT_DATA..sp_Finder_Admission '{I}'"_s,
    u"PATIENT_DATA..sp_Doctor_Find '{D}'"_s,
    u"SELECT PATIENT_DATA.dbo.fn_GetOldHospNum('{H}') AS Old"_s,
    u"BILLING..sp_OtherRevenue_Search '{R}','{F}'"_s,
    u"BILLING..sp_Drug_Find '{G}','46'"_s,
    u"BILLING..sp_Pars_CheckCompany '{O}'"_s,
    u"BILLING..sp_PDAF_GetAllocation_RegAccount '{H}','{O}','CY'"_s,
    u"RADIOLOGY..spRadio_CheckPatientClass '{O}'"_s,
    u"STATION..Nurse_GetUltra '{O}'"_s,
    u"STATION..Nurse_GetCT '{O}'"_s,
    u"STATION..Nurse_GetPostedMedicines '{I}'"_s,
    u"STATION..sp_Dosage_Search '{#2}'"_s,
    // Writes: what they say, and what stands in the tables before they are undone.
    u"CLINICAL_AREA..sp_capd_addbill 'T1','{O}','{F}','{#900}.{#99}','4601','{H}',"
    "'{R}'; SELECT ItemCode, Amount FROM BILLING..tbBill WHERE RefNum = 'T1'"_s,
    u"BILLING..sp_PARS_SaveCompanyPayment '{O}','{H}','{A}','{#900}.{#99}','T1','C',"
    "'CY','1','4601','{F}'; SELECT AccountNum, Amount FROM "
    "BILLING..tbCompanyPayment WHERE RequestNum > 0 AND AccountNum = '{A}'"_s,
    u"BILLING..sp_StockCard_Append '{H}','{O}','{G}','','T1','{#9}','0','60','','',"
    "'','46'; SELECT SUM(OnHand) AS OnHand FROM BILLING..tbDrugStock"_s,
    u"CLINICAL_AREA..sp_CAPD_DoctorCharge 'T1','{O}','802','{#900}','4601','{H}'; "
    "SELECT ItemCode, Amount FROM BILLING..tbDoctorCharge WHERE RefNum = 'T1'"_s,
    u"CLINICAL_AREA..sp_CAPD_SaveAssessment 'WALK, {L}','{R}','{F}','{#3}','{#900}.5',"
    "'4601','T1C','T1C','N','{D}','{H}','DR. X'; SELECT PatientName, Quantity, Amount "
    "FROM BILLING..tbCashAssessment WHERE RefNum = 'T1C'"_s,
    u"CLINICAL_AREA..sp_CAPD_RegisterPatient '{H}','{O}','{#1200}','CIPD','','','it''s',"
    "'1{#2}/1/2026','','','','{#90}','','','120/80','','','','','','','','','','','',"
    "'4601','','N'; SELECT CAPDNum, Weight, AcutePDStartDate FROM "
    "CLINICAL_AREA..tbCAPDPatient WHERE HospNum = '{H}'"_s,
    u"STATION..Nurse_AppendNurseLogBook '{H}','{O}','O','{G}','{#90}.25','{#9}','BID',' ',"
    "'11/23/2026 01:02:03 PM','CS','','','4601','','x','CAPD','','1.5','','','',''; "
    "SELECT ItemCode, Amount, Quantity, RequestDate FROM STATION..tbNurseLogBook WHERE "
    "ItemName = 'x'"_s,
};

/// The first lines of one answer that the other one lacks.
QString Beyond(const QStringList& answer, const QStringList& other) {
    QStringList lines;
    for (const QString& line : answer)
        if (!other.contains(line))
            lines << line;
    return u"%1 lines, "_s.arg(answer.size()) + lines.mid(0, 3).join(u'\n');
}

/// A session on one engine; what it answers as text, refusals by their number.
class Engine final {
public:
    explicit Engine(const QString& connectionString) : m_driver(db::OpenDriver(connectionString)) {
        m_driver->SetDefaultDatabase(u"CLINICAL_AREA"_s);
    }

    QStringList Answer(const QString& commands) {
        m_driver->BeginTrans();
        QStringList answer;
        try {
            for (const QString& command : commands.split(u"; "_s)) {
                TextRows rows;
                m_driver->Execute(command, rows);
                // Today's visits came at a time of day that hangs on when a hospital was made.
                rows.Lines.replaceInStrings(m_today, u"today"_s);
                // Rows of equal rank may come in any order.
                std::sort(rows.Lines.begin(), rows.Lines.end());
                answer << rows.Kinds.join(QString()) << rows.Columns << rows.Lines;
            }
        } catch (const base::DatabaseError& error) {
            answer << u"error %1"_s.arg(error.Number());
        }
        m_driver->RollbackTrans();
        return answer;
    }

    QStringList Values(const QString& command) {
        TextRows rows;
        m_driver->Execute(command, rows);
        std::sort(rows.Lines.begin(), rows.Lines.end());
        return rows.Lines;
    }

private:
    std::unique_ptr<db::Driver> m_driver;
    const QRegularExpression m_today{QDate::currentDate().toString(u"yyyy-MM-dd"_s) +
                                     QStringLiteral(R"( \d\d:\d\d:\d\d\.\d{3})")};
};

}  // namespace

/// The embedded server and the hospital's own give the same answers. CAPD_SERVER names a server
/// that holds the demo hospital of the same day.
class tst_BothEngines : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        m_server = qEnvironmentVariable("CAPD_SERVER");
        if (m_server.isEmpty())
            QSKIP("no server was named: ./test --server \"CONNECTION STRING\"");
        ServerHospital::Restore();
    }

    void RandomCalls_giveTheSameAnswers() {
        const TestHospital hospital(TestHospital::On::File);
        Engine embedded(hospital.ConnectionString());
        Engine server(m_server);
        for (auto source = kSources.begin(); source != kSources.end(); ++source) {
            m_values[source.key()] = embedded.Values(source.value());
            QVERIFY2(!m_values[source.key()].isEmpty(), qPrintable(source.value()));
            QCOMPARE(server.Values(source.value()), m_values[source.key()]);
        }
        int rows = 0;
        int different = 0;
        for (int call = 0; call < kCalls; ++call) {
            const QString command = Filled(kCommands[m_random.bounded(int(kCommands.size()))]);
            const QStringList expected = embedded.Answer(command);
            const QStringList got = server.Answer(command);
            rows += int(expected.size());
            if (got != expected && ++different <= 20)
                qWarning().noquote() << command << "\n embedded:" << Beyond(expected, got)
                                     << "\n server:  " << Beyond(got, expected);
        }
        QVERIFY2(rows > kCalls, "the calls found nothing to compare");
        QCOMPARE(different, 0);
    }

private:
    QString Filled(const QString& command) {
        QString filled;
        for (qsizetype at = 0; at < command.size(); ++at) {
            if (command[at] != u'{') {
                filled += command[at];
                continue;
            }
            const qsizetype end = command.indexOf(u'}', at);
            filled += Drawn(command.mid(at + 1, end - at - 1));
            at = end;
        }
        return filled;
    }

    // One in ten is nothing the hospital knows, one in ten the beginning of what it knows.
    QString Drawn(const QString& name) {
        if (name.startsWith(u'#'))
            return QString::number(m_random.bounded(name.mid(1).toInt() + 1));
        const QStringList& values = m_values[name];
        const QString value = values[m_random.bounded(int(values.size()))];
        const int luck = m_random.bounded(10);
        const QString drawn = luck == 0 ? u"x'Ñ1"_s : luck == 1 ? value.left(2).toLower() : value;
        return QString(drawn).replace(u"'"_s, u"''"_s);
    }

    QString m_server;
    QRandomGenerator m_random{kSeed};
    QMap<QString, QStringList> m_values;
};

QTEST_GUILESS_MAIN(tst_BothEngines)
#include "tst_BothEngines.moc"
