// Writing the database as the service would have, but without its waits.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/seed.h"

#include "service/store/messages.h"
#include "service/store/schema.h"
#include "service/store/sessions.h"

#include <QCryptographicHash>
#include <QDateTime>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

constexpr qint64 any = std::numeric_limits<qint64>::max();
constexpr int hour = 3'600'000;

// As long as a wrapped key of RSA with 2048 bits in Base64.
QByteArray keysText(const char *device)
{
    return QByteArray(R"([{"deviceId":")") + device + R"(","encryptedKey":")"
           + QByteArray(256, 'k').toBase64() + R"("}])";
}

// That of a line of text.
QByteArray ciphertext()
{
    return QByteArray(96, 'c').toBase64();
}

QByteArray tokenOf(int user)
{
    return QByteArray::number(user).rightJustified(43, 'A');
}

void addPair(service::Database &database, const service::User &first, const service::User &second,
             int messages, std::uint64_t &number)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    for (int i = 0; i < messages; ++i) {
        const bool fromFirst = i % 2 == 0;
        service::storeMessage(database, fromFirst ? first : second, fromFirst ? second : first,
                              {QString::fromLatin1(ciphertext()), QString::fromStdString(nonceText(number++)),
                               QString::fromLatin1(keysText("mine")), QString::fromLatin1(keysText("theirs")),
                               true, now - messages + i},
                              {any, any, any});
    }
}

service::User addMember(service::Database &database, int index, SeededUser &user)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const QString name = QString::fromStdString(user.name);
    service::addUser(database, name, "no password fits", now);
    const service::User added = service::findUser(database, name).value();
    service::addSession(database, QCryptographicHash::hash(tokenOf(index), QCryptographicHash::Sha256), added,
                        now, now + 24 * hour);
    user.cookie = "tideloft_session=" + tokenOf(index).toStdString();
    return added;
}

} // namespace

std::vector<SeededUser> seed(const QString &place, int users, int messagesOfTwo)
{
    service::Store database(place);
    database.run(database.engine().isShared() ? u"SET synchronous_commit = off"_s
                                              : u"PRAGMA synchronous = OFF"_s);
    std::vector<SeededUser> seeded;
    std::uint64_t number = std::uint64_t{1} << 60U; // apart from those that are sent later
    for (int i = 0; i + 1 < users; i += 2) {
        service::Transaction transaction(database);
        const std::string first = "user" + std::to_string(10'000 + i); // all replies are equally long
        const std::string second = "user" + std::to_string(10'000 + i + 1);
        seeded.push_back({first, second, {}});
        seeded.push_back({second, first, {}});
        const service::User one = addMember(database, i, seeded[seeded.size() - 2]);
        const service::User other = addMember(database, i + 1, seeded.back());
        addPair(database, one, other, messagesOfTwo, number);
        transaction.commit();
    }
    return seeded;
}

std::string getRequest(const SeededUser &user, const std::string &path, const std::string &etag)
{
    return "GET " + path
           + " HTTP/1.1\r\nHost: localhost:8443\r\nX-Device-Token: 0b9ae1f0-62f1-4a3c-8b8e-6d0f3c5a7e21\r\n"
             "Content-Type: application/json\r\nX-Device-Name: TideLoft Desktop\r\nCookie: "
           + user.cookie + (etag.empty() ? std::string() : "\r\nIf-None-Match: " + etag)
           + "\r\nConnection: Keep-Alive\r\nAccept-Encoding: zstd, br, gzip, deflate\r\n"
             "Accept-Language: en-US,*\r\nUser-Agent: Mozilla/5.0\r\n\r\n";
}

std::string historyRequest(const SeededUser &user, const std::string &etag)
{
    return getRequest(user, "/api/chat/history/" + user.peer, etag);
}

std::string conversationsRequest(const SeededUser &user, const std::string &etag)
{
    return getRequest(user, "/api/chat/conversations", etag);
}

std::string nonceText(std::uint64_t number)
{
    QByteArray nonce(12, '\0');
    for (qsizetype i = 0; i < 8; ++i)
        nonce[i] = static_cast<char>(number >> static_cast<unsigned>(8 * i));
    return nonce.toBase64().toStdString();
}

std::string sendRequest(const SeededUser &user, std::uint64_t number)
{
    const std::string body = R"({"to":")" + user.peer + R"(","text":")" + ciphertext().toStdString()
                             + R"(","iv":")" + nonceText(number)
                             + R"(","encryptedKey":"","senderEncryptedKey":"","recipientKeys":)"
                             + keysText("theirs").toStdString() + R"(,"senderKeys":)"
                             + keysText("mine").toStdString() + R"(,"algorithm":"AES-GCM","encrypted":1})";
    return postRequest("/api/chat/send", user.cookie, body);
}

std::string postRequest(const std::string &path, const std::string &cookie, const std::string &body)
{
    return "POST " + path + " HTTP/1.1\r\nHost: localhost:8443\r\nCookie: " + cookie
           + "\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(body.size())
           + "\r\n\r\n" + body;
}

} // namespace tideloft::bench
