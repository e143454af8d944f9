// Naming of entity tags, and finding what they stand for.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/remembered_replies.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <algorithm>

namespace tideloft::net
{

namespace
{

constexpr qsizetype mostKept = 8; // the lists, and the conversations that one goes to and fro between
constexpr qsizetype longestTag = 200;
constexpr int notModified = 304;
const QByteArray question = QByteArrayLiteral("If-None-Match");

// The tag goes back as it came, so it must be one (RFC 9110, section 8.8.3), and no megabyte.
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

int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

} // namespace

QNetworkReply *RememberedReplies::get(QNetworkAccessManager &network, QNetworkRequest request)
{
    const auto kept = std::find_if(latest.cbegin(), latest.cend(),
                                   [&](const Kept &each) { return each.address == request.url(); });
    if (kept == latest.cend())
        return network.get(request);
    request.setRawHeader(question, kept->tag);
    QNetworkReply *reply = network.get(request);
    underWay.insert(reply, kept->document);
    return reply;
}

bool RememberedReplies::saysUnchanged(const QNetworkReply &reply)
{
    return statusOf(reply) == notModified && reply.request().hasRawHeader(question);
}

std::optional<QJsonDocument> RememberedReplies::takeUnchanged(const QNetworkReply &reply)
{
    const auto found = underWay.constFind(&reply);
    if (found == underWay.constEnd())
        return std::nullopt;
    const QJsonDocument document = *found;
    underWay.erase(found);
    return saysUnchanged(reply) ? std::optional(document) : std::nullopt;
}

// A reply from elsewhere says nothing about the address that was asked.
void RememberedReplies::keep(const QNetworkReply &reply, const QJsonDocument &document)
{
    const QUrl address = reply.request().url();
    latest.removeIf([&](const Kept &each) { return each.address == address; });
    const QByteArray tag = reply.rawHeader("ETag");
    if (statusOf(reply) != 200 || reply.url() != address || !isTag(tag))
        return;
    latest.prepend({address, tag, document});
    if (latest.size() > mostKept)
        latest.removeLast();
}

void RememberedReplies::forget()
{
    latest.clear();
    underWay.clear();
}

} // namespace tideloft::net
