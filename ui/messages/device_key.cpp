// Finding or making the key pair of this device.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/device_key.h"

#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "ui/texts/log_line.h"

#include <QDebug>

namespace tideloft::ui
{

QString publicKeyOfThisDevice()
{
    QString error;
    if (!crypto::ensureKeyPair(&error)) {
        qWarning().noquote() << "Key pair error:" << logLine(error);
        return {};
    }
    const QString publicKey = crypto::readPublicKeyFile(&error);
    if (publicKey.isEmpty())
        qWarning().noquote() << "Public key error:" << logLine(error);
    return publicKey;
}

} // namespace tideloft::ui
