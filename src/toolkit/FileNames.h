#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// The program's one door for asking where a file goes.
namespace toolkit {

/// Asks for the name of a file to be written, proposing one in the user's documents; the user has
/// then agreed to replace a file of that name. Empty when the user thought better of it. A name
/// typed without `suffix` ("pdf") gets it.
QString AskSaveName(QWidget* parent, const QString& title, const QString& proposal,
                    const QString& kind, const QString& suffix);

/// While one lives, no dialog is shown: names are answered from a queue, and what was asked is
/// recorded. A question with no answer waiting is answered empty and counts as unasked.
class FileNameScript final {
public:
    FileNameScript();
    ~FileNameScript();
    FileNameScript(const FileNameScript&) = delete;
    FileNameScript& operator=(const FileNameScript&) = delete;

    void Answer(const QString& fileName);
    /// The proposals of the questions so far, in order.
    const QStringList& Asked() const { return m_asked; }
    /// Empty when every question was expected and every answer used.
    QStringList Leftovers() const;

private:
    friend QString AskSaveName(QWidget*, const QString&, const QString&, const QString&,
                               const QString&);
    QString Take(const QString& proposal);

    QStringList m_asked;
    QStringList m_answers;
    QStringList m_unasked;
    FileNameScript* m_previous;
};

}  // namespace toolkit
