// tideloftctl as a process of its own.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

namespace tideloft::tests
{

struct Ended {
    int code = -1; ///< -1 when the program did not end by itself
    QByteArray output;
    QByteArray errors;
};

inline QStringList controlArguments(const QString &database, const QString &line)
{
    return QStringList{QStringLiteral("--database"), database} + line.split(u' ', Qt::SkipEmptyParts);
}

inline Ended endOf(QProcess &process)
{
    const bool over = process.state() == QProcess::NotRunning || process.waitForFinished();
    const bool ended = over && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}

/// Runs a command; `line` is split at its blanks, and `input` is what comes from the standard input.
inline Ended control(const QString &database, const QString &line, const QByteArray &input = {})
{
    QProcess process;
    process.start(QStringLiteral(TIDELOFTCTL), controlArguments(database, line));
    process.write(input);
    process.closeWriteChannel();
    return endOf(process);
}

} // namespace tideloft::tests
