// Names and values for the mutation of JSON.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/fuzz/json_pieces.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QJsonValue deepArray(int levels)
{
    QJsonValue value = 1;
    for (int level = 0; level < levels; ++level)
        value = QJsonArray{value};
    return value;
}

// "$key", "$iv", "$sealed:" and "$public" stand for what a target makes of them.
QStringList texts()
{
    QStringList list{u""_s, u" "_s, u"alice"_s, u"ALICE "_s, u"bob"_s, u"dev-1"_s, u"DEV-1"_s, u"legacy"_s};
    list +=
        {u"$key"_s, u"$iv"_s, u"$sealed:"_s, u"$sealed:text"_s, u"$public"_s, u"$pem"_s, u"AAAA"_s, u"="_s};
    list += {u"2026-03-29T02:30:00"_s, u"2026-03-29T01:30:00.5Z"_s, u"2026-03-28T23:59:59+01:00"_s};
    list += {u"9999-12-31T23:59:59Z"_s, u"-4712-01-01T00:00:00Z"_s, u"2026-02-30T25:61:61Z"_s, u"now"_s};
    list += {u"%1 %2 %99"_s, u"<img src=\"/dev/zero\">"_s, u"&amp;\u202e\u200b\u0301"_s, u"\U0001f512"_s};
    list += {QString(QChar(0)), QString(QChar(0xd800)), QString(QChar(0xdc00)), u"a\r\nb: c"_s, u"\ufeff"_s};
    list += {QString(5000, u'w'), QString(300, u'\n'), u"ß"_s, u"İ"_s};
    return list;
}

} // namespace

const QStringList &memberNames()
{
    static const QStringList names{
        u"text"_s,          u"iv"_s,         u"from"_s,         u"to"_s,       u"peer"_s,
        u"encrypted"_s,     u"createdAt"_s,  u"deviceId"_s,     u"message"_s,  u"error"_s,
        u"recipientKeys"_s, u"senderKeys"_s, u"encryptedKey"_s, u"username"_s, u"publicKeyBase64"_s,
        u"publicKey"_s,     u"groupId"_s,    u"name"_s,         u"before"_s,   u"after"_s,
        u"swedish"_s,       u"recipient"_s,  u"sender"_s,       u"keys"_s,     u""_s};
    return names;
}

const QList<QJsonValue> &hostileValues()
{
    static const QList<QJsonValue> values = [] {
        QList<QJsonValue> list{QJsonValue::Null, true, false, 0, 1, -1, 0.5, 1e308, -0.0};
        list += {std::numeric_limits<qint64>::max(), QJsonArray{}, QJsonObject{}, deepArray(50)};
        for (const QString &text : texts())
            list += text;
        return list;
    }();
    return values;
}

} // namespace tideloft::tests
