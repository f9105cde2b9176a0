#include "deploy/DeployedScripts.h"

#include "deploy/Rows.h"

namespace deploy {

namespace {

/// The row that stands for all scripts together; no script has such a name.
const QString kWholeSet = QStringLiteral("(all)");

QString Quoted(QString text) {
    return u'\'' + text.replace(QStringLiteral("'"), QStringLiteral("''")) + u'\'';
}

}  // namespace

QString DeployedScripts::SetChecksumCommand() {
    return QStringLiteral(
               "SELECT Checksum FROM CLINICAL_AREA..tbDeployedScript WHERE ScriptName = ") +
           Quoted(kWholeSet);
}

QString DeployedScripts::SetChecksum() {
    const Rows rows = Rows::Ask(m_driver, SetChecksumCommand());
    return rows.Cells().empty() ? QString() : rows.Cells().front().front();
}

QHash<QString, QString> DeployedScripts::All() {
    QHash<QString, QString> checksums;
    const Rows rows = Rows::Ask(
        m_driver,
        QStringLiteral("SELECT ScriptName, Checksum FROM CLINICAL_AREA..tbDeployedScript"));
    for (const QStringList& row : rows.Cells()) {
        if (row[0] != kWholeSet)
            checksums.insert(row[0], row[1]);
    }
    return checksums;
}

void DeployedScripts::Lock() {
    Run(m_driver, QStringLiteral("UPDATE CLINICAL_AREA..tbDeployedScript SET Checksum = Checksum "
                                 "WHERE ScriptName = ") +
                      Quoted(kWholeSet));
}

void DeployedScripts::RecordSet(const ScriptSet& scripts) {
    Record(kWholeSet, scripts.Checksum());
}

void DeployedScripts::Forget(const QString& scriptName) {
    Run(m_driver,
        QStringLiteral("DELETE FROM CLINICAL_AREA..tbDeployedScript WHERE ScriptName = ") +
            Quoted(scriptName));
}

void DeployedScripts::Record(const QString& name, const QString& checksum) {
    Forget(name);
    Run(m_driver, QStringLiteral("INSERT INTO CLINICAL_AREA..tbDeployedScript "
                                 "(ScriptName, Checksum, DeployedAt) VALUES (%1, %2, GETDATE())")
                      .arg(Quoted(name), Quoted(checksum)));
}

}  // namespace deploy
