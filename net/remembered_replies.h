// Replies that are asked for again and again: what has not changed need not be sent again.
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

/// Keeps the last reply of each address that came with an entity tag (RFC 9110, section 8.8.3), of the latest
/// few addresses. Their next requests name the tag; a reply that says 304 then stands for the one that is
/// kept.
class RememberedReplies
{
public:
    /// Sends REQUEST, with the tag of what is kept for its address. Without a tag it goes out as it is.
    QNetworkReply *get(QNetworkAccessManager &network, QNetworkRequest request);

    /// What was kept when REPLY, which must have finished, was asked for, if that has not changed; nothing
    /// for every other reply, and for what was forgotten since then. To be called once for each reply of
    /// get().
    std::optional<QJsonDocument> takeUnchanged(const QNetworkReply &reply);

    /// True when REPLY says that what its request named has not changed, kept or forgotten.
    [[nodiscard]] static bool saysUnchanged(const QNetworkReply &reply);

    /// Keeps DOCUMENT, which is what REPLY has brought, if there is a tag.
    void keep(const QNetworkReply &reply, const QJsonDocument &document);

    /// What is under way names what was kept all the same, but finds nothing any more.
    void forget();

private:
    struct Kept {
        QUrl address;
        QByteArray tag;
        QJsonDocument document;
    };

    QList<Kept> latest; ///< the newest first
    QHash<const QNetworkReply *, QJsonDocument> underWay;
};

} // namespace tideloft::net
