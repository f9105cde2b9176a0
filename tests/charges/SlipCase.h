#pragma once

#include <QDialog>
#include <QRegularExpression>

#include "ChargeTest.h"
#include "print/ReportPages.h"

using namespace Qt::StringLiterals;

/// A patient of the demo hospital with an open visit and, so far, neither slip nor sponsor.
class SlipCase final {
public:
    explicit SlipCase(std::shared_ptr<db::Connection> connection)
        : m_connection(std::move(connection)) {
        const auto visit = m_connection->Execute(
            u"SELECT TOP (1) v.IdNum, v.HospNum FROM PATIENT_DATA..tbOutPatient v WHERE "
            "v.BillingDate IS NULL AND v.DiscType = 'SM' AND NOT EXISTS (SELECT 1 FROM "
            "BILLING..tbFundAccount f WHERE f.HospNum = v.HospNum) AND NOT EXISTS (SELECT 1 FROM "
            "CLINICAL_AREA..tbCAPDRequest r WHERE r.IdNum = v.IdNum) ORDER BY v.IdNum"_s);
        IdNum = visit->Fields(0).Text();
        HospNum = visit->Fields(1).Text();
        Do(u"DELETE BILLING..tbVisitAccount WHERE IdNum = '%1'"_s.arg(IdNum));
    }

    /// Charges the visit to companies whose accounts hold so much, in this order.
    void Sponsor(const QList<double>& balances) const {
        for (int k = 1; k <= balances.size(); ++k) {
            const QString account = u"T-%1"_s.arg(k);
            Do(u"INSERT INTO BILLING..tbFundAccount (AccountNum, HospNum, CompanyID, "
               "SeqNum, AllocatedFund, FundBalance) VALUES ('%1', '%2', 'VEL', %3, "
               "%4, %4)"_s.arg(account, HospNum)
                   .arg(k)
                   .arg(balances[k - 1]));
            for (const char* code : {"CY", "MD"})
                Do(u"INSERT INTO BILLING..tbFundCostCenter (AccountNum, RevenueID) "
                   "VALUES ('%1', '%2')"_s.arg(account, QLatin1String(code)));
        }
        Do(u"INSERT INTO BILLING..tbVisitAccount (IdNum, HospNum, CompanyID, "
           "FundAccountNum) VALUES ('%1', '%2', 'VEL', 'T-1')"_s.arg(IdNum, HospNum));
    }

    void Do(const QString& statement) const { m_connection->Execute(statement); }
    QString Ask(const QString& statement) const {
        return m_connection->Execute(statement)->Fields(0).Text();
    }
    QString FundBalances() const {
        QStringList balances;
        const auto rows = m_connection->Execute(
            u"SELECT FundBalance FROM BILLING..tbFundAccount WHERE HospNum = '%1' "
            "ORDER BY SeqNum"_s.arg(HospNum));
        for (; !rows->Eof(); rows->MoveNext())
            balances << rows->Fields(0).Text();
        return balances.join(u'|');
    }

    /// Everything that a slip writes, of all patients: equal before and after means untouched.
    QString State() const {
        const auto row = m_connection->Execute(
            u"SELECT (SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip), "
            "(SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDRequest), "
            "(SELECT SUM(Amount) FROM BILLING..tbBill), "
            "(SELECT COUNT(*) FROM BILLING..tbDoctorCharge), "
            "(SELECT SUM(Amount) FROM BILLING..tbDoctorCharge), "
            "(SELECT COUNT(*) FROM BILLING..tbStockCard), "
            "(SELECT SUM(OnHand) FROM BILLING..tbDrugStock), "
            "(SELECT COUNT(*) FROM BILLING..tbCompanyPayment), "
            "(SELECT COUNT(CancelledAt) FROM BILLING..tbCompanyPayment), "
            "(SELECT SUM(FundBalance) FROM BILLING..tbFundAccount), "
            "(SELECT SUM(PaidAmount) FROM BILLING..tbVisitAccount), "
            "(SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDChargeSlip)"_s);
        QStringList cells;
        for (int column = 0; column < row->FieldNames().size(); ++column)
            cells << row->Fields(column).Text();
        return cells.join(u'|');
    }

    QString IdNum;
    QString HospNum;

private:
    std::shared_ptr<db::Connection> m_connection;
};

/// Closes every window that is shown over the sheet and keeps what it showed.
class ClosedWindows final {
public:
    ClosedWindows() {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!window)
                return;
            Titles << window->windowTitle();
            if (modGlobals::gReport) {
                const auto pages = modGlobals::gReport->Pages();
                Slip.clear();
                for (int page = 0; page < pages->Count(); ++page)
                    Slip += pages->Text(page) + u'\n';
            }
            window->reject();
        });
        m_timer.start(0);
    }

    QStringList Titles;
    QString Slip;  ///< what the slip last shown says

private:
    QTimer m_timer;
};
