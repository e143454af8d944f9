// What a person has written, from the message field until it has arrived.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/own_devices.h"
#include "ui/messages/sent_texts.h"
#include "ui/messages/sliced_sealing.h"
#include "ui/texts/text.h"

namespace tideloft::ui
{

/// A text waits here for the recipient's keys, is sealed for their devices and this one, and is remembered
/// until the service has it. Nothing here knows of a window or of requests: signals tell what is to be done.
class Outbox : public QObject
{
    Q_OBJECT

public:
    explicit Outbox(QString ownDeviceId, QObject *parent = nullptr);

    /// A user signs in: the text that waits may be another user's.
    void beginSignIn();
    void endSignIn();
    /// Another user signs in: the texts that are on their way belong to the user before.
    void forgetSent() { sentTexts.clear(); }

    /// The service has this device's key.
    void setDeviceRegistered();
    /// The user's devices, as the service lists them.
    void setOwnKeys(const QJsonArray &keys);

    /// TEXT waits for keys; a text that was waiting is forgotten.
    void write(const QString &text) { waitingText = text; }
    void dropWaiting() { waitingText.clear(); }
    /// Seals the waiting text, if there is one, for PEER's devices KEYS, or for the account-wide
    /// LEGACYPUBLICKEY if there are none.
    void seal(const QString &peer, const QJsonArray &keys, const QString &legacyPublicKey);
    /// Gives up what is being sealed.
    void cancelSealing() { sealing.cancel(); }

    /// The text of the message that has arrived; empty if none was on its way.
    QString takeArrived() { return sentTexts.takeArrived(); }
    /// A message was refused: its text stays in the field.
    void dropFailed() { sentTexts.dropFailed(); }

signals:
    /// The list of the user's devices came without this device: the list should be requested once more.
    void ownKeysOutdated();
    void sealingChanged(bool busy);
    void sealed(const QString &peer, const crypto::EncryptedEnvelope &envelope);
    void failed(const tideloft::ui::LocalizedText &problem);

private:
    void askForOwnKeysAgain();
    void finish(const QString &peer, const QString &plainText, const crypto::EncryptedEnvelope &envelope);

    QString deviceId;
    QString waitingText;
    OwnDevices myDevices;
    SentTexts sentTexts;
    SlicedSealing sealing;
};

} // namespace tideloft::ui
