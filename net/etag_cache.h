// A cache of lists that are asked for again and again, by their entity tags (RFC 9110, section 8.8.3).
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QJsonDocument>
#include <QList>
#include <QUrl>

#include <optional>

class QNetworkAccessManager;
class QNetworkReply;
class QNetworkRequest;

namespace tideloft::net
{

/// Holds the last reply with an entity tag of each address, for the latest few addresses. The next request to
/// such an address is conditional: it names the tag. A reply with status 304 then stands for the cached one.
class ETagCache
{
public:
    /// Sends REQUEST, with the tag that is cached for its address. Without a tag REQUEST is sent as it is.
    QNetworkReply *get(QNetworkAccessManager &network, QNetworkRequest request);

    /// True when REPLY says that the document which its request named has not changed.
    [[nodiscard]] static bool isNotModified(const QNetworkReply &reply);

    /// The document that was cached when the request of REPLY was sent, if REPLY, which must have finished,
    /// says that it has not changed. Nothing for any other reply, and after a clear() in between. To be
    /// called once for each reply of get().
    std::optional<QJsonDocument> takeNotModified(const QNetworkReply &reply);

    /// Caches DOCUMENT, the content of REPLY, if REPLY has a tag.
    void insert(const QNetworkReply &reply, const QJsonDocument &document);

    /// Empties the cache. Replies that are still on the way find nothing in it any more.
    void clear();

private:
    struct Entry {
        QUrl address;
        QByteArray tag;
        QJsonDocument document;
    };

    QList<Entry> entries; ///< the newest first
    QHash<const QNetworkReply *, QJsonDocument> pending;
};

} // namespace tideloft::net
