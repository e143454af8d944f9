// The table of endpoints, one line a group.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/api.h"

#include "service/api/account_handlers.h"
#include "service/api/chat_handlers.h"
#include "service/api/group_handlers.h"
#include "service/api/json_reply.h"
#include "service/api/key_handlers.h"
#include "service/api/picture_handlers.h"
#include "service/api/profile_handlers.h"
#include "service/api/sign_in_sessions.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

Api::Api(Database &database, ApiSettings settings) : context{database, std::move(settings)}
{
    router.add("GET", "/healthz", [](const Request &) {
        return jsonResponse(QJsonObject{{u"status"_s, u"ok"_s}});
    });
    addAccountRoutes(router, context);
    addProfileRoutes(router, context);
    addChatRoutes(router, context);
    addKeyRoutes(router, context);
    addGroupRoutes(router, context);
    addPictureRoutes(router, context);
}

Admission Api::admit(const Request &head)
{
    const BodySize wanted = router.bodySize(head);
    try {
        if (const std::optional<User> user = sessionUser(context, head))
            return {wanted, user->id, {}};
    } catch (const StorageError &) { // the request itself will show what is wrong
    }
    if (wanted == BodySize::Small)
        return {BodySize::Small, 0, {}};
    return {BodySize::Small, 0, signInFirst()}; // who signs in may send more
}

} // namespace tideloft::service
