#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "tour/RoundTrips.h"

class QWidget;

namespace db {
class Recordset;
}

/// A working day walked through the real windows: each step is done by keys and mouse, checked
/// and pictured. A step runs when the windows have come to rest, also inside a dialog's own loop.
class Tour final : public QObject {
    Q_OBJECT
public:
    /// The folder takes what the day leaves behind. A quick day has no pictures.
    Tour(QString folder, bool quick);

    /// Adds a step; what it throws or Expect() finds is its failure. Pictures are taken after it.
    void Step(const QString& name, std::function<void()> act);
    /// As Step, without a picture: between two of them.
    void Quietly(const QString& name, std::function<void()> act);
    /// Walks all steps and returns the number that failed.
    int Walk();

    /// A file in the tour's folder.
    QString File(const QString& name) const { return m_folder + u'/' + name; }

    /// The window that takes the keys now: the topmost dialog, else the active window.
    static QWidget* Window();
    /// A control of that window by its name; throws where there is none.
    template <class Control>
    static Control* Find(const char* name);
    /// What the tour itself wants to know or has done elsewhere in the hospital.
    static std::shared_ptr<db::Recordset> Ask(const QString& command);
    static void Type(QWidget* widget, const QString& text);
    static void Press(int key, Qt::KeyboardModifiers modifiers = {});

private:
    struct Stage {
        QString Name;
        std::function<void()> Act;
        bool Pictured;
    };
    void Next();
    void AfterAMoment(std::function<void()> go);
    /// Lets the windows come to rest, and what shows its progress end, before the next step.
    void Rest(const Stage& stage);
    void WriteDown(const QString& file, const QString& text);
    void Picture(const Stage& stage);
    static QObject* FindObject(const char* name, const QMetaObject& type);

    const QString m_folder;
    const bool m_quick;
    std::vector<Stage> m_stages;
    RoundTrips m_roundTrips;
    size_t m_next = 0;
    int m_pictures = 0;
    int m_failed = 0;
    int m_waits = 0;
    bool m_acting = false;
    QWidget* m_dialogBefore = nullptr;
};

template <class Control>
Control* Tour::Find(const char* name) {
    return static_cast<Control*>(FindObject(name, Control::staticMetaObject));
}
