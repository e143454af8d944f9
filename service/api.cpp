// The table of endpoints, one line a group.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api.h"

#include "service/account_handlers.h"
#include "service/chat_handlers.h"
#include "service/group_handlers.h"
#include "service/key_handlers.h"
#include "service/picture_handlers.h"
#include "service/profile_handlers.h"
#include "service/sign_in_sessions.h"

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
            return {wanted, user->id, false};
    } catch (const StorageError &) { // the request itself will show what is wrong
    }
    return {BodySize::Small, 0, wanted != BodySize::Small};
}

} // namespace tideloft::service
