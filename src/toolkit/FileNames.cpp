#include "toolkit/FileNames.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

namespace toolkit {

namespace {

FileNameScript* g_script = nullptr;

QString WithSuffix(const QString& fileName, const QString& suffix) {
    if (fileName.isEmpty() || !QFileInfo(fileName).suffix().isEmpty())
        return fileName;
    return fileName + u'.' + suffix;
}

}  // namespace

QString AskSaveName(QWidget* parent, const QString& title, const QString& proposal,
                    const QString& kind, const QString& suffix) {
    if (g_script)
        return WithSuffix(g_script->Take(proposal), suffix);
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QFileDialog dialog(parent, title, folder, QStringLiteral("%1 (*.%2)").arg(kind, suffix));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // The suffix is added before the dialog asks whether a file may be replaced.
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(proposal);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

FileNameScript::FileNameScript() : m_previous(g_script) {
    g_script = this;
}

FileNameScript::~FileNameScript() {
    g_script = m_previous;
}

void FileNameScript::Answer(const QString& fileName) {
    m_answers += fileName;
}

QStringList FileNameScript::Leftovers() const {
    QStringList faults;
    for (const QString& proposal : m_unasked)
        faults += QStringLiteral("unasked file name: %1").arg(proposal);
    for (const QString& answer : m_answers)
        faults += QStringLiteral("answer not used: %1").arg(answer);
    return faults;
}

QString FileNameScript::Take(const QString& proposal) {
    m_asked += proposal;
    if (m_answers.isEmpty()) {
        m_unasked += proposal;
        return {};
    }
    return m_answers.takeFirst();
}

}  // namespace toolkit
