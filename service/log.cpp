// Writing of the log.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/log.h"

#include "service/system/process.h"

#include <utility>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

const char *nameOf(LogLevel level)
{
    if (level == LogLevel::Info)
        return "info";
    return level == LogLevel::Warning ? "warning" : "problem";
}

LogLevel levelOf(QtMsgType type)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return LogLevel::Info;
    return type == QtWarningMsg ? LogLevel::Warning : LogLevel::Problem;
}

std::shared_ptr<LogOutput> &toolkitOutput()
{
    static std::shared_ptr<LogOutput> output;
    return output;
}

// A driver wants to free each statement of a connection that is gone, and the statements are gone with it.
void writeToolkitMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (!text.startsWith(u"Unable to free statement"_s))
        toolkitOutput()->write(levelOf(type), 0, text.simplified().toUtf8());
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
    const std::lock_guard turn(mutex);
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

ToolkitMessages::ToolkitMessages(const std::shared_ptr<LogOutput> &output)
{
    toolkitOutput() = output;
    qInstallMessageHandler(&writeToolkitMessage);
}

ToolkitMessages::~ToolkitMessages()
{
    qInstallMessageHandler(nullptr);
    toolkitOutput().reset();
}

} // namespace tideloft::service
