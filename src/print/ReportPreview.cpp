#include "print/ReportPreview.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QShortcut>

#include "print/PrintDialogs.h"
#include "ui_ReportPreview.h"

namespace print {

namespace {

constexpr double kZoomStep = 1.25;

}  // namespace

ReportPreview::ReportPreview(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::ReportPreview>()) {
    m_ui->setupUi(this);
    PageView* view = m_ui->pagView;
    connect(view, &PageView::ViewChanged, this, &ReportPreview::ShowState);
    connect(m_ui->cmdPrint, &QToolButton::clicked, this, &ReportPreview::Print);
    connect(m_ui->cmdSave, &QToolButton::clicked, this, &ReportPreview::SaveAsPdf);
    connect(m_ui->cmdPrevious, &QToolButton::clicked, view,
            [view] { view->GoToPage(view->CurrentPage() - 1); });
    connect(m_ui->cmdNext, &QToolButton::clicked, view,
            [view] { view->GoToPage(view->CurrentPage() + 1); });
    connect(m_ui->cmdZoomIn, &QToolButton::clicked, view,
            [view] { view->SetZoom(view->Zoom() * kZoomStep); });
    connect(m_ui->cmdZoomOut, &QToolButton::clicked, view,
            [view] { view->SetZoom(view->Zoom() / kZoomStep); });
    connect(m_ui->cmdFitWidth, &QToolButton::clicked, view, &PageView::FitWidth);
    connect(m_ui->cmdFindNext, &QToolButton::clicked, this, &ReportPreview::FindNext);
    connect(m_ui->cmdFindPrevious, &QToolButton::clicked, this, &ReportPreview::FindPrevious);
    connect(m_ui->txtFind, &QLineEdit::returnPressed, this, &ReportPreview::FindNext);
    connect(m_ui->txtFind, &QLineEdit::textChanged, this, &ReportPreview::ForgetHits);
    AddShortcuts();
    setFocusProxy(view);
}

ReportPreview::~ReportPreview() = default;

void ReportPreview::AddShortcuts() {
    const auto add = [this](const QKeySequence& keys, auto action) {
        auto* shortcut = new QShortcut(keys, this);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    PageView* view = m_ui->pagView;
    add(Qt::CTRL | Qt::Key_P, [this] { Print(); });
    add(Qt::CTRL | Qt::Key_S, [this] { SaveAsPdf(); });
    add(Qt::CTRL | Qt::Key_F, [this] {
        m_ui->txtFind->setFocus(Qt::ShortcutFocusReason);
        m_ui->txtFind->selectAll();
    });
    add(Qt::Key_F3, [this] { FindNext(); });
    add(Qt::SHIFT | Qt::Key_F3, [this] { FindPrevious(); });
    // On many keyboards the plus is typed with or without Shift.
    for (const auto key : {Qt::Key_Plus, Qt::Key_Equal})
        add(Qt::CTRL | key, [view] { view->SetZoom(view->Zoom() * kZoomStep); });
    add(Qt::CTRL | Qt::Key_Minus, [view] { view->SetZoom(view->Zoom() / kZoomStep); });
    add(Qt::CTRL | Qt::Key_0, [view] { view->FitWidth(); });
}

// What the find box and the buttons leave: the pages are turned from everywhere, and Esc ends a
// search before it closes the window.
void ReportPreview::keyPressEvent(QKeyEvent* event) {
    const bool searches = m_ui->txtFind->hasFocus() || m_searched;
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown) {
        QCoreApplication::sendEvent(m_ui->pagView, event);
    } else if (event->key() == Qt::Key_Escape && searches) {
        m_ui->txtFind->clear();
        ForgetHits();
        m_ui->pagView->setFocus(Qt::OtherFocusReason);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ReportPreview::SetReport(std::shared_ptr<const ReportPages> pages, const QString& title) {
    m_pages = std::move(pages);
    m_title = title;
    ForgetHits();
    m_ui->pagView->SetPages(m_pages);
    ShowState();
}

void ReportPreview::ShowState() {
    if (!m_pages)
        return;
    const int page = m_ui->pagView->CurrentPage();
    m_ui->lblPage->setText(QStringLiteral("Page %1 of %2").arg(page + 1).arg(m_pages->Count()));
    m_ui->lblZoom->setText(QStringLiteral("%1 %").arg(qRound(m_ui->pagView->Zoom() * 100)));
    m_ui->cmdPrevious->setEnabled(page > 0);
    m_ui->cmdNext->setEnabled(page + 1 < m_pages->Count());
}

void ReportPreview::Print() {
    AskAndPrint(this, m_pages, m_title, m_ui->pagView->CurrentPage());
}

void ReportPreview::SaveAsPdf() {
    AskAndSavePdf(this, *m_pages, m_title);
}

void ReportPreview::FindNext() {
    Find(1);
}

void ReportPreview::FindPrevious() {
    Find(-1);
}

void ReportPreview::Find(int step) {
    if (!m_pages)
        return;
    if (!m_searched) {
        m_hits = m_pages->Find(m_ui->txtFind->text());
        m_searched = true;
        // The first hit is the one at or after the page in view, not the top of the report.
        const int page = m_ui->pagView->CurrentPage();
        const auto found = std::find_if(m_hits.begin(), m_hits.end(),
                                        [page](const ReportHit& hit) { return hit.Page >= page; });
        m_hit = int(found - m_hits.begin()) - (step > 0 ? 1 : 0);
    }
    const int count = int(m_hits.size());
    m_hit = count == 0 ? -1 : (m_hit + step + count) % count;
    m_ui->pagView->SetHits(m_hits, m_hit);
    m_ui->lblFound->setText(count == 0 ? QStringLiteral("Not found")
                                       : QStringLiteral("%1 of %2").arg(m_hit + 1).arg(count));
}

void ReportPreview::ForgetHits() {
    m_hits.clear();
    m_hit = -1;
    m_searched = false;
    m_ui->pagView->SetHits({}, -1);
    m_ui->lblFound->clear();
}

}  // namespace print
