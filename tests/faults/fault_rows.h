// The failures that every unit which keeps files has to stand: each as a row of a table.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/faults/faults.h"

#include <QTest>

#include <cerrno>

namespace tideloft::tests
{

/// Rows "call", "error" and "onwards": whether one call fails, or all from the first on. BRIEFLY leaves out
/// all but one errno, for what takes long.
inline void addFaults(bool briefly = false)
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("onwards");
    const QList<std::pair<const char *, Call>> calls{
        {"open", Call::Open},          {"read", Call::Read},   {"write", Call::Write},
        {"close", Call::Close},        {"mkdir", Call::Mkdir}, {"flock", Call::Flock},
        {"stat", Call::Stat},          {"fstat", Call::Fstat}, {"fchmod", Call::Fchmod},
        {"ftruncate", Call::Ftruncate}};
    const QList<std::pair<const char *, int>> errors{
        {"EACCES", EACCES}, {"ENOSPC", ENOSPC}, {"EIO", EIO}, {"EMFILE", EMFILE}, {"EROFS", EROFS}};
    for (const auto &[call, kind] : calls) {
        for (const auto &[name, error] : errors) {
            if (briefly && error != ENOSPC)
                continue;
            QTest::addRow("%s: %s once", call, name) << kind << error << false;
            QTest::addRow("%s: %s from then on", call, name) << kind << error << true;
        }
    }
    QTest::newRow("write: short once") << Call::Write << shortCount << false;
    QTest::newRow("write: short from then on") << Call::Write << shortCount << true;
    QTest::newRow("read: short once") << Call::Read << shortCount << false;
    QTest::newRow("read: short from then on") << Call::Read << shortCount << true;
}

} // namespace tideloft::tests

Q_DECLARE_METATYPE(tideloft::tests::Call)
