// Lines of the log on the standard error output.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/access_log.h"

#include <QDateTime>

#include <cstdint>
#include <memory>
#include <mutex>

namespace tideloft::service
{

/// "TIME LEVEL REQUEST TEXT" and a line break; "-" stands for no request.
QByteArray logEntry(const QDateTime &time, LogLevel level, std::uint64_t request, const QByteArray &text);

/// Writes to a descriptor, and drops what nobody takes: a log that is not read must not stop the service. May
/// be used by several threads.
class LogOutput
{
public:
    LogOutput(int output, bool problemsOnly) : descriptor(output), quiet(problemsOnly) {}

    void write(LogLevel level, std::uint64_t request, const QByteArray &text);

private:
    bool put(const QByteArray &entry) const;

    const int descriptor;
    const bool quiet;
    std::mutex mutex;       ///< of what follows
    std::uint64_t lost = 0; ///< lines since the last that could be written
};

/// From here on what the toolkit and its drivers have to say goes to OUTPUT, one line each, until the program
/// ends. By themselves they would wait for whoever reads the log.
void takeToolkitMessages(const std::shared_ptr<LogOutput> &output);

} // namespace tideloft::service
