#pragma once

#include <QDialog>
#include <memory>

#include "components/builtin/DataSource.h"

namespace Ui {
class frmLogin;
}

namespace components {

/// Asks for the hospital, the user and the password. Knows no user: its caller checks.
class frmLogin final : public QDialog {
    Q_OBJECT
public:
    explicit frmLogin(std::vector<DataSource> sources, QWidget* parent = nullptr);
    ~frmLogin() override;

    void Choose(const QString& sourceTitle, const QString& userName);
    const DataSource& Source() const;
    QString UserName() const;
    QString Password() const;

    /// Asks again after a refusal: says so, with the password emptied.
    void AskAgain(const QString& why);
    /// Says why the hospital could not be opened; what was typed stays.
    void Tell(const QString& why);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void cboSource_Change();
    /// Opens the server as typed and closes it again: says what it answers, logs nobody in.
    void cmdTest_Click();

    std::unique_ptr<Ui::frmLogin> ui;
    std::vector<DataSource> m_sources;
};

}  // namespace components
