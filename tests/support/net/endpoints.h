// Every request that the client can make, as a table, and what it has to report of any reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/api_client.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <vector>

namespace tideloft::tests
{

/// What a finished reply holds, as far as the client may look at it.
struct ReplyContent {
    QString error;          ///< the toolkit's words; empty if it finds nothing wrong
    QJsonDocument document; ///< empty where the body is not JSON
};

/// A client and everything that it reports.
class ReportLog
{
public:
    ReportLog();

    /// "signal argument argument" for every signal so far, JSON in compact form, and "profile saved" or
    /// "profile failed text" for what the profile's callback was told.
    QStringList reports() const;
    void forget();
    QString picturePath() const { return directory.filePath(QStringLiteral("me.png")); }
    net::ProfileCallback profileCallback();

    net::ApiClient client;

private:
    QTemporaryDir directory;
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    QStringList profile;
};

struct Endpoint {
    const char *name;
    QByteArray key; ///< "METHOD path"
    std::function<void(ReportLog &)> ask;
    /// What has to be reported of a reply; "%1" stands for the picture's path.
    std::function<QStringList(const ReplyContent &)> outcome;
};
const QList<Endpoint> &endpoints();

} // namespace tideloft::tests
