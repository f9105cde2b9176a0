#pragma once

#include <QWidget>
#include <memory>

#include "print/ReportPages.h"

namespace Ui {
class ReportPreview;
}

namespace print {

/// A report on the screen: pages, zoom, search, print, save as PDF, by key and by mouse.
class ReportPreview final : public QWidget {
    Q_OBJECT
public:
    explicit ReportPreview(QWidget* parent = nullptr);
    ~ReportPreview() override;

    /// Shows a report from its first page, fitted to the width. The title names the print job
    /// and the proposed file.
    void SetReport(std::shared_ptr<const ReportPages> pages, const QString& title);

public slots:
    /// Asks for printer and pages and prints beside the running program. Says so when there is
    /// no printer.
    void Print();
    /// Asks for a name and writes the PDF; a failure is told and leaves no half file.
    void SaveAsPdf();
    /// Marks every place of the text in the search box and goes to the next one, from the last
    /// to the first.
    void FindNext();
    void FindPrevious();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void AddShortcuts();
    void Find(int step);
    void ForgetHits();
    void ShowState();

    std::unique_ptr<Ui::ReportPreview> m_ui;
    std::shared_ptr<const ReportPages> m_pages;
    QString m_title;
    std::vector<ReportHit> m_hits;
    int m_hit = -1;
    bool m_searched = false;
};

}  // namespace print
