#pragma once

#include <QtTest>

#include "db/Connection.h"
#include "db/FakeDriver.h"
#include "print/Report.h"
#include "print/ReportPages.h"

using namespace Qt::StringLiterals;

/// Report files and rows that a test makes up.
class ReportFiles {
public:
    ReportFiles() : m_connection(std::make_unique<FakeDriver>(Server)) {
        Server.Answer = [this](const QString&, embedded::RowSink& sink) {
            sink.BeginResult(Columns);
            for (int row = 0; row < RowCount; ++row) {
                Fill(row, sink);
                sink.EndRow();
            }
            return qint64(-1);
        };
    }

    QString Write(const QString& xml) {
        const QString name = m_folder.filePath(u"test.rpt"_s);
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(xml.toUtf8()) < 0)
            qFatal("the report file cannot be written");
        return name;
    }

    std::shared_ptr<print::Report> Open(const QString& xml) {
        return print::Report::OpenReport(Write(xml));
    }

    std::shared_ptr<const print::ReportPages> PagesOf(const QString& xml) {
        const auto report = Open(xml);
        report->ReadRecords(m_connection);
        return report->Pages();
    }

    db::Connection& Connection() { return m_connection; }
    QString Folder() const { return m_folder.path(); }

    FakeServer Server;
    std::vector<embedded::ResultColumn> Columns;
    int RowCount = 0;
    std::function<void(int row, embedded::RowSink& sink)> Fill;

private:
    QTemporaryDir m_folder;
    db::Connection m_connection;
};

/// The error that `work` throws, as its text; "no error" where there is none.
template <typename Work>
QString FaultOf(Work work) {
    try {
        work();
    } catch (const base::RuntimeError& error) {
        return error.Description();
    }
    return u"no error"_s;
}
