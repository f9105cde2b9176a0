#pragma once

#include <QDialog>
#include <memory>

#include "db/RowStore.h"

namespace Ui {
class frmPastVisit;
}

/// One earlier visit, whole, to be read.
class frmPastVisit final : public QDialog {
    Q_OBJECT
public:
    /// `row` of the visit list; what was left empty at the visit is left out.
    frmPastVisit(const db::RowStore& visits, int row, const QString& patient, QWidget* parent);
    ~frmPastVisit() override;

private:
    std::unique_ptr<Ui::frmPastVisit> ui;
};
