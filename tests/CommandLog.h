#pragma once

#include <QStringList>

#include "db/Connection.h"

/// Every command sent while this lives, in order.
class CommandLog final {
public:
    CommandLog() {
        db::Connection::SetCommandHook([this](const QString& text) { Sent << text; });
    }
    ~CommandLog() { db::Connection::SetCommandHook({}); }
    CommandLog(const CommandLog&) = delete;
    CommandLog& operator=(const CommandLog&) = delete;

    QStringList Sent;
};
