#pragma once

#include <QDialog>
#include <functional>
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

    /// What "Log In" does with what was typed: the refusal, empty where the user is in and the
    /// window closes. After a refusal the password is empty; where it throws base::RuntimeError,
    /// the reason is said and what was typed stays.
    void SetLogIn(std::function<QString()> logIn) { m_logIn = std::move(logIn); }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void AskAgain(const QString& why);
    void Tell(const QString& why);
    void cboSource_Change();
    /// Opens the server as typed and closes it again: says what it answers, logs nobody in.
    void cmdLogIn_Click();
    void cmdTest_Click();
    void FocusFirst();

    std::unique_ptr<Ui::frmLogin> ui;
    std::vector<DataSource> m_sources;
    std::function<QString()> m_logIn;
};

}  // namespace components
