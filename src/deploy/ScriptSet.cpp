#include "deploy/ScriptSet.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <algorithm>

// The resource lies in a static library, whose own initialisation the linker would drop.
static void LoadResource() {
    Q_INIT_RESOURCE(server);
}

namespace deploy {

namespace {

QString Sha256(const QString& text) {
    return QString::fromLatin1(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex());
}

std::vector<Script> ReadOwnScripts() {
    LoadResource();
    const QString root = QStringLiteral(":/server/");
    std::vector<Script> scripts;
    QDirIterator files(root, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            scripts.push_back(
                {file.fileName().mid(root.size()), QString::fromUtf8(file.readAll())});
    }
    return scripts;
}

}  // namespace

QString Script::Checksum() const {
    return Sha256(Text);
}

const ScriptSet& ScriptSet::Own() {
    static const ScriptSet own(ReadOwnScripts());
    return own;
}

ScriptSet::ScriptSet(std::vector<Script> scripts) {
    std::sort(scripts.begin(), scripts.end(),
              [](const Script& left, const Script& right) { return left.Name < right.Name; });
    QString lines;
    for (Script& script : scripts) {
        const QString& name = script.Name;
        const bool demo = name.startsWith(u"demo/");
        if (!demo)
            lines += QStringLiteral("%1 %2\n").arg(name, script.Checksum());
        std::vector<Script>& kind = demo                              ? m_demo
                                    : name.startsWith(u"migrations/") ? m_migrations
                                    : name.startsWith(u"procedures/") ? m_procedures
                                    : name.endsWith(u"_roles.sql")    ? m_roles
                                                                      : m_schema;
        kind.push_back(std::move(script));
    }
    m_checksum = Sha256(lines);
}

}  // namespace deploy
