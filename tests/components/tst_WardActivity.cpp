#include <QTest>

#include "Rows.h"
#include "components/builtin/clsConfinements.h"
#include "components/builtin/clsRequest.h"
#include "components/builtin/clsResults.h"
#include "db/FakeDriver.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using namespace components;

// What the wards asked for and what other departments answered: which command asks for it, and how
// long its rows live.
class tst_WardActivity final : public QObject {
    Q_OBJECT

    using Ask = std::function<void(const db::ConnectionRef&)>;

private slots:
    void init() {
        m_server = {};
        m_server.Answer = [](const QString& command, embedded::RowSink& sink) {
            if (command.isEmpty())
                throw base::DatabaseError(102, {});
            sink.BeginResult({{u"TRANS. NO"_s, embedded::ColumnKind::Text}});
            return qint64(-1);
        };
        m_connection = std::make_shared<db::Connection>(std::make_unique<FakeDriver>(m_server),
                                                        u"Server=fake"_s);
    }

    void Commands_areExact_data() {
        Columns<QString, Ask>();
        const auto row = [](const QString& command, Ask ask) {
            QTest::newRow(qPrintable(command)) << command << ask;
        };
        const auto requests = [](const QString& type) {
            return [type](const auto& to) { clsRequest().GetRequests(to, u" A'1B"_s, type); };
        };
        const auto results = [](const QString& type) {
            return [type](const auto& to) { clsResults().GetResults(to, u" A'1B"_s, type); };
        };
        row(u"Nurse_CheckRequest ' A''1B','X'"_s, requests(u"1"_s));
        row(u"Nurse_CheckRequest ' A''1B',' '"_s, requests(u"2"_s));
        row(u"Nurse_CheckStatus ' A''1B','W'"_s, requests(u"3"_s));
        row(u"Nurse_VitalSigns ' A''1B'"_s, requests(u"4"_s));
        row(u"STATION..Nurse_GetXray ' A''1B'"_s, results(u"1"_s));
        row(u"STATION..Nurse_GetUltra ' A''1B'"_s, results(u"2"_s));
        row(u"STATION..Nurse_GetCT ' A''1B'"_s, results(u"3"_s));
        row(u"PATIENT_DATA..sp_Confinement_Period 'H''1'"_s, [](const auto& to) {
            clsConfinement().GetConfinementPeriod(to, u"H'1"_s, u"1/1/2026"_s);
        });
        row(u"PATIENT_DATA..sp_Confinement_Results 'A1B','2'"_s, [](const auto& to) {
            clsConfinementResults().GetConfinementResults(to, u"A1B"_s, u"2"_s);
        });
    }

    void Commands_areExact() {
        auto [command, ask] = Fetch<QString, Ask>();
        ask(u"Server=fake"_s);
        QCOMPARE(m_server.Steps, QStringList{command});
    }

    void UnknownType_failsAndClosesTheRowsBefore() {
        for (const QString& type : {u""_s, u"5"_s, u" 1"_s, u"01"_s, u"x"_s, u"4"_s}) {
            clsResults results;
            const auto held = results.GetResults(m_connection, m_idNum, u"1"_s);
            QCOMPARE(ErrorOf([&] { results.GetResults(m_connection, m_idNum, type); }).Number(),
                     102);
            QCOMPARE(held->State(), 0);
            QCOMPARE(results.GetResults(m_connection, m_idNum, u"3"_s)->State(), 1);
            const auto request = [&] { clsRequest().GetRequests(m_connection, m_idNum, type); };
            QCOMPARE(ErrorOf(request).Number(), type == u"4" ? -1 : 102);
        }
    }

    void OneRecordset_servesEveryCallUntilItsComponentIsGone() {
        clsRequest requests;
        requests.CloseRecordset();
        const auto first = requests.GetRequests(m_connection, m_idNum, u"1"_s);
        QCOMPARE(requests.GetRequests(m_connection, m_idNum, u"2"_s), first);
        // A caller that closes what it was given disturbs nothing.
        first->Close();
        QCOMPARE(requests.GetRequests(m_connection, m_idNum, u"1"_s)->State(), 1);
        requests.CloseRecordset();
        QCOMPARE(first->State(), 0);
        std::shared_ptr<db::Recordset> other;
        {
            clsRequest another;
            other = another.GetRequests(m_connection, m_idNum, u"2"_s);
            QVERIFY(other != first && other->State() == 1);
        }
        QCOMPARE(other->State(), 0);
    }

private:
    FakeServer m_server;
    std::shared_ptr<db::Connection> m_connection;
    const QString m_idNum = u"A1B"_s;
};

QTEST_GUILESS_MAIN(tst_WardActivity)
#include "tst_WardActivity.moc"
