// Comparing of versions, in memory first and then in the database.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/versioned_list.h"

#include "service/api/entity_tag.h"
#include "service/api/sign_in_sessions.h"

namespace tideloft::service
{

namespace
{

QByteArray cachedTag(const ApiContext &context, const VersionedList &list, const Request &request)
{
    const std::optional<User> user = cachedUser(context, request);
    if (!user)
        return {};
    const auto version = context.store.cache().versions.find({user->id, list.subject(request)});
    return entityTag(version.value_or(0), list.most);
}

// The version is read before the content: when something comes between them, the next request finds the tag
// outdated, and nobody keeps an old content under a new tag.
Response readList(ApiContext &context, const VersionedList &list, Database &database, const Request &request,
                  const User &user)
{
    auto &cache = context.store.cache().versions;
    const quint64 generation = cache.generation();
    const qint64 version = list.version(database, request, user);
    if (version == 0)
        return list.content(database, request, user);
    cache.learn({user.id, list.subject(request)}, version, generation);
    const QByteArray tag = entityTag(version, list.most);
    if (namesTag(request.ifNoneMatch, tag))
        return notModified(tag);
    Response response = list.content(database, request, user);
    response.headers.emplaceBack("ETag", tag);
    return response;
}

} // namespace

Handler forUnchanged(ApiContext &context, const VersionedList &list)
{
    const Handler read =
        forSignedIn(context, [&context, list](Database &database, const Request &request, const User &user) {
            return readList(context, list, database, request, user);
        });
    return [&context, list, read](const Request &request) -> Reply {
        if (!request.ifNoneMatch.isEmpty()) {
            const QByteArray tag = cachedTag(context, list, request);
            if (namesTag(request.ifNoneMatch, tag))
                return notModified(tag);
        }
        return read(request);
    };
}

} // namespace tideloft::service
