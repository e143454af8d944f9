// Writing of the log.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/log.h"

#include "service/system/process.h"

#include <utility>

namespace tideloft::service
{

namespace
{

const char *nameOf(LogLevel level)
{
    if (level == LogLevel::Info)
        return "info";
    return level == LogLevel::Warning ? "warning" : "problem";
}

} // namespace

QByteArray logEntry(const QDateTime &time, LogLevel level, std::uint64_t request, const QByteArray &text)
{
    const QByteArray id = request == 0 ? QByteArray("-") : QByteArray::number(quint64(request));
    return time.toUTC().toString(Qt::ISODateWithMs).toLatin1() + ' ' + nameOf(level) + ' ' + id + ' '
           + text.left(1000) + '\n';
}

void LogOutput::write(LogLevel level, std::uint64_t request, const QByteArray &text)
{
    if (quiet && level == LogLevel::Info)
        return;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const QByteArray gap = QByteArray::number(quint64(lost)) + " lines were not taken";
    if (lost > 0 && put(logEntry(now, LogLevel::Warning, 0, gap)))
        lost = 0;
    if (lost > 0 || !put(logEntry(now, level, request, text)))
        ++lost;
}

bool LogOutput::put(const QByteArray &entry) const
{
    return writeWithoutWaiting(descriptor, entry.constData(), static_cast<std::size_t>(entry.size()));
}

} // namespace tideloft::service
