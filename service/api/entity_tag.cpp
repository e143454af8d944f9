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
constexpr char replyForm = '1';

} // namespace

QByteArray entityTag(qint64 version, qsizetype most)
{
    if (version == 0)
        return {};
    return '"' + QByteArray::number(version, 36) + '-' + replyForm + '-' + QByteArray::number(most, 36) + '"';
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
