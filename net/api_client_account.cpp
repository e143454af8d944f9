// Requests about the own account: signing in and out, the profile, and the search for other users.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"

#include "net/reply_pipeline.h"
#include "net/search_query.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

#include <utility>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

void ApiClient::login(const QString &name, const QString &password, bool rememberMe)
{
    const QJsonObject body{{u"username"_s, name}, {u"password"_s, password}, {u"rememberMe"_s, rememberMe}};
    handleJsonReply(
        post(u"/api/auth/login"_s, body),
        // The service gets the name as it was typed; what the client goes on with is the normal form.
        [this, name](const QJsonDocument &, int) {
            username = name.trimmed().toLower();
            caches.open();
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
    clearReplyCaches();
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

// The service still carries out what an earlier user asked for, but its reply does not concern this user.
void ApiClient::beginFor(const QString &user)
{
    const QString before = std::exchange(lastUser, user);
    if (before.isEmpty() || before == user)
        return;
    caches.tags.clear();
    userContext = std::make_unique<QObject>();
}

void ApiClient::searchUsers(const QString &query)
{
    handleJsonReply(
        network.get(buildRequest(userSearchPath(query))),
        [this](const QJsonDocument &document, int) { emit searchLoaded(document.array()); },
        [this](const QString &message, int) { emit searchFailed(message); });
}

// A failed save shows the toolkit's error text: the reply's body is not read.
void ApiClient::updateProfile(const QString &, const QString &bio, const ProfileCallback &callback)
{
    handleReply(post(u"/api/profile/update"_s, QJsonObject{{u"bio"_s, bio}}), userContext.get(),
                [callback](QNetworkReply &, const ReplyOutcome &outcome) {
                    if (callback)
                        callback(outcome.ok, outcome.errorText);
                });
}

} // namespace tideloft::net
