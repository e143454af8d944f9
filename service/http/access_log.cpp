// Lines of the log.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/access_log.h"

namespace tideloft::service
{

namespace
{

QByteArray escaped(const QByteArray &text)
{
    QByteArray safe;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code >= 0x20 && code < 0x7f && c != '\\')
            safe += c;
        else
            safe += "\\x" + QByteArray(1, c).toHex();
    }
    return safe;
}

} // namespace

LogLevel logLevel(const Response &response)
{
    return response.problem.isEmpty() ? LogLevel::Info : LogLevel::Problem;
}

QByteArray logLine(const QByteArray &method, const Response &response)
{
    QByteArray line = method.isEmpty() ? QByteArray("-") : method;
    line += ' ' + (response.route.isEmpty() ? QByteArray("-") : response.route);
    line += ' ' + QByteArray::number(response.status);
    if (!response.problem.isEmpty())
        line += ": " + response.problem;
    return escaped(line);
}

} // namespace tideloft::service
