// The table of endpoints, one line a group.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/api.h"

#include "service/api/account_handlers.h"
#include "service/api/chat_handlers.h"
#include "service/api/group_handlers.h"
#include "service/api/health.h"
#include "service/api/key_handlers.h"
#include "service/api/picture_handlers.h"
#include "service/api/profile_handlers.h"
#include "service/api/sign_in_sessions.h"
#include "service/store/retention.h"
#include "service/store/sessions.h"

#include <algorithm>

namespace tideloft::service
{

namespace
{

ApiSettings withBudget(ApiSettings settings)
{
    if (!settings.transfers)
        settings.transfers = std::make_shared<ByteBudget>(usualTransferBytes, usualAccountBytes);
    return settings;
}

} // namespace

qint64 steadyMilliseconds()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

// A clock that was set ahead meanwhile makes no message older, and one that is wrong when the system starts
// is mostly put right before anything is looked for.
StoreSettings ApiContext::withRetention(StoreSettings storage) const
{
    constexpr int pieceSize = 50;
    constexpr qint64 day = qint64{24} * 60 * 60 * 1000;
    if (settings.keepMessagesDays == 0)
        return storage;
    storage.background.piece = [this](Database &database) {
        const qint64 now = std::min(nowInMilliseconds(), sessionTime());
        return removeMessagesBefore(database, now - settings.keepMessagesDays * day, pieceSize) == pieceSize;
    };
    return storage;
}

// Each call takes whose turn it is then, which need not be what was put in with it. Nothing else uses the
// queue behind, so that has room whenever this one has.
bool ApiContext::read(const QByteArray &peer, ReadTask task)
{
    return readingTurns.push(peer, task) && store.read([this](Database &database) {
        if (const std::optional<ReadTask> next = readingTurns.take())
            (*next)(database);
    });
}

bool ApiContext::hash(const QByteArray &peer, Workers::Job job)
{
    return hashingTurns.push(peer, job) && hashing.submit([this] {
        if (const std::optional<Workers::Job> next = hashingTurns.take())
            (*next)();
    });
}

Api::Api(const StoreSettings &store, const ApiSettings &settings) : context(withBudget(settings), store)
{
    addHealthRoute(router, context);
    addAccountRoutes(router, context);
    addProfileRoutes(router, context);
    addChatRoutes(router, context);
    addKeyRoutes(router, context);
    addGroupRoutes(router, context);
    addPictureRoutes(router, context);
}

// A hashed password is handed to the storage, which must be there still.
Api::~Api()
{
    context.hashing.stop();
}

Admitted Api::admit(const Request &head)
{
    const BodySize wanted = router.bodySize(head);
    const Admission nobody{BodySize::Small, 0,
                           wanted == BodySize::Small ? std::nullopt : std::optional(signInFirst())};
    if (!carriesSession(head))
        return nobody; // who signs in may send more
    return Later<Admission>{[this, head, wanted, nobody](const Finish<Admission> &finish) {
        const bool accepted =
            context.read(head.peer, [this, head, wanted, nobody, finish](Database &database) {
                try {
                    const std::optional<User> user = sessionUser(context, database, head);
                    finish(user ? Admission{wanted, user->id, {}} : nobody);
                } catch (const StorageError &) { // the request itself will show what is wrong
                    finish(nobody);
                }
            });
        if (!accepted)
            finish(nobody);
    }};
}

Api::Queues Api::queues() const
{
    return {context.store.waitingReads(), context.store.waitingWrites(), context.hashing.waiting()};
}

bool Api::countSessions(const std::function<void(std::optional<qint64>)> &done)
{
    return context.read({}, [this, done](Database &database) {
        std::optional<qint64> sessions;
        try {
            sessions = sessionCount(database, context.sessionTime());
        } catch (const StorageError &) { // the page tells nothing of them then
        }
        done(sessions);
    });
}

} // namespace tideloft::service
