#include "hub/ResultPage.h"

#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include "db/Recordset.h"
#include "toolkit/Busy.h"
#include "toolkit/CellText.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/Tips.h"

namespace {

constexpr int kRowsOfEmptyList = 2;
constexpr int kFewestRowsInSight = 3;
constexpr int kPairsToTheLine = 3;
constexpr int kBoxesToTheLine = 3;
const QString kNotReleased = QStringLiteral("NOT RELEASED");

// Lines stay lines; what no font can show becomes a blank.
QString Readable(const QString& text) {
    QStringList lines;
    QString unified = text;
    unified.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    for (const QString& line : unified.split(u'\n'))
        lines << toolkit::OneLine(line);
    return lines.join(u'\n');
}

QLabel* CaptionOf(const QString& text) {
    auto* caption = new QLabel(text);
    caption->setTextFormat(Qt::PlainText);
    return caption;
}

QPlainTextEdit* NewBox(const QString& name, const QString& caption) {
    auto* box = new QPlainTextEdit;
    box->setObjectName(name);
    box->setAccessibleName(caption);
    box->setReadOnly(true);
    box->setTabChangesFocus(true);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return box;
}

}  // namespace

ResultPage::ResultPage(const ResultKind& kind, QWidget* parent)
    : QWidget(parent), m_kind(kind), m_grid(new toolkit::FlexGrid), m_state(new QLabel) {
    setObjectName(QStringLiteral("tab") + kind.Name);
    m_grid->setObjectName(QStringLiteral("mshflex") + kind.Name);
    m_grid->setAccessibleName(QString(kind.Caption).remove(u'&') + QStringLiteral(" results"));
    m_state->setObjectName(QStringLiteral("lbl%1State").arg(kind.Name));
    m_state->setTextFormat(Qt::PlainText);
    auto* page = new QVBoxLayout(this);
    page->addWidget(m_grid, kind.Boxes.size() > 1 ? 2 : 3);
    if (kind.Details.empty() && !kind.Boxes.empty())
        page->insertWidget(0, CaptionOf(QStringLiteral("List of Examinations")));
    auto* below = new QGridLayout;
    AddDetails(*below);
    page->addLayout(below, kind.Boxes.empty() ? 0 : 3);
    auto* buttons = new QHBoxLayout;
    AddButtons(*buttons);
    page->addLayout(buttons);
    connect(m_grid, &toolkit::FlexGrid::RowClicked, this, &ResultPage::ShowResultDetail);
    connect(m_grid, &toolkit::FlexGrid::CurrentRowChanged, this, &ResultPage::ShowResultDetail);
    connect(m_grid, &toolkit::FlexGrid::RowOpened, this, &ResultPage::grid_RowOpened);
    m_grid->SetTextOfEmpty(kind.ReleaseColumn, kNotReleased);
    Empty();
}

void ResultPage::AddDetails(QGridLayout& layout) {
    const int columns = 2 * kPairsToTheLine;
    int place = 0;
    for (const ResultDetail& detail : m_kind.Details) {
        auto* value = new QLabel;
        value->setObjectName(QStringLiteral("lbl%1%2").arg(m_kind.Name, detail.Label));
        value->setTextFormat(Qt::PlainText);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        QFont bold = value->font();
        bold.setBold(true);
        value->setFont(bold);
        // A long name never widens the window; it is whole under the mouse.
        value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        value->setMinimumHeight(value->fontMetrics().height());
        const int line = place / kPairsToTheLine, pair = place % kPairsToTheLine;
        layout.addWidget(CaptionOf(detail.Caption), line, 2 * pair);
        layout.addWidget(value, line, 2 * pair + 1);
        layout.setColumnStretch(2 * pair + 1, 1);
        m_details.push_back(value);
        ++place;
    }
    const int perLine = m_kind.Boxes.size() > 1 ? kBoxesToTheLine : 1;
    const int span = columns / perLine;
    int line = layout.rowCount();
    for (size_t i = 0; i < m_kind.Boxes.size(); ++i) {
        const ResultBox& box = m_kind.Boxes[i];
        const int column = int(i) % perLine * span;
        if (i > 0 && column == 0)
            line += 2;
        m_boxes.push_back(
            NewBox(QStringLiteral("txt%1%2").arg(m_kind.Name, box.Name), box.Caption));
        layout.addWidget(CaptionOf(box.Caption), line, column, 1, span);
        layout.addWidget(m_boxes.back(), line + 1, column, 1, span);
        layout.setRowStretch(line + 1, 1);
    }
}

QPushButton* ResultPage::AddButton(QHBoxLayout& layout, const QString& text, const QString& name) {
    auto* button = new QPushButton(text);
    button->setObjectName(QStringLiteral("cmd%1%2").arg(m_kind.Name, name));
    button->setAutoDefault(true);
    layout.addWidget(button);
    return button;
}

void ResultPage::AddButtons(QHBoxLayout& layout) {
    layout.addWidget(m_state, 1);
    if (m_kind.HasView) {
        m_view = AddButton(layout, QStringLiteral("View"), QStringLiteral("View"));
        m_view->setProperty("primary", true);
        connect(m_view, &QPushButton::clicked, this, &ResultPage::ViewPressed);
    }
    const auto text = [this](const char* plain, const char* marked) {
        return QString(QLatin1String(m_kind.HasMnemonics ? marked : plain));
    };
    if (m_kind.Print != ResultPrint::None) {
        m_print = AddButton(layout, text("Print", "&Print"), QStringLiteral("Print"));
        connect(m_print, &QPushButton::clicked, this, &ResultPage::PrintPressed);
    }
    QPushButton* refresh = AddButton(layout, QStringLiteral("Refresh"), QStringLiteral("Refresh"));
    connect(refresh, &QPushButton::clicked, this, &ResultPage::RefreshPressed);
    QPushButton* exit = AddButton(layout, text("Exit", "&Exit"), QStringLiteral("Exit"));
    connect(exit, &QPushButton::clicked, this, &ResultPage::ExitPressed);
}

void ResultPage::Empty() {
    m_grid->Clear();
    m_grid->SetCols(m_kind.Columns);
    m_grid->SetRows(kRowsOfEmptyList);
    if (!m_kind.Layout.isEmpty())
        m_grid->SetFormatString(m_kind.Layout);
    for (size_t i = 0; i < m_kind.Widths.size(); ++i)
        m_grid->SetColWidth(int(i) + 1, m_grid->ColWidth(0) + m_kind.Widths[i]);
    m_grid->clearSelection();
    LeaveRoom();
    ClearDetails();
    m_state->clear();
    if (m_view)
        m_view->setEnabled(false);
}

void ResultPage::ClearDetails() {
    m_shownResult.clear();
    for (QLabel* value : m_details) {
        value->clear();
        value->setToolTip({});
    }
    for (QPlainTextEdit* box : m_boxes)
        box->clear();
    if (m_print)
        m_print->setEnabled(false);
}

void ResultPage::Load(const PatientOnScreen& patient) {
    const toolkit::Busy busy;
    Empty();
    if (!m_kind.Open) {
        m_state->setText(QStringLiteral("No nuclear medicine results come to this unit."));
        return;
    }
    m_state->setText(QStringLiteral("The list could not be read. Refresh reads it again."));
    const auto results = m_kind.Open(patient);
    const int count = results->RecordCount();
    if (m_kind.IsBound)
        m_grid->Bind(results->Rows());
    else if (count > 0)
        m_grid->FillFrom(results->Rows(), m_kind.Fields);
    results->Close();
    LeaveRoom();
    if (count == 0)
        m_grid->clearSelection();
    else
        ShowResultDetail(1);
    if (m_view)
        m_view->setEnabled(count > 0);
    m_state->setText(
        count == 0 ? QStringLiteral("No results for this admission or visit.")
        : m_kind.HasView
            ? QStringLiteral("Examinations: %1. Enter opens the chosen result.").arg(count)
            : QStringLiteral("Examinations: %1. Enter or a click shows the chosen one.")
                  .arg(count));
}

// A short list is not taller than the text that it belongs to.
void ResultPage::LeaveRoom() {
    if (!m_boxes.empty())
        m_grid->SetRowsInSight(qMax(kFewestRowsInSight, m_grid->Rows() - 1));
}

bool ResultPage::HasResults() const {
    return m_grid->Rows() > kRowsOfEmptyList || !m_grid->TextMatrix(1, 1).isEmpty();
}

void ResultPage::ShowResultDetail(int row) {
    ClearDetails();
    if (!HasResults())
        return;
    for (size_t i = 0; i < m_details.size(); ++i) {
        m_details[i]->setText(toolkit::OneLine(DetailText(m_kind.Details[i], row)));
        m_details[i]->setToolTip(toolkit::TipOf(m_details[i]->text()));
    }
    for (size_t i = 0; i < m_boxes.size(); ++i)
        m_boxes[i]->setPlainText(Readable(BoxText(m_kind.Boxes[i], row)));
    m_shownResult = m_grid->TextMatrix(row, 1);
    if (m_print)
        m_print->setEnabled(!m_shownResult.isEmpty() &&
                            !m_grid->TextMatrix(row, m_kind.ReleaseColumn).isEmpty());
}

QString ResultPage::DetailText(const ResultDetail& detail, int row) const {
    if (detail.Columns.isEmpty())
        return {};
    const QString first = m_grid->TextMatrix(row, detail.Columns[0]);
    if (first.isEmpty() && detail.Columns[0] == m_kind.ReleaseColumn)
        return kNotReleased;
    if (detail.Columns.size() == 1)
        return first;
    return first + QStringLiteral(" , ") + m_grid->TextMatrix(row, detail.Columns[1]) + u' ' +
           m_grid->TextMatrix(row, detail.Columns[2]);
}

QString ResultPage::BoxText(const ResultBox& box, int row) const {
    if (box.Column > 0)
        return m_grid->TextMatrix(row, box.Column);
    if (box.Fields.size() == 1)
        return m_grid->FieldText(row, box.Fields[0]);
    QStringList parts;
    for (const QString& field : box.Fields) {
        const QString text = m_grid->FieldText(row, field);
        if (!text.isEmpty())
            parts << field.toUpper() + u'\n' + text;
    }
    return parts.join(QStringLiteral("\n\n"));
}

void ResultPage::grid_RowOpened(int row) {
    if (m_view && m_view->isEnabled())
        emit ViewPressed();
    else
        ShowResultDetail(row);
}
