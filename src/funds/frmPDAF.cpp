#include "funds/frmPDAF.h"

#include "base/Numbers.h"
#include "session/modGlobals.h"
#include "ui_frmPDAF.h"

frmPDAF::frmPDAF(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmPDAF>()) {
    m_ui->setupUi(this);
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &frmPDAF::reject);
}

frmPDAF::~frmPDAF() = default;

int frmPDAF::exec() {
    Load();
    return QDialog::exec();
}

void frmPDAF::Load() {
    m_fund.SetHospNum(m_hospNum);
    m_fund.SetIdNum(m_idNum);
    m_fund.SetDeptID(modGlobals::gRevenueID);
    m_fund.Show_FundBalance();
    m_ui->txtCDFBalance->setText(base::PlainText(m_fund.OutputFundBalance()));
    m_ui->txtNetHospBill->setText(base::PlainText(m_fund.OutputNetBill()));
    m_ui->txtTotalCDF->setText(base::PlainText(m_fund.OutputTotalFund()));
    m_ui->txtHospBill->setText(base::PlainText(m_fund.OutputHospBill()));
    m_ui->cmdClose->setFocus(Qt::TabFocusReason);
}
