// Reading of lines, and what a terminal shows meanwhile.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/password_input.h"

#include "service/control/problem.h"
#include "service/store/account_rules.h"
#include "service/system/process.h"

#include <QStringDecoder>

#include <cstdio>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr char interrupt = '\x03';

QString readLine()
{
    constexpr qsizetype longest = 4096;
    QByteArray line;
    for (int c = std::getchar(); c != EOF && c != '\n'; c = std::getchar()) {
        if (c == interrupt)
            throw Problem(u"Interrupted"_s);
        if (line.size() == longest)
            throw Problem(u"The password is too long"_s);
        line.append(static_cast<char>(c));
    }
    if (line.endsWith('\r'))
        line.chop(1);
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(line);
    if (decoder.hasError())
        throw Problem(u"The password is not UTF-8"_s);
    return text;
}

QString askFor(const char *what)
{
    std::fputs(what, stderr);
    const QString line = readLine();
    std::fputs("\n", stderr);
    return line;
}

QString typedTwice()
{
    const SilentTerminal silent;
    const QString password = askFor("New password: ");
    if (askFor("The same again: ") != password)
        throw Problem(u"These were two different passwords"_s);
    return password;
}

} // namespace

// Byte for byte, so that what follows is left to who reads next.
QString readNewPassword()
{
    std::setvbuf(stdin, nullptr, _IONBF, 0);
    QString password = isInputTyped() ? typedTwice() : readLine();
    if (!isPasswordLength(password))
        throw Problem(u"A password has %1 to %2 characters"_s.arg(shortestPassword).arg(longestPassword));
    return password;
}

} // namespace tideloft::service
