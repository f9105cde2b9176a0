#pragma once

#include <QtWidgets>
#include <iostream>

#include "SlipCase.h"
#include "charges/CashSlip.h"
#include "charges/ChargeList.h"
#include "charges/RequestSlip.h"
#include "charges/SlipReversal.h"
#include "funds/clsPDAF.h"
#include "print/ReportPages.h"
#include "toolkit/FlexGrid.h"

/// What the test program does when it is started as one of several on a hospital file: its
/// arguments are the work, the file, the visit, the patient and a number.
class SlipProgram final {
public:
    static QStringList Arguments(const QString& work, const QString& file, const SlipCase& patient,
                                 int number) {
        return {u"--slips"_s, work, file, patient.IdNum, patient.HospNum, QString::number(number)};
    }

    /// The exit status; 0 when all went well. What is no work on slips is done by `other`.
    static int Run(const QStringList& arguments,
                   const std::function<void(const QStringList&)>& other = {}) {
        try {
            const QString work = arguments[0];
            const Session session(arguments[1]);
            SlipProgram program({arguments[2], arguments[3]}, arguments[4].toInt());
            if (work == u"save")
                program.Save();
            else if (work == u"churn")
                program.SaveAndRevokeForEver();
            else if (work == u"assess")
                program.AssessForEver();
            else if (other)
                other(arguments);
            else
                return program.Print() ? 0 : 3;
            return 0;
        } catch (const base::RuntimeError& error) {
            std::cerr << error.Number() << ' ' << error.what() << std::endl;
            return 2;
        }
    }

private:
    SlipProgram(const QStringList& visit, int number) : m_number(number) {
        m_head.IdNum = visit[0];
        m_head.HospNum = visit[1];
        m_head.CAPDNum = u"C7"_s;
    }

    QString SaveOne() { return RequestSlip(m_head, m_fund).Save(Lines()); }

    static std::vector<SlipLine> Lines() {
        const SlipLine supply{u"CA"_s,     u"102"_s, {},      u"390.25"_s, u"2"_s,
                              u"780.50"_s, u"46"_s,  u"CA"_s, 624.4,       156.1};
        const SlipLine fee{u"CY"_s, u"501"_s, {}, {}, u"1"_s, u"450.00"_s, {}, {}, 450, 0};
        const SlipLine doctor{u"MD"_s, u"802"_s, {}, {}, u"1"_s, u"500.00"_s, {}, {}, 500, 0};
        return {supply, fee, doctor};
    }

    void Save() {
        for (int slip = 0; slip < m_number; ++slip)
            std::cout << SaveOne().toStdString() << std::endl;
    }

    void SaveAndRevokeForEver() {
        toolkit::FlexGrid grid;
        ChargeList list(grid);
        for (;;) {
            const QString slip = SaveOne();
            list.Load(m_head.IdNum);
            SlipReversal(m_head, slip, m_fund).Revoke(list.LinesOf(slip));
            std::cout << "revoked" << std::endl;
        }
    }

    void AssessForEver() {
        m_head.IdNum = u'T' + m_head.HospNum + u'C';
        m_head.Doctor = u"DR. X"_s;
        for (;;) {
            CashSlip(m_head, u"WALK, IN"_s).Save(Lines());
            std::cout << "saved" << std::endl;
        }
    }

    // Every slip says what its own station printed and nothing of the other's.
    bool Print() {
        const QString own = u"STATION%1"_s.arg(m_number);
        const QString other = u"STATION%1"_s.arg(3 - m_number);
        for (int slip = 0; slip < 20; ++slip) {
            PrintLine line;
            line.ItemCode = u"102"_s;
            line.Description = own;
            SlipPrint::Open(SlipPrint::Layout::Plain, {}, {line, line, line});
            const QString text = modGlobals::gReport->Pages()->Text(0);
            if (text.count(own) != 3 || text.contains(other))
                return false;
        }
        return true;
    }

    SlipHead m_head;
    clsPDAF m_fund;
    int m_number;
};
