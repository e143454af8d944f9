// Requests about the own account: signing in and out, the profile, and the search for other users.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"

#include "net/reply_limit.h"
#include "net/reply_outcome.h"
#include "net/search_query.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

#include <utility>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

bool isSignIn(const QString &path)
{
    return path == u"/api/auth/login"_s || path == u"/api/auth/register"_s || path == u"/api/me"_s;
}

} // namespace

void ApiClient::login(const QString &name, const QString &password, bool rememberMe)
{
    const QJsonObject body{{u"username"_s, name}, {u"password"_s, password}, {u"rememberMe"_s, rememberMe}};
    handleJsonReply(
        post(u"/api/auth/login"_s, body),
        // The service gets the name as it was typed; what the client goes on with is the normal form.
        [this, name](const QJsonDocument &, int) {
            username = name.trimmed().toLower();
            keepsReplies = true;
            remembered.forget(); // what is kept belongs to the sign-in before
            emit loginSucceeded(username);
        },
        [this](const QString &message, int) { emit loginFailed(message); });
}

void ApiClient::registerAccount(const QString &name, const QString &password)
{
    const QJsonObject body{{u"username"_s, name}, {u"password"_s, password}};
    handleJsonReply(
        post(u"/api/auth/register"_s, body),
        [this, name](const QJsonDocument &, int) { emit registerSucceeded(name); },
        [this](const QString &message, int) { emit registerFailed(message); });
}

void ApiClient::logout()
{
    forgetReplies();
    // Whether the service agreed changes nothing here: the user is signed out.
    const auto leave = [this] { username.clear(); };
    handleJsonReply(
        network.post(buildRequest(u"/api/auth/logout"_s), QByteArray()),
        [leave](const QJsonDocument &, int) { leave(); }, [leave](const QString &, int) { leave(); });
}

void ApiClient::fetchMe()
{
    handleJsonReply(
        network.get(buildRequest(u"/api/me"_s)),
        [this](const QJsonDocument &document, int) {
            if (!document.isObject())
                return; // neither a profile nor a failure: dropped
            const QJsonObject me = document.object();
            username = me.value(u"username"_s).toString();
            beginFor(username.trimmed().toLower());
            emit meLoaded(me);
        },
        [this](const QString &message, int) { emit meFailed(message); });
}

// What an earlier user asked for is still carried out by the service, but its answer is none of this user's.
// Signing in belongs to nobody yet.
void ApiClient::beginFor(const QString &user)
{
    const QString before = std::exchange(lastUser, user);
    if (before.isEmpty() || before == user)
        return;
    remembered.forget();
    for (QNetworkReply *reply : network.findChildren<QNetworkReply *>()) {
        if (isSignIn(reply->request().url().path()))
            continue;
        reply->disconnect(this);
        connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
    }
}

void ApiClient::searchUsers(const QString &query)
{
    handleJsonReply(
        network.get(buildRequest(userSearchPath(query))),
        [this](const QJsonDocument &document, int) { emit searchLoaded(document.array()); },
        [this](const QString &message, int) { emit searchFailed(message); });
}

// A failed save shows the toolkit's words: the reply's body is not looked at.
void ApiClient::updateProfile(const QString &, const QString &bio, const ProfileCallback &callback)
{
    QNetworkReply *reply = post(u"/api/profile/update"_s, QJsonObject{{u"bio"_s, bio}});
    limitSize(*reply);
    connect(reply, &QNetworkReply::finished, this, [reply, callback] {
        const auto [ok, message] = outcomeOf(*reply);
        reply->deleteLater();
        if (callback)
            callback(ok, message);
    });
}

} // namespace tideloft::net
