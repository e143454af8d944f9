// Sending of entity tags, and finding what they stand for.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/etag_cache.h"

#include "net/http_status.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <algorithm>

namespace tideloft::net
{

namespace
{

constexpr qsizetype capacity = 8; // two lists, and the conversations that a user switches between
constexpr qsizetype longestTag = 200;
constexpr const char *condition = "If-None-Match";

// The tag is sent back as it came, so it must be a valid one (RFC 9110, section 8.8.3) of a bounded size.
bool isTag(QByteArrayView text)
{
    if (text.size() > longestTag)
        return false;
    if (text.startsWith("W/"))
        text = text.sliced(2);
    return text.size() >= 2 && text.startsWith('"') && text.endsWith('"')
           && std::all_of(text.begin() + 1, text.end() - 1,
                          [](char c) { return c > ' ' && c < 0x7f && c != '"'; });
}

} // namespace

QNetworkReply *ETagCache::get(QNetworkAccessManager &network, QNetworkRequest request)
{
    const auto cached = std::find_if(entries.cbegin(), entries.cend(),
                                     [&](const Entry &each) { return each.address == request.url(); });
    if (cached == entries.cend())
        return network.get(request);
    request.setRawHeader(condition, cached->tag);
    QNetworkReply *reply = network.get(request);
    pending.insert(reply, cached->document);
    return reply;
}

bool ETagCache::isNotModified(const QNetworkReply &reply)
{
    return httpStatus(reply) == statusNotModified && reply.request().hasRawHeader(condition);
}

std::optional<QJsonDocument> ETagCache::takeNotModified(const QNetworkReply &reply)
{
    if (!pending.contains(&reply))
        return std::nullopt;
    const QJsonDocument document = pending.take(&reply);
    return isNotModified(reply) ? std::optional(document) : std::nullopt;
}

// A redirected reply says nothing about the address of its request.
void ETagCache::insert(const QNetworkReply &reply, const QJsonDocument &document)
{
    const QUrl address = reply.request().url();
    entries.removeIf([&](const Entry &each) { return each.address == address; });
    const QByteArray tag = reply.rawHeader("ETag");
    if (httpStatus(reply) != statusOk || reply.url() != address || !isTag(tag))
        return;
    entries.prepend({address, tag, document});
    if (entries.size() > capacity)
        entries.removeLast();
}

void ETagCache::clear()
{
    entries.clear();
    pending.clear();
}

} // namespace tideloft::net
