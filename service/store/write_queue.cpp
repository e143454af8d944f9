// Two lanes, and who may take from which.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/write_queue.h"

#include <algorithm>

namespace tideloft::service
{

namespace
{

// A commit takes the time of one sync, however much it holds. More than this would keep the first for long.
constexpr std::size_t mostTogether = 256;
constexpr std::size_t mostMessages = 64; // whose users' rows others wait for meanwhile

} // namespace

// Nobody is woken for messages that only their present holder may take.
bool WriteQueue::push(WriteTask task)
{
    bool isForAnybody = true;
    {
        const std::lock_guard lock(mutex);
        if (closed || messages.size() + others.size() >= most)
            return false;
        const bool isMessage = areSeveral && task.message;
        isForAnybody = !isMessage || !messagesAreTaken;
        (isMessage ? messages : others).push_back({count++, std::move(task)});
    }
    if (isForAnybody)
        changed.notify_one();
    return true;
}

WriteQueue::Lane *WriteQueue::nextLane()
{
    const bool hasMessages = !messages.empty() && !messagesAreTaken;
    if (hasMessages && (others.empty() || messages.front().number < others.front().number))
        return &messages;
    return others.empty() ? nullptr : &others;
}

std::optional<WriteQueue::Taken> WriteQueue::take(std::chrono::milliseconds timeout, Taken done)
{
    std::unique_lock lock(mutex);
    const bool hadMessages = std::exchange(done.queue, nullptr) != nullptr;
    messagesAreTaken = messagesAreTaken && !hadMessages;
    changed.wait_for(lock, timeout, [this] { return closed || nextLane(); });
    Lane *lane = nextLane();
    if (!lane)
        return closed ? std::nullopt : std::optional<Taken>(std::in_place);
    const bool areMessages = lane == &messages;
    messagesAreTaken = messagesAreTaken || areMessages;
    const std::size_t together = areMessages ? mostMessages : areSeveral ? 1 : mostTogether;
    Batch batch;
    for (std::size_t left = std::min(together, lane->size()); left > 0; --left) {
        batch.push_back(std::move(lane->front().task));
        lane->pop_front();
    }
    if (hadMessages && nextLane())
        changed.notify_one();
    return Taken(areMessages ? this : nullptr, std::move(batch));
}

std::optional<WriteQueue::Taken> WriteQueue::take(std::chrono::milliseconds timeout)
{
    return take(timeout, Taken());
}

WriteQueue::Taken &WriteQueue::Taken::operator=(Taken &&other) noexcept
{
    giveBack();
    batch = std::move(other.batch);
    queue = std::exchange(other.queue, nullptr);
    return *this;
}

void WriteQueue::Taken::giveBack()
{
    if (!queue)
        return;
    {
        const std::lock_guard lock(queue->mutex);
        queue->messagesAreTaken = false;
    }
    std::exchange(queue, nullptr)->changed.notify_one();
}

Batch WriteQueue::takeAll()
{
    const std::lock_guard lock(mutex);
    Batch all;
    while (!messages.empty() || !others.empty()) {
        const bool messageIsFirst =
            others.empty() || (!messages.empty() && messages.front().number < others.front().number);
        Lane &lane = messageIsFirst ? messages : others;
        all.push_back(std::move(lane.front().task));
        lane.pop_front();
    }
    return all;
}

void WriteQueue::close()
{
    {
        const std::lock_guard lock(mutex);
        closed = true;
    }
    changed.notify_all();
}

std::size_t WriteQueue::size() const
{
    const std::lock_guard lock(mutex);
    return messages.size() + others.size();
}

} // namespace tideloft::service
