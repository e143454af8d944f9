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

/// Writes to a descriptor without waiting for a reader: a line that does not fit is dropped, so a log that
/// nobody reads does not stop the service. Several threads may use it.
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

/// While this lives, messages of the toolkit and its database drivers become lines of OUTPUT. The toolkit's
/// own handler would wait for the reader of the log.
class ToolkitMessages
{
public:
    explicit ToolkitMessages(const std::shared_ptr<LogOutput> &output);
    Q_DISABLE_COPY_MOVE(ToolkitMessages)
    ~ToolkitMessages();
};

} // namespace tideloft::service
