#include "tour/Tour.h"

#include <QApplication>
#include <QEventLoop>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <iostream>

#include "base/Errors.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"

namespace {

// Long enough for a window to be laid out and painted on a slow machine.
constexpr int kRestMilliseconds = 120;
constexpr int kPatientWaits = 8;
constexpr int kLongestWaits = 200;

}  // namespace

Tour::Tour(QString folder) : m_folder(std::move(folder)) {}

void Tour::Step(const QString& name, std::function<void()> act) {
    m_stages.push_back({name, std::move(act), true});
}

void Tour::Quietly(const QString& name, std::function<void()> act) {
    m_stages.push_back({name, std::move(act), false});
}

int Tour::Walk() {
    QEventLoop day;
    m_stages.push_back({{}, [&day] { day.quit(); }, false});
    QTimer::singleShot(0, this, &Tour::Next);
    day.exec();
    if (!m_roundTrips.Write(File(QStringLiteral("round-trips.md"))))
        ++m_failed;
    for (const QString& repeated : m_roundTrips.NeedlesslyRepeated()) {
        ++m_failed;
        std::cout << "FAILED " << repeated.toStdString() << ": sent again" << std::endl;
    }
    std::cout << "tour: " << m_stages.size() - 1 << " steps, " << m_failed << " failed"
              << std::endl;
    return m_failed;
}

// The next step is arranged before this one is done: this one may open a dialog and not come
// back before the next has closed it.
void Tour::Next() {
    const Stage stage = m_stages[m_next++];
    if (m_next < m_stages.size())
        Rest(stage);
    m_roundTrips.Begin(stage.Name);
    const auto fail = [&](const QString& why) {
        ++m_failed;
        std::cout << "FAILED " << stage.Name.toStdString() << ": " << why.toStdString()
                  << std::endl;
    };
    m_acting = true;
    m_dialogBefore = QApplication::activeModalWidget();
    try {
        stage.Act();
    } catch (const base::RuntimeError& error) {
        fail(QStringLiteral("%1 %2").arg(error.Number()).arg(error.Description()));
    } catch (const std::exception& error) {
        fail(QString::fromUtf8(error.what()));
    }
    m_acting = false;
}

void Tour::Rest(const Stage& stage) {
    QTimer::singleShot(kRestMilliseconds, this, [this, stage] {
        // A dialog that has hidden itself is about to ask again, or its opener is about to get the
        // keys back; only the last step leaves nothing.
        const bool between = !QApplication::activeWindow() && m_next + 1 < m_stages.size() &&
                             m_waits++ < kLongestWaits;
        // Under load the window manager now and then forgets the opener of two dialogs that close
        // together; a user would click on it.
        if (between && m_waits > kPatientWaits && Window())
            Window()->activateWindow();
        // Each key lets timers run: on a slow server this one comes before the step's last key.
        const bool typing = m_acting && m_waits < kLongestWaits &&
                            !QApplication::activePopupWidget() &&
                            QApplication::activeModalWidget() == m_dialogBefore;
        m_waits += typing ? 1 : 0;
        if (typing || between ||
            qobject_cast<QProgressDialog*>(QApplication::activeModalWidget())) {
            Rest(stage);
            return;
        }
        m_waits = 0;
        // What this moment brought up is painted by the next.
        QTimer::singleShot(kRestMilliseconds, this, [this, stage] {
            if (stage.Pictured)
                Picture(stage);
            Next();
        });
    });
}

void Tour::Expect(bool holds, const QString& what) {
    if (!holds)
        throw std::runtime_error(what.toStdString());
}

QWidget* Tour::Window() {
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget* active = QApplication::activeWindow())
        return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            return window;
    return nullptr;
}

std::shared_ptr<db::Recordset> Tour::Ask(const QString& command) {
    const RoundTrips::Pause pause;
    return modGlobals::gConnection->Execute(command);
}

void Tour::Type(QWidget* widget, const QString& text) {
    widget->setFocus();
    QTest::keyClicks(widget, text);
}

void Tour::Press(int key, Qt::KeyboardModifiers modifiers) {
    QWidget* window = Window();
    if (!window)
        throw std::runtime_error("there is no window to press a key in");
    QTest::keyClick(window->windowHandle(), Qt::Key(key), modifiers);
}

void Tour::Picture(const Stage& stage) {
    QString name = stage.Name;
    name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9]+")), QStringLiteral("-"));
    const QString file =
        QStringLiteral("%1-%2.png").arg(++m_pictures, 2, 10, QLatin1Char('0')).arg(name.toLower());
    if (!QGuiApplication::primaryScreen()->grabWindow(0).save(File(file))) {
        ++m_failed;
        std::cout << "FAILED picture " << file.toStdString() << std::endl;
    }
}

QObject* Tour::FindObject(const char* name, const QMetaObject& type) {
    const QWidget* window = Window();
    if (window)
        for (QObject* child : window->findChildren<QObject*>(QLatin1String(name)))
            if (type.cast(child))
                return child;
    throw std::runtime_error(std::string("there is no control ") + name);
}
