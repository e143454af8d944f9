// From the event loop to the threads and back, and the one place where failures become replies.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/tasks.h"

#include "service/api/json_reply.h"
#include "service/store/messages.h"

#include <memory>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

Response withProblem(const Refusal &refusal, const std::exception &error)
{
    Response response = errorResponse(refusal);
    response.problem = error.what();
    return response;
}

void store(ApiContext &context, const Change &change, const Finish<Response> &finish)
{
    const auto reply = std::make_shared<Response>();
    const bool accepted =
        context.store.write({[reply, change](Database &database) { *reply = change(database); },
                             [reply, finish](const std::exception_ptr &failure) {
                                 finish(failure ? failureResponse(failure) : std::move(*reply));
                             }});
    if (!accepted)
        finish(errorResponse(tooBusy()));
}

template <typename Result, typename Step> Result attempt(const Step &step)
{
    try {
        return step();
    } catch (...) {
        return failureResponse(std::current_exception());
    }
}

void store(ApiContext &context, const Send &send, const Finish<Response> &finish)
{
    const auto change = [message = send.message](Database &database) { storeMessage(database, *message); };
    const auto done = [send, finish](const std::exception_ptr &failure) {
        finish(failure ? failureResponse(failure)
                       : attempt<Response>([&] { return send.reply(send.message->stored); }));
    };
    if (!context.store.write({change, done, send.message}))
        finish(errorResponse(tooBusy()));
}

void finishChange(ApiContext &context, const std::variant<Response, Change> &outcome,
                  const Finish<Response> &finish)
{
    if (const auto *change = std::get_if<Change>(&outcome))
        store(context, *change, finish);
    else
        finish(std::get<Response>(outcome));
}

void lookFirst(ApiContext &context, const QByteArray &peer, const LookUp &lookUp,
               const Finish<Response> &finish);

void countFirst(ApiContext &context, const QByteArray &peer, const std::shared_ptr<const Count> &count,
                const Finish<Response> &finish)
{
    const auto goOn = [&context, peer, count, finish](const std::exception_ptr &failure) {
        failure ? finish(failureResponse(failure)) : lookFirst(context, peer, count->next, finish);
    };
    if (!context.store.write({[count](Database &database) { count->count(database); }, goOn, {}, true}))
        finish(errorResponse(tooBusy()));
}

void finishOutcome(ApiContext &context, const QByteArray &peer, Outcome outcome,
                   const Finish<Response> &finish)
{
    if (const auto *response = std::get_if<Response>(&outcome))
        return finish(*response);
    if (const auto *change = std::get_if<Change>(&outcome))
        return store(context, *change, finish);
    if (const auto *send = std::get_if<Send>(&outcome))
        return store(context, *send, finish);
    if (const auto *count = std::get_if<std::shared_ptr<const Count>>(&outcome))
        return countFirst(context, peer, *count, finish);
    const bool accepted =
        context.hash(peer, [&context, slow = std::get<SlowWork>(std::move(outcome)), finish] {
            finishChange(context, attempt<std::variant<Response, Change>>(slow.work), finish);
        });
    if (!accepted)
        finish(errorResponse(tooBusy()));
}

void lookFirst(ApiContext &context, const QByteArray &peer, const LookUp &lookUp,
               const Finish<Response> &finish)
{
    const bool accepted = context.read(peer, [&context, peer, lookUp, finish](Database &database) {
        finishOutcome(context, peer, attempt<Outcome>([&] { return lookUp(database); }), finish);
    });
    if (!accepted)
        finish(errorResponse(tooBusy()));
}

} // namespace

Later<Response> answerAfter(ApiContext &context, const QByteArray &peer, LookUp lookUp)
{
    return {[&context, peer, lookUp = std::move(lookUp)](const Finish<Response> &finish) {
        lookFirst(context, peer, lookUp, finish);
    }};
}

Response failureResponse(const std::exception_ptr &failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const Refusal &refusal) {
        return errorResponse(refusal);
    } catch (const StorageError &error) {
        if (error.isTemporary())
            return withProblem(Refusal(503, u"The service cannot store anything at the moment. "
                                            "Please try again later."_s),
                               error);
        return withProblem(Refusal(500, u"The service could not handle this request."_s), error);
    } catch (const std::exception &error) {
        return withProblem(Refusal(500, u"The service could not handle this request."_s), error);
    }
}

} // namespace tideloft::service
