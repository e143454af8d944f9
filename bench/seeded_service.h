// The real service with two accounts and a long conversation between them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTemporaryDir>

namespace tideloft::bench
{

/// A tideloftd with an own certificate on a free port of this machine. The program's clients talk to it and
/// trust it from the constructor on.
class SeededService
{
public:
    SeededService();
    Q_DISABLE_COPY_MOVE(SeededService)
    ~SeededService();

    /// Makes "alice", at home on this device, and "bob", from whom she gets COUNT sealed messages.
    void seed(int count);

    static const QString password;

private:
    QTemporaryDir directory;
    QProcess service;
};

} // namespace tideloft::bench
