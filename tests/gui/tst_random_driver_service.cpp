// Making up answers.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_random_driver_service.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

const QList<QByteArray> &endpoints()
{
    static const QList<QByteArray> all{"POST /api/auth/login",
                                       "POST /api/auth/register",
                                       "GET /api/me",
                                       "GET /api/users/search",
                                       "GET /api/chat/conversations",
                                       "GET /api/chat/history/bob",
                                       "GET /api/chat/history/carol",
                                       "POST /api/chat/device-key",
                                       "GET /api/chat/device-keys/me",
                                       "GET /api/chat/public-key/bob",
                                       "GET /api/chat/public-key/carol",
                                       "POST /api/chat/send",
                                       "GET /api/groups",
                                       "POST /api/groups",
                                       "POST /api/profile/update",
                                       "POST /api/profile/avatar/upload",
                                       "POST /api/groups/g1/icon"};
    return all;
}

const QList<QByteArray> brokenReplies{{},
                                      "HTTP/1.1 200 OK\r\n\r\n",
                                      "HTTP/1.1 200 OK\r\nContent-Length: 90\r\n\r\n[",
                                      "no reply at all\r\n\r\n"};

QByteArray bytesOf(const QJsonValue &value)
{
    if (value.isArray())
        return QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact);
    return QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
}

} // namespace

const QStringList &RandomService::peers()
{
    static const QStringList names{u"bob"_s, u"carol"_s};
    return names;
}

RandomService::RandomService(LoopbackService &loopback, RandomChoice &random)
    : service(loopback),
      choose(random)
{
    for (const HostileText &hostile : hostileTexts(u"/dev/zero"_s))
        texts.append(hostile.text);
    answerWell();
}

void RandomService::answerWell()
{
    releaseAll();
    for (const QByteArray &key : endpoints())
        service.answer(key, 200, "{}");
    for (const char *key : {"GET /api/users/search", "GET /api/groups", "GET /api/chat/device-keys/me",
                            "GET /api/chat/history/bob", "GET /api/chat/history/carol"})
        service.answer(key, 200, "[]");
    service.answer("GET /api/me", 200, R"({"username":"alice"})");
    service.answer("GET /api/chat/conversations", 200, R"([{"peer":"bob"},{"peer":"carol"}])");
}

void RandomService::answerAtRandom()
{
    const QByteArray key = choose.from(endpoints());
    if (choose.oneIn(20)) {
        service.raw(key, choose.from(brokenReplies));
        return;
    }
    const QList<int> failures{302, 304, 400, 401, 403, 404, 409, 413, 429, 500, 503};
    const bool fails = choose.oneIn(4);
    const QByteArray body = fails ? bytesOf(QJsonObject{{u"message"_s, anyText()}}) : bodyFor(key);
    // With few tags, so that some mean another content than before.
    const QByteArray tag = "\"v" + QByteArray::number(choose.below(3)) + '"';
    const HeaderList headers = choose.oneIn(2) ? HeaderList{{"ETag", tag}} : HeaderList();
    service.answer(key, fails ? choose.from(failures) : 200, choose.oneIn(10) ? anyBytes() : body, headers);
}

void RandomService::holdAtRandom()
{
    const QByteArray key = choose.from(endpoints());
    held.insert(key);
    service.hold(key);
}

void RandomService::releaseAll()
{
    const auto letGo = std::exchange(held, {});
    for (const QByteArray &key : letGo)
        service.release(key);
}

// What is endless takes seconds to draw: rarely, so that the rest gets its turn.
QString RandomService::longOrShort(const QString &text)
{
    return text.size() > 2'000 && !choose.oneIn(50) ? text.left(100) : text;
}

QString RandomService::anyText()
{
    return choose.oneIn(2) ? u"text %1"_s.arg(choose.below(100)) : longOrShort(choose.from(texts));
}

QJsonArray RandomService::records(const QStringList &members)
{
    QJsonArray all;
    for (int count = choose.below(6); count > 0; --count) {
        QJsonObject record;
        for (const QString &member : members)
            record.insert(member, choose.oneIn(12) ? anyValue(2) : QJsonValue(anyText()));
        if (!members.isEmpty() && choose.oneIn(2))
            record.insert(members.first(), choose.from(peers()));
        all.append(choose.oneIn(20) ? anyValue(2) : QJsonValue(record));
    }
    return all;
}

QJsonArray RandomService::messages()
{
    QJsonArray all = records({u"from"_s, u"text"_s, u"createdAt"_s, u"iv"_s});
    for (int count = choose.below(8); count > 0; --count) {
        QJsonObject item{
            {u"from"_s, choose.oneIn(2) ? u"alice"_s : choose.from(peers())},
            {u"text"_s, anyText()},
            {u"createdAt"_s,
             QDateTime({2026, 1, 1 + choose.below(28)}, {12, choose.below(60)}).toString(Qt::ISODate)}};
        if (!sealed.isEmpty() && choose.oneIn(2))
            item = choose.from(sealed);
        all.append(item);
    }
    if (choose.oneIn(4)) {
        const QJsonArray longer = longHistory();
        for (const QJsonValue &item : longer)
            all.prepend(item);
    }
    return all;
}

QJsonArray RandomService::longHistory()
{
    QJsonArray all;
    for (int count = sealed.isEmpty() ? 0 : 200 + choose.below(600); count > 0; --count)
        all.append(choose.from(sealed));
    return all;
}

// More than fit on a screen and around it; the last message of each is sealed.
QJsonArray RandomService::conversations()
{
    QJsonArray all = records({u"peer"_s, u"text"_s, u"createdAt"_s});
    const int others = !sealed.isEmpty() && choose.oneIn(3) ? 50 + choose.below(500) : 0;
    for (int number = 0; number < others; ++number) {
        QJsonObject item = choose.from(sealed);
        item.insert(u"peer"_s, choose.oneIn(50) ? anyText() : u"peer %1"_s.arg(number));
        all.append(item);
    }
    return all;
}

void RandomService::answerAtLength(const QByteArray &key)
{
    service.answer(key, 200, bytesOf(longHistory()));
}

QByteArray RandomService::bodyFor(const QByteArray &key)
{
    if (key == "GET /api/me")
        return bytesOf(QJsonObject{{u"username"_s, choose.oneIn(4) ? anyText() : u"alice"_s}});
    if (key.contains("history"))
        return bytesOf(messages());
    if (key.contains("conversations"))
        return bytesOf(conversations());
    if (key.contains("search"))
        return bytesOf(records({u"username"_s}));
    if (key == "GET /api/groups")
        return bytesOf(records({u"name"_s, u"groupId"_s, u"iconUrl"_s})
                       + QJsonObject{{u"groupId"_s, u"g1"_s}});
    if (key.contains("device-keys"))
        return bytesOf(records({u"deviceId"_s, u"publicKeyBase64"_s}));
    if (key.contains("public-key"))
        return bytesOf(QJsonObject{{u"keys"_s, records({u"deviceId"_s, u"publicKeyBase64"_s})},
                                   {u"publicKey"_s, anyText()}});
    return bytesOf(QJsonObject{{u"groupId"_s, anyText()}, {u"message"_s, anyText()}});
}

QJsonValue RandomService::anyValue(int depth)
{
    switch (choose.below(depth > 0 ? 7 : 5)) {
    case 0:
        return QJsonValue::Null;
    case 1:
        return choose.oneIn(2);
    case 2:
        return choose.below(1'000'000) - 500'000.5;
    case 3:
    case 4:
        return anyText();
    case 5:
        return QJsonArray{anyValue(depth - 1), anyValue(depth - 1)};
    default:
        return QJsonObject{{anyText(), anyValue(depth - 1)}, {u"username"_s, anyValue(depth - 1)}};
    }
}

QByteArray RandomService::anyBytes()
{
    if (choose.oneIn(2))
        return bytesOf(QJsonArray{anyValue(4), anyValue(4)});
    QByteArray bytes;
    for (int count = choose.below(200); count > 0; --count)
        bytes.append(char(choose.below(256)));
    return bytes;
}

} // namespace tideloft::tests
