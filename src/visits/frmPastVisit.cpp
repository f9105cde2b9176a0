#include "visits/frmPastVisit.h"

#include "ui_frmPastVisit.h"

frmPastVisit::frmPastVisit(const db::RowStore& visits, int row, const QString& patient,
                           QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmPastVisit>()) {
    ui->setupUi(this);
    ui->lblPatient->setText(patient);
    QString page = QStringLiteral("<table cellpadding='3'>");
    for (int column = 0; column < visits.ColumnCount(); ++column) {
        const QString text = visits.TextAt(row, column);
        if (!text.isEmpty())
            page += QStringLiteral("<tr><td><b>%1</b></td><td>%2</td></tr>")
                        .arg(visits.Columns()[size_t(column)].Name.toHtmlEscaped(),
                             text.toHtmlEscaped().replace(u'\n', QStringLiteral("<br/>")));
    }
    ui->txtVisit->setHtml(page + QStringLiteral("</table>"));
    connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    ui->txtVisit->setFocus();
}

frmPastVisit::~frmPastVisit() = default;
