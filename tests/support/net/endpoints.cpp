// The table of requests. What is expected is written down once more here, by another hand than the client's.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/endpoints.h"

#include <QFile>
#include <QMetaMethod>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

using Outcome = std::function<QStringList(const ReplyContent &)>;
using Report = std::function<QString(const QJsonDocument &)>;

QString compact(const QJsonArray &array)
{
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

QString compact(const QJsonObject &object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QString asText(const QVariant &argument)
{
    if (argument.metaType() == QMetaType::fromType<QJsonArray>())
        return compact(argument.toJsonArray());
    if (argument.metaType() == QMetaType::fromType<QJsonObject>())
        return compact(argument.toJsonObject());
    return argument.toString();
}

QString textOf(const QSignalSpy &spy, const QVariantList &arguments)
{
    QString text = QString::fromLatin1(spy.signal().left(spy.signal().indexOf('(')));
    for (const QVariant &argument : arguments)
        text += u' ' + asText(argument);
    return text;
}

// The service's own words where it has any.
QString failureText(const ReplyContent &reply)
{
    if (!reply.document.isObject())
        return reply.error;
    const QJsonObject body = reply.document.object();
    if (body.contains(u"message"_s))
        return body.value(u"message"_s).toString();
    return body.contains(u"error"_s) ? body.value(u"error"_s).toString() : u"Unknown error"_s;
}

Outcome json(const QString &failed, const Report &report)
{
    return [=](const ReplyContent &reply) {
        return QStringList(reply.error.isEmpty() ? report(reply.document) : failed + failureText(reply));
    };
}

Outcome json(const QString &failed, const QString &report)
{
    return json(failed, [report](const QJsonDocument &) { return report; });
}

Outcome group(const Report &report)
{
    return [=](const ReplyContent &reply) {
        return QStringList(reply.error.isEmpty() ? report(reply.document)
                                                 : u"serversFailed "_s + reply.error);
    };
}

Outcome onlyWhetherGood(const QString &good, const QString &bad)
{
    return [=](const ReplyContent &reply) { return QStringList(reply.error.isEmpty() ? good : bad); };
}

QStringList profileOutcome(const ReplyContent &reply)
{
    return {reply.error.isEmpty() ? u"profile saved"_s : u"profile failed "_s + reply.error};
}

// Another document than an object is neither a profile nor a failure.
QStringList meOutcome(const ReplyContent &reply)
{
    if (!reply.error.isEmpty())
        return {u"meFailed "_s + failureText(reply)};
    return reply.document.isObject() ? QStringList(u"meLoaded "_s + compact(reply.document.object()))
                                     : QStringList();
}

QStringList iconOutcome(const ReplyContent &reply)
{
    if (!reply.error.isEmpty())
        return {};
    return {u"serverIconUploaded g1 "_s + reply.document.object().value(u"iconUrl"_s).toString()};
}

Report arrayAfter(const QString &signal)
{
    return [signal](const QJsonDocument &document) { return signal + compact(document.array()); };
}

Report objectAfter(const QString &signal)
{
    return [signal](const QJsonDocument &document) { return signal + compact(document.object()); };
}

QString keysIn(const QJsonValue &listed)
{
    QJsonArray keys;
    const QJsonArray elements = listed.toArray();
    for (const auto element : elements) {
        QJsonObject key = element.toObject();
        if (!element.isObject())
            continue;
        if (key.contains(u"publicKey"_s) && !key.contains(u"publicKeyBase64"_s))
            key.insert(u"publicKeyBase64"_s, key.take(u"publicKey"_s));
        keys.append(key);
    }
    return compact(keys);
}

QString ownKeys(const QJsonDocument &document)
{
    return u"myDeviceKeysLoaded "_s
           + keysIn(document.isObject() ? document[u"keys"_s] : QJsonValue(document.array()));
}

QString userKeys(const QJsonDocument &document)
{
    return u"userPublicKeysLoaded bob "_s + keysIn(document[u"keys"_s]) + u' '
           + document[u"publicKey"_s].toString();
}

void sendSealed(ReportLog &log)
{
    log.client.sendMessage(u"bob"_s, {u"c2VhbGVk"_s, u"aXY="_s, u"a2V5"_s, u"a2V5"_s, {}, {}});
}

QList<Endpoint> accountEndpoints()
{
    return {
        {"sign in", "POST /api/auth/login",
         [](ReportLog &log) { log.client.login(u"Alice"_s, u"secret"_s, true); },
         json(u"loginFailed "_s, u"loginSucceeded alice"_s)},
        {"create account", "POST /api/auth/register",
         [](ReportLog &log) { log.client.registerAccount(u"Alice"_s, u"secret"_s); },
         json(u"registerFailed "_s, u"registerSucceeded Alice"_s)},
        {"sign out", "POST /api/auth/logout", [](ReportLog &log) { log.client.logout(); },
         [](const ReplyContent &) { return QStringList(); }},
        {"own profile", "GET /api/me", [](ReportLog &log) { log.client.fetchMe(); }, meOutcome},
        {"search", "GET /api/users/search", [](ReportLog &log) { log.client.searchUsers(u"eve"_s); },
         json(u"searchFailed "_s, arrayAfter(u"searchLoaded "_s))},
        {"save profile", "POST /api/profile/update",
         [](ReportLog &log) { log.client.updateProfile({}, u"bio"_s, log.profileCallback()); },
         profileOutcome},
    };
}

QList<Endpoint> chatEndpoints()
{
    return {
        {"conversations", "GET /api/chat/conversations",
         [](ReportLog &log) { log.client.fetchConversations(); },
         json(u"conversationsFailed "_s, arrayAfter(u"conversationsLoaded "_s))},
        {"history", "GET /api/chat/history/bob", [](ReportLog &log) { log.client.fetchHistory(u"bob"_s); },
         json(u"historyFailed "_s, arrayAfter(u"historyLoaded bob "_s))},
        {"register device key", "POST /api/chat/device-key",
         [](ReportLog &log) { log.client.registerDeviceKey(u"a2V5"_s); },
         json(u"deviceKeyRegisterFailed "_s, u"deviceKeyRegistered"_s)},
        {"own device keys", "GET /api/chat/device-keys/me",
         [](ReportLog &log) { log.client.fetchMyDeviceKeys(); }, json(u"myDeviceKeysFailed "_s, ownKeys)},
        {"user's device keys", "GET /api/chat/public-key/bob",
         [](ReportLog &log) { log.client.fetchUserPublicKeys(u"bob"_s); },
         json(u"userPublicKeysFailed bob "_s, userKeys)},
        {"send sealed", "POST /api/chat/send", sendSealed, json(u"messageSendFailed "_s, u"messageSent"_s)},
        {"send plain", "POST /api/chat/send",
         [](ReportLog &log) { log.client.sendMessage(u"bob"_s, u"hello"_s); },
         json(u"messageSendFailed "_s, u"messageSent"_s)},
    };
}

QList<Endpoint> groupEndpoints()
{
    return {
        {"servers", "GET /api/groups", [](ReportLog &log) { log.client.fetchServers(); },
         group(arrayAfter(u"serversLoaded "_s))},
        {"server", "GET /api/groups/g1", [](ReportLog &log) { log.client.fetchServer(u"g1"_s); },
         group(objectAfter(u"serverLoaded "_s))},
        {"create server", "POST /api/groups",
         [](ReportLog &log) { log.client.createServer(u"name"_s, u"description"_s); },
         group(objectAfter(u"serverCreated "_s))},
        {"upload avatar", "POST /api/profile/avatar/upload",
         [](ReportLog &log) { log.client.uploadAvatar(log.picturePath()); },
         onlyWhetherGood(u"avatarUploaded true %1"_s, u"avatarUploaded false %1"_s)},
        {"upload icon", "POST /api/groups/g1/icon",
         [](ReportLog &log) { log.client.uploadServerIcon(u"g1"_s, log.picturePath()); }, iconOutcome},
    };
}

} // namespace

ReportLog::ReportLog()
{
    const QMetaObject &meta = net::ApiClient::staticMetaObject;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        spies.push_back(std::make_unique<QSignalSpy>(&client, meta.method(index)));
    QFile picture(picturePath());
    if (!picture.open(QIODevice::WriteOnly) || picture.write("\x89PNG") != 4)
        qFatal("No picture can be written");
}

QStringList ReportLog::reports() const
{
    QStringList texts = profile;
    for (const auto &spy : spies) {
        for (const QVariantList &arguments : std::as_const(*spy))
            texts.append(textOf(*spy, arguments));
    }
    return texts;
}

void ReportLog::forget()
{
    profile.clear();
    for (const auto &spy : spies)
        spy->clear();
}

net::ProfileCallback ReportLog::profileCallback()
{
    return [this](bool ok, const QString &message) {
        profile.append(ok ? u"profile saved"_s : u"profile failed "_s + message);
    };
}

const QList<Endpoint> &endpoints()
{
    static const QList<Endpoint> all = accountEndpoints() + chatEndpoints() + groupEndpoints();
    return all;
}

} // namespace tideloft::tests
