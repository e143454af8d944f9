// Sealing of a message between the events of the window.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/messages/envelope_sealing.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

namespace tideloft::ui
{

/// Seals one message at a time, in slices of some milliseconds: a recipient with thousands of devices would
/// keep the window still for seconds. What is sealed within the first slice is done at once.
class SlicedSealing : public QObject
{
    Q_OBJECT

public:
    using Done = std::function<void(const crypto::EncryptedEnvelope &)>;

    explicit SlicedSealing(QObject *parent = nullptr);

    /// Seals a text, and calls DONE with the result of encryptMessageEnvelope(): before begin() returns if
    /// one slice is enough, else from the event loop. What was being sealed before is given up.
    void begin(const QString &plainText, const QJsonArray &recipients, const QJsonArray &senders,
               const Done &done);
    /// Gives up what is being sealed: DONE is not called any more, and the key is wiped.
    void cancel();
    /// Whether slices are still to come.
    [[nodiscard]] bool isBusy() const { return timer.isActive(); }

signals:
    void busyChanged();

private:
    void sealSlice();
    void goOn();
    void tellResult();

    QTimer timer;
    std::optional<crypto::EnvelopeSealing> sealing;
    Done whenDone;
};

} // namespace tideloft::ui
