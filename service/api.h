// All endpoints of the service over one database.
#pragma once

#include "service/api_context.h"
#include "service/router.h"

namespace tideloft::service
{

class Api
{
public:
    /// `database` must outlive the object.
    Api(Database &database, ApiSettings settings);
    Q_DISABLE_COPY_MOVE(Api)

    Reply handle(const Request &request) const { return router.handle(request); }

    /// Whether a request that begins like this may bring a body as large as a picture: only a signed-in
    /// user's, and only where a picture belongs. Never throws.
    bool allowsUpload(const Request &head);

private:
    ApiContext context;
    Router router;
};

} // namespace tideloft::service
