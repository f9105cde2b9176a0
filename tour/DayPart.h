#pragma once

#include "tour/Tour.h"

/// A part of the working day: adds its steps to the tour, and has the moves that all parts share.
class DayPart {
public:
    explicit DayPart(Tour& tour) : m_tour(tour) {}
    DayPart(const DayPart&) = delete;
    DayPart& operator=(const DayPart&) = delete;

protected:
    ~DayPart() = default;

    void Step(const QString& name, std::function<void()> act) { m_tour.Step(name, std::move(act)); }
    void Quietly(const QString& name, std::function<void()> act) {
        m_tour.Quietly(name, std::move(act));
    }
    /// A check within a step.
    static void Expect(bool holds, const QString& what);
    /// The title of the window in front begins so.
    static void ExpectTitle(const QString& title);

    /// The hospital holds these rows now: "cell|cell;cell|cell".
    static void ExpectStored(const QString& query, const QString& rows);

    /// Key by key, to whoever has the keyboard.
    static void Keys(const QString& text);
    static void Enter(const QString& text = {});
    /// A button, by keyboard.
    static void Push(const char* button);
    /// In the patient list: those of a type (a button's name) whose admission number begins so.
    static void ListPatients(const char* type, bool current, const QString& idNum);

    /// The box in front says this; the key, with Alt unless it is Enter, closes it.
    void ReadBox(const QString& step, const QString& said, int answer = Qt::Key_Return);
    /// The viewer with this title is pictured, saved as a PDF and closed.
    void SavePdf(const QString& step, const QString& title, const QString& file);
    /// As a user does who is asked for a file's name.
    void TypeFileName(const QString& file, const std::function<void()>& save) const;

private:
    Tour& m_tour;
};
