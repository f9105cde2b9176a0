#include "components/builtin/HospitalFiles.h"

#include <QStandardPaths>

namespace components::HospitalFiles {

namespace {

QString g_demo;
QString g_own;

QString InDataFolder(const QString& name) {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u'/' + name;
}

}  // namespace

QString Demo() {
    return g_demo.isEmpty() ? InDataFolder(QStringLiteral("demo.db")) : g_demo;
}

QString Own() {
    return g_own.isEmpty() ? InDataFolder(QStringLiteral("hospital.db")) : g_own;
}

void Place(const QString& demoFile, const QString& ownFile) {
    g_demo = demoFile;
    g_own = ownFile;
}

}  // namespace components::HospitalFiles
