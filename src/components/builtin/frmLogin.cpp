#include "components/builtin/frmLogin.h"

#include <QPushButton>

#include "base/Errors.h"
#include "components/builtin/clsCurrentUser.h"
#include "toolkit/Busy.h"
#include "ui_frmLogin.h"

namespace components {

frmLogin::frmLogin(std::vector<DataSource> sources, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmLogin>()), m_sources(std::move(sources)) {
    ui->setupUi(this);
    ui->lblRefusal->hide();
    for (const DataSource& source : m_sources)
        ui->cboSource->addItem(source.Title());
    connect(ui->cboSource, &QComboBox::currentIndexChanged, this, &frmLogin::cboSource_Change);
    // What was said of one user or server is not said of the next.
    for (QLineEdit* box : {ui->txtUser, ui->txtPassword})
        connect(box, &QLineEdit::textEdited, this, &frmLogin::cboSource_Change);
    connect(ui->cmdLogIn, &QPushButton::clicked, this, &frmLogin::cmdLogIn_Click);
    connect(ui->cmdTest, &QPushButton::clicked, this, &frmLogin::cmdTest_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    cboSource_Change();
}

frmLogin::~frmLogin() = default;

void frmLogin::Choose(const QString& sourceTitle, const QString& userName) {
    const int index = ui->cboSource->findText(sourceTitle);
    if (index >= 0) {
        ui->cboSource->setCurrentIndex(index);
    } else if (!sourceTitle.isEmpty()) {
        // Another hospital must not stand there unsaid in its place.
        Tell(QStringLiteral("\"%1\", chosen last time, is not set up on this workstation any more.")
                 .arg(sourceTitle));
    }
    ui->txtUser->setText(userName);
}

const DataSource& frmLogin::Source() const {
    return m_sources[size_t(ui->cboSource->currentIndex())];
}

QString frmLogin::UserName() const {
    return ui->txtUser->text().trimmed();
}

QString frmLogin::Password() const {
    return ui->txtPassword->text();
}

void frmLogin::AskAgain(const QString& why) {
    Tell(why);
    ui->txtPassword->clear();
}

void frmLogin::Tell(const QString& why) {
    ui->lblRefusal->setText(why);
    ui->lblRefusal->show();
}

void frmLogin::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    FocusFirst();
}

void frmLogin::FocusFirst() {
    QLineEdit* first = ui->txtUser->text().isEmpty() ? ui->txtUser : ui->txtPassword;
    first->selectAll();
    first->setFocus();
}

// The window stays while a hospital that others write to lets one wait.
void frmLogin::cmdLogIn_Click() {
    ui->lblRefusal->hide();
    ui->lblDemo->setText(QStringLiteral("The hospital is being opened…"));
    repaint();
    try {
        const QString refusal = m_logIn();
        if (refusal.isEmpty())
            return accept();
        cboSource_Change();
        AskAgain(refusal);
    } catch (const base::RuntimeError& error) {
        cboSource_Change();
        Tell(error.Description());
    }
    FocusFirst();
}

void frmLogin::cmdTest_Click() {
    ui->lblDemo->clear();
    ui->lblRefusal->hide();
    const toolkit::Busy busy;
    try {
        Source().Open(UserName(), Password());
        ui->lblDemo->setText(
            QStringLiteral("The server answers, takes this user and holds the hospital."));
    } catch (const base::DatabaseError& error) {
        Tell(error.Description());
    }
}

void frmLogin::cboSource_Change() {
    ui->lblRefusal->hide();
    ui->cmdTest->setVisible(!Source().IsEmbedded());
    const bool demo = Source().Where == DataSource::Kind::Demo;
    ui->lblDemo->setText(demo ? QStringLiteral("Practice data. User: %1, password: %2")
                                    .arg(clsCurrentUser::kDemoUser, clsCurrentUser::kDemoPassword)
                              : QString());
}

}  // namespace components
