#include "components/builtin/HospitalMaking.h"

#include <QApplication>
#include <QFileInfo>
#include <QProgressDialog>
#include <QSettings>

#include "base/Errors.h"
#include "deploy/HospitalFile.h"

namespace components {

namespace {

constexpr int kFileNotFound = 53;

// Once made on this workstation, a hospital is expected to be there.
QString MadeSetting(const QString& file) {
    return QStringLiteral("made/") + QString::fromLatin1(file.toUtf8().toHex());
}

void Make(const QString& file, deploy::Contents contents) {
    QProgressDialog progress(QStringLiteral("Making the hospital file. This happens once."), {}, 0,
                             0);
    progress.setWindowTitle(QStringLiteral("Log-in"));
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(0);
    deploy::MakeHospital(file, contents, [&progress](int done, int all) {
        progress.setMaximum(all);
        progress.setValue(done);
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    });
}

}  // namespace

void MakeDemoHospitalOnce(const QString& file) {
    if (QFileInfo::exists(file))
        return;
    Make(file, deploy::Contents::Demo);
}

void MakeOwnHospitalOnce(const QString& file) {
    QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("capd"));
    const QString made = MadeSetting(file);
    if (QFileInfo::exists(file)) {
        settings.setValue(made, true);
        return;
    }
    if (settings.value(made).toBool())
        throw base::RuntimeError(
            kFileNotFound,
            QStringLiteral("The hospital file %1 is missing. Restore it from its backup.")
                .arg(file));
    Make(file, deploy::Contents::Empty);
    settings.setValue(made, true);
}

}  // namespace components
