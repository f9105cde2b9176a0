#include <QTemporaryDir>

#include "embedded/StatementFile.h"

using namespace Qt::StringLiterals;

// Runs the *.test files of this folder: the accepted statements, each file in a new hospital with
// tables of its own.
class tst_Statements final : public QObject {
    Q_OBJECT

private slots:
    void File_givesTheExpectedAnswers_data() {
        StatementFile::Files(QStringLiteral(CAPD_TEST_DIR));
    }

    void File_givesTheExpectedAnswers() {
        QFETCH(QString, path);
        const QTemporaryDir folder;
        embedded::Server server(folder.filePath(u"hospital.capd"_s),
                                embedded::Server::Mode::Create);
        const QString differences = StatementFile::Run(server, path);
        QVERIFY2(differences.isEmpty(), qPrintable(differences));
    }
};

QTEST_GUILESS_MAIN(tst_Statements)
#include "tst_Statements.moc"
