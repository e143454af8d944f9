// Cutting the sealing of a message into slices.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/sliced_sealing.h"

#include <QDeadlineTimer>

#include <utility>

namespace tideloft::ui
{

namespace
{

constexpr int sliceLength = 8; // ms: half of what a screen takes to show the next picture

// More devices than most people have are done in one slice, however slow the computer is. Even with the
// largest keys so many take no longer than a glance.
constexpr int devicesAtLeast = 8;

} // namespace

SlicedSealing::SlicedSealing(QObject *parent) : QObject(parent)
{
    connect(&timer, &QTimer::timeout, this, &SlicedSealing::goOn);
}

void SlicedSealing::begin(const QString &plainText, const QJsonArray &recipients, const QJsonArray &senders,
                          const Done &done)
{
    cancel();
    sealing.emplace(plainText, recipients, senders);
    whenDone = done;
    sealSlice();
    if (sealing->isFinished()) {
        tellResult();
        return;
    }
    timer.start(0);
    emit busyChanged();
}

void SlicedSealing::cancel()
{
    if (!isBusy())
        return;
    timer.stop();
    sealing.reset();
    whenDone = {};
    emit busyChanged();
}

void SlicedSealing::sealSlice()
{
    const QDeadlineTimer end(sliceLength);
    for (int i = 0; !sealing->isFinished() && (i < devicesAtLeast || !end.hasExpired()); ++i)
        sealing->wrapNext();
}

void SlicedSealing::goOn()
{
    sealSlice();
    if (!sealing->isFinished())
        return;
    timer.stop();
    emit busyChanged();
    tellResult();
}

// The receiver of the result may begin with the next message at once.
void SlicedSealing::tellResult()
{
    const crypto::EncryptedEnvelope envelope = sealing->takeEnvelope();
    sealing.reset();
    std::exchange(whenDone, {})(envelope);
}

} // namespace tideloft::ui
