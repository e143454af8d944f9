// Something that runs statements: what an engine needs of a connection.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/rows.h"

#include <QVariantList>

namespace tideloft::service
{

class StatementRunner
{
public:
    StatementRunner() = default;
    Q_DISABLE_COPY_MOVE(StatementRunner)
    virtual ~StatementRunner() = default;

    /// Runs one statement with its values bound in order. Throws StorageError.
    virtual Rows run(const QString &statement, const QVariantList &values = {}) = 0;

    /// The number in the first row that the statement finds; 0 when it finds none.
    qint64 number(const QString &statement, const QVariantList &values = {})
    {
        Rows rows = run(statement, values);
        return rows.next() ? rows.value(0).toLongLong() : 0;
    }
};

} // namespace tideloft::service
