// The table of endpoints, one line a group.
#include "service/api.h"

#include "service/account_handlers.h"
#include "service/chat_handlers.h"
#include "service/key_handlers.h"
#include "service/profile_handlers.h"

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
}

} // namespace tideloft::service
