// Writing and comparing of entity tags.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/entity_tag.h"

#include <algorithm>

namespace tideloft::service
{

namespace
{

// Goes up whenever the same content is written in another way.
constexpr quint64 replyForm = 1;
constexpr quint64 spread = 0x9e3779b97f4a7c15; // odd, so no two small numbers become the same

} // namespace

QByteArray entityTag(qint64 version, qsizetype most)
{
    if (version == 0)
        return {};
    const quint64 all = quint64(version) ^ (quint64(most) * 16 + replyForm) * spread;
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(&all), sizeof all);
    return '"' + bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals) + '"';
}

// The comparison is weak (RFC 9110, section 13.1.2), so what a proxy has marked as weak counts too.
bool namesTag(const QByteArray &ifNoneMatch, const QByteArray &tag)
{
    if (tag.isEmpty() || ifNoneMatch.isEmpty())
        return false;
    const QList<QByteArray> named = ifNoneMatch.split(',');
    return std::any_of(named.begin(), named.end(), [&tag](const QByteArray &each) {
        const QByteArray one = each.trimmed();
        return one == tag || one == "*" || (one.startsWith("W/") && one.sliced(2) == tag);
    });
}

Response notModified(const QByteArray &tag)
{
    Response response;
    response.status = 304;
    response.headers.emplaceBack("ETag", tag);
    return response;
}

} // namespace tideloft::service
