#include "tour/Tour.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEventLoop>
#include <QFile>
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

using namespace Qt::StringLiterals;

namespace {

// Long enough for a window to be laid out and painted on a slow machine.
constexpr int kRestMilliseconds = 120;
constexpr int kPaintMilliseconds = 12;
constexpr int kPatientWaits = 8;
constexpr int kLongestWaits = 200;

// A button that its letter has pressed acts a moment later.
bool HasButtonDown() {
    const QWidget* window = Tour::Window();
    const auto buttons =
        window ? window->findChildren<QAbstractButton*>() : QList<QAbstractButton*>();
    return std::any_of(buttons.begin(), buttons.end(), std::mem_fn(&QAbstractButton::isDown));
}

}  // namespace

Tour::Tour(QString folder, bool quick) : m_folder(std::move(folder)), m_quick(quick) {}

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
    WriteDown(u"round-trips.md"_s, m_roundTrips.Table());
    WriteDown(u"commands.md"_s, m_roundTrips.Commands());
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
        fail(u"%1 %2"_s.arg(error.Number()).arg(error.Description()));
    } catch (const std::exception& error) {
        fail(QString::fromUtf8(error.what()));
    }
    m_acting = false;
}

// Without pictures a moment ends when the program has nothing left to do, painting included.
void Tour::AfterAMoment(std::function<void()> go) {
    if (!m_quick) {
        QTimer::singleShot(kRestMilliseconds, this, std::move(go));
        return;
    }
    QTimer::singleShot(kPaintMilliseconds, this, [this, go = std::move(go)] {
        connect(
            QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this, go] { QTimer::singleShot(0, this, go); }, Qt::SingleShotConnection);
    });
}

void Tour::Rest(const Stage& stage) {
    AfterAMoment([this, stage] {
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
        if (typing || between || HasButtonDown() ||
            qobject_cast<QProgressDialog*>(QApplication::activeModalWidget())) {
            Rest(stage);
            return;
        }
        m_waits = 0;
        // What this moment brought up is painted by the next.
        AfterAMoment([this, stage] {
            if (stage.Pictured && !m_quick)
                Picture(stage);
            Next();
        });
    });
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

void Tour::WriteDown(const QString& name, const QString& text) {
    QFile file(File(name));
    if (file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0)
        return;
    ++m_failed;
    std::cout << "FAILED " << name.toStdString() << std::endl;
}

void Tour::Picture(const Stage& stage) {
    QString name = stage.Name;
    name.replace(QRegularExpression(u"[^A-Za-z0-9]+"_s), u"-"_s);
    const QString file =
        u"%1-%2.png"_s.arg(++m_pictures, 2, 10, QLatin1Char('0')).arg(name.toLower());
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
