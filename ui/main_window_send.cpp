// Sending a message: the recipient's keys first, then the sealed text.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/chat/message_line.h"
#include "ui/messages/device_lists.h"
#include "ui/widgets/message_box.h"

#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void MainWindow::onSendClicked()
{
    if (currentPeer.isEmpty() || !msgInput->isEnabled())
        return;
    const QString typed = msgInput->text().trimmed();
    if (typed.isEmpty())
        return;
    pendingMessageText = typed;
    api.fetchUserPublicKeys(currentPeer);
}

void MainWindow::updateMessageLine()
{
    const bool canWrite = !serverIsShown && !sealing.isBusy();
    msgInput->setEnabled(canWrite);
    sendButton->setEnabled(canWrite);
}

void MainWindow::followSealing()
{
    if (sealing.isBusy())
        lineFocus.take({msgInput, sendButton}, chatPage);
    updateMessageLine();
    if (msgInput->isEnabled())
        lineFocus.giveBack();
}

void MainWindow::onUserPublicKeysLoaded(const QString &username, const QJsonArray &keys,
                                        const QString &legacyPublicKey)
{
    if (username != currentPeer || pendingMessageText.isEmpty())
        return;
    const QJsonArray recipients = recipientDevices(keys, legacyPublicKey);
    if (recipients.isEmpty())
        showWarning(this, text(u"Mottagaren har inga registrerade nycklar."_s,
                               u"Recipient has no registered keys."_s));
    else
        encryptAndSend(currentPeer, pendingMessageText, recipients,
                       senderDevices(myDevices.keys(), api.deviceId()));
    pendingMessageText.clear();
}

void MainWindow::onUserPublicKeysFailed(const QString &, const QString &message)
{
    pendingMessageText.clear();
    showWarning(this, message);
}

void MainWindow::encryptAndSend(const QString &peer, const QString &plainText, const QJsonArray &recipients,
                                const QJsonArray &senders)
{
    const auto done = [this, peer, plainText](const crypto::EncryptedEnvelope &envelope) {
        sendSealed(peer, plainText, envelope);
    };
    sealing.begin(plainText, recipients, senders, done);
}

void MainWindow::sendSealed(const QString &peer, const QString &plainText,
                            const crypto::EncryptedEnvelope &envelope)
{
    if (!envelope.ok) {
        showWarning(this, text(u"Kryptering misslyckades: "_s, u"Encryption failed: "_s) + envelope.error);
        return;
    }
    sentTexts.append(plainText);
    api.sendMessage(peer, envelope.ciphertextBase64, envelope.ivBase64, {}, {}, envelope.recipientKeys,
                    envelope.senderKeys);
}

void MainWindow::onMessageSent()
{
    clearSentText(msgInput, sentTexts.takeArrived());
    if (!currentPeer.isEmpty())
        api.fetchHistory(currentPeer);
}

void MainWindow::onMessageSendFailed(const QString &message)
{
    sentTexts.dropFailed();
    showWarning(this, message);
}

} // namespace tideloft::ui
