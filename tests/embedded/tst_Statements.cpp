#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "embedded/StatementFile.h"

// Runs the *.test files of this folder: the accepted statements, each file in a new hospital with
// tables of its own.
class tst_Statements final : public QObject {
    Q_OBJECT

private slots:
    void File_givesTheExpectedAnswers_data();
    void File_givesTheExpectedAnswers();
};

void tst_Statements::File_givesTheExpectedAnswers_data() {
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(CAPD_TEST_DIR));
    for (const QString& name : folder.entryList({QStringLiteral("*.test")}))
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void tst_Statements::File_givesTheExpectedAnswers() {
    QFETCH(QString, path);
    const QTemporaryDir folder;
    embedded::Server server(folder.filePath(QStringLiteral("hospital.capd")),
                            embedded::Server::Mode::Create);
    const QString differences = StatementFile::Run(server, path);
    QVERIFY2(differences.isEmpty(), qPrintable(differences));
}

QTEST_GUILESS_MAIN(tst_Statements)
#include "tst_Statements.moc"
