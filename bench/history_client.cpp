// Sealing a conversation, and showing it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/history_client.h"

#include "crypto/keys/key_store.h"
#include "crypto/messages/envelope.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

const QString user = u"alice"_s;
const QString peer = u"bob"_s;
const QString device = u"2f1c9a54-60cf-4d6b-8a57-0d6f2e7b9c11"_s;

QJsonObject sealedItem(int number, const QJsonArray &devices)
{
    const QString words = u" The quick brown fox jumps over the lazy dog and does not look back."_s;
    const QString text = u"Message number %1."_s.arg(number) + words.repeated(number % 5 / 2);
    const auto envelope = crypto::encryptMessageEnvelope(text, devices, {});
    const QDateTime time = QDateTime(QDate(2024, 5, 1), QTime(8, 0), QTimeZone::utc()).toUTC();
    return {{u"id"_s, number},
            {u"from"_s, peer},
            {u"to"_s, user},
            {u"text"_s, envelope.ciphertextBase64},
            {u"iv"_s, envelope.ivBase64},
            {u"encrypted"_s, true},
            {u"recipientKeys"_s, envelope.recipientKeys},
            {u"createdAt"_s, time.addSecs(qint64(number) * 97).toString(Qt::ISODateWithMs)}};
}

} // namespace

QByteArray sealedHistory(int count)
{
    static const QJsonArray devices{
        QJsonObject{{u"deviceId"_s, device}, {u"publicKeyBase64"_s, crypto::readPublicKeyFile()}}};
    static QJsonArray items; // each is sealed once
    while (items.size() < count)
        items.append(sealedItem(int(items.size()), devices));
    QJsonArray sent;
    for (int i = 0; i < count; ++i)
        sent.append(items.at(i));
    return QJsonDocument(sent).toJson(QJsonDocument::Compact);
}

HistoryClient::HistoryClient() : reader(device)
{
    reader.signIn(user);
    line.resize(300, 40);
    line.show();
    QApplication::processEvents();
}

QList<ui::HistoryRow> HistoryClient::read(const QByteArray &body)
{
    reader.keepHistory(peer, reply.read(body).array());
    return reader.historyRows(ui::Language::English);
}

void HistoryClient::show(const QByteArray &body)
{
    window.history->show(read(body));
    QApplication::sendPostedEvents(); // painting is one of them
}

void HistoryClient::finish() const
{
    while (!window.history->isSettled())
        QApplication::processEvents();
    QApplication::processEvents();
}

void HistoryClient::typeLetter()
{
    QApplication::postEvent(&line, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, {}, u"a"_s));
}

} // namespace tideloft::bench
