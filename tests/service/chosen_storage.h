// The storage that a test runs on: a file, or a server when TIDELOFT_TEST_STORAGE is "postgresql".
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/service/postgresql_cluster.h"

namespace tideloft::tests
{

/// A place of its own, as long as it lives the same.
class ChosenStorage
{
public:
    static bool isPostgresql() { return qgetenv("TIDELOFT_TEST_STORAGE") == "postgresql"; }

    QString place(const QString &file) const { return isPostgresql() ? address : file; }

private:
    const QString address = isPostgresql() ? PostgresqlCluster::ofThisProcess().newPlace() : QString();
};

} // namespace tideloft::tests
