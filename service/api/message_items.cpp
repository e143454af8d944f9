// Writing of messages. A tree of JSON values took longer to build than everything else of a reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/message_items.h"

#include <algorithm>
#include <chrono>
#include <iterator>

namespace tideloft::service
{

namespace
{

bool needsEscape(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

void appendEscaped(QByteArray &out, char c)
{
    constexpr char digits[] = "0123456789abcdef";
    if (c == '"' || c == '\\') {
        out += '\\';
        out += c;
    } else {
        out += "\\u00";
        out += digits[static_cast<unsigned char>(c) >> 4U];
        out += digits[static_cast<unsigned char>(c) & 0xfU];
    }
}

void appendQuoted(QByteArray &out, const QByteArray &text)
{
    out += '"';
    const char *rest = text.constBegin();
    while (rest != text.constEnd()) {
        const char *special = std::find_if(rest, text.constEnd(), &needsEscape);
        out.append(rest, special - rest);
        if (special == text.constEnd())
            break;
        appendEscaped(out, *special);
        rest = special + 1;
    }
    out += '"';
}

// With zeros in front, and all of a number that is longer.
void appendNumber(QByteArray &out, qint64 number, int digits)
{
    char text[20];
    char *begin = std::end(text);
    for (int i = 0; i < digits || number > 0; ++i) {
        *--begin = static_cast<char>('0' + number % 10);
        number /= 10;
    }
    out.append(begin, std::end(text) - begin);
}

} // namespace

QByteArray quoted(const QByteArray &text)
{
    QByteArray out;
    appendQuoted(out, text);
    return out;
}

QByteArray isoTime(qint64 millisecondsSince1970)
{
    using namespace std::chrono;
    const sys_time<milliseconds> time{milliseconds(millisecondsSince1970)};
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    QByteArray out;
    out.reserve(24);
    appendNumber(out, int(date.year()), 4);
    appendNumber(out += '-', unsigned(date.month()), 2);
    appendNumber(out += '-', unsigned(date.day()), 2);
    appendNumber(out += 'T', clock.hours().count(), 2);
    appendNumber(out += ':', clock.minutes().count(), 2);
    appendNumber(out += ':', clock.seconds().count(), 2);
    appendNumber(out += '.', clock.subseconds().count(), 3);
    return out += 'Z';
}

QByteArray messageItem(const MessageRow &row, const QString &userName, const QString &peerName)
{
    const QByteArray noKeys = "[]";
    const QByteArray user = userName.toUtf8();
    const QByteArray peer = peerName.toUtf8();
    QByteArray item;
    item.reserve(row.text.size() + row.senderKeys.size() + row.recipientKeys.size() + 256);
    item += R"({"createdAt":")";
    item += isoTime(row.createdAt);
    item += row.encrypted ? R"(","encrypted":true)" : R"(","encrypted":false)";
    appendQuoted(item += ",\"from\":", row.isFromUser ? user : peer);
    appendQuoted(item += ",\"iv\":", row.iv);
    if (!row.peer.isEmpty())
        appendQuoted(item += ",\"peer\":", row.peer.toUtf8());
    item += ",\"recipientKeys\":";
    item += row.recipientKeys.isEmpty() ? noKeys : row.recipientKeys;
    item += ",\"senderKeys\":";
    item += row.senderKeys.isEmpty() ? noKeys : row.senderKeys;
    appendQuoted(item += ",\"text\":", row.text);
    appendQuoted(item += ",\"to\":", row.isFromUser ? peer : user);
    return item += '}';
}

} // namespace tideloft::service
