// How results of other threads come back to the event loop.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/exchange.h"

#include <boost/asio/awaitable.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <memory>
#include <mutex>

namespace tideloft::service
{

/// Other threads may still hold it when the event loop is gone; what they bring then is dropped.
class LoopMailbox
{
public:
    explicit LoopMailbox(boost::asio::io_context &loop) : io(&loop) {}

    /// From any thread: has FUNCTION called on the event loop.
    template <typename Function> void post(Function function)
    {
        const std::lock_guard lock(mutex);
        if (io)
            boost::asio::post(*io, std::move(function));
    }

    void close()
    {
        const std::lock_guard lock(mutex);
        io = nullptr;
    }

private:
    std::mutex mutex;
    boost::asio::io_context *io;
};

/// What another thread brings, and a timer that stands for it: it keeps the loop running and wakes who waits.
template <typename Result> struct Waiting {
    Waiting(const boost::asio::any_io_executor &loop, std::chrono::milliseconds timeout)
        : timer(loop, boost::asio::steady_timer::time_point::max())
    {
        if (timeout != std::chrono::milliseconds::max())
            timer.expires_after(timeout);
    }

    boost::asio::steady_timer timer;
    std::optional<Result> result;
};

/// The result, once it is there; what stands for it when the time ends first. The result is dropped then.
template <typename Result>
boost::asio::awaitable<Result> waitFor(std::shared_ptr<LoopMailbox> mailbox,
                                       std::variant<Result, Later<Result>> outcome)
{
    if (auto *now = std::get_if<Result>(&outcome))
        co_return std::move(*now);
    auto &later = std::get<Later<Result>>(outcome);
    const auto loop = co_await boost::asio::this_coro::executor;
    const auto waiting = std::make_shared<Waiting<Result>>(loop, later.timeout);
    // Other threads must not keep the timer: it has to go before its loop does.
    later.start([mailbox, waits = std::weak_ptr(waiting)](Result result) {
        mailbox->post([waits, result = std::move(result)]() mutable {
            const std::shared_ptr<Waiting<Result>> here = waits.lock();
            if (!here)
                return;
            here->result = std::move(result);
            here->timer.cancel();
        });
    });
    boost::system::error_code cancelled;
    while (!waiting->result) {
        co_await waiting->timer.async_wait(
            boost::asio::redirect_error(boost::asio::use_awaitable, cancelled));
        if (!cancelled && !waiting->result)
            co_return std::move(later.whenLate);
    }
    co_return std::move(*waiting->result);
}

} // namespace tideloft::service
