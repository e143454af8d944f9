// From a waiting text to a sealed message, or to words about what went wrong.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/outbox.h"

#include "ui/messages/sealing_devices.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

Outbox::Outbox(QString ownDeviceId, QObject *parent) : QObject(parent), deviceId(std::move(ownDeviceId))
{
    connect(&sealing, &SlicedSealing::busyChanged, this, [this] { emit sealingChanged(sealing.isBusy()); });
}

void Outbox::beginSignIn()
{
    myDevices.beginSignIn();
    waitingText.clear();
}

void Outbox::endSignIn()
{
    sealing.cancel();
    myDevices.endSignIn();
}

void Outbox::setDeviceRegistered()
{
    myDevices.setRegistered();
    askForOwnKeysAgain();
}

void Outbox::setOwnKeys(const QJsonArray &keys)
{
    myDevices.setKeys(keys);
    askForOwnKeysAgain();
}

void Outbox::askForOwnKeysAgain()
{
    if (myDevices.takeReloadRequest(deviceId))
        emit ownKeysOutdated();
}

void Outbox::seal(const QString &peer, const QJsonArray &keys, const QString &legacyPublicKey)
{
    const QString plainText = std::exchange(waitingText, {});
    if (plainText.isEmpty())
        return;
    const QJsonArray recipients = recipientDevices(keys, legacyPublicKey);
    if (recipients.isEmpty()) {
        emit failed(LocalizedText{u"Mottagaren har inga registrerade nycklar."_s,
                                  u"Recipient has no registered keys."_s});
        return;
    }
    sealing.begin(plainText, recipients, senderDevices(myDevices.keys(), deviceId),
                  [this, peer, plainText](const crypto::EncryptedEnvelope &envelope) {
                      finish(peer, plainText, envelope);
                  });
}

void Outbox::finish(const QString &peer, const QString &plainText, const crypto::EncryptedEnvelope &envelope)
{
    if (!envelope.ok) {
        const LocalizedText beginning{u"Kryptering misslyckades: "_s, u"Encryption failed: "_s};
        emit failed({beginning.swedish + envelope.error, beginning.english + envelope.error});
        return;
    }
    sentTexts.append(plainText);
    emit sealed(peer, envelope);
}

} // namespace tideloft::ui
