// What a long list of conversations costs, as a ratio measured in one run:
//     QT_QPA_PLATFORM=offscreen bench_conversations
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/list_window.h"
#include "bench/paired_times.h"
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/envelope.h"
#include "net/reply_cache.h"
#include "tests/support/test_home.h"
#include "ui/messages/message_reader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace tideloft;

namespace
{

constexpr int runs = 5;
const QString user = u"alice"_s;
const QString device = u"2f1c9a54-60cf-4d6b-8a57-0d6f2e7b9c11"_s;

QJsonObject conversation(int number, const QJsonArray &devices)
{
    const QString peer = u"peer-%1"_s.arg(number);
    const auto envelope = crypto::encryptMessageEnvelope(
        u"Message number %1, as long as most of them are."_s.arg(number), devices, devices);
    const QDateTime time = QDateTime(QDate(2024, 5, 1), QTime(8, 0), QTimeZone::utc()).toUTC();
    return {{u"peer"_s, peer},
            {u"from"_s, peer},
            {u"to"_s, user},
            {u"text"_s, envelope.ciphertextBase64},
            {u"iv"_s, envelope.ivBase64},
            {u"encrypted"_s, true},
            {u"recipientKeys"_s, envelope.recipientKeys},
            {u"senderKeys"_s, envelope.senderKeys},
            {u"createdAt"_s, time.addSecs(qint64(number) * -5'000).toString(Qt::ISODateWithMs)}};
}

/// A reply with COUNT conversations whose last messages are sealed.
QByteArray sealedConversations(int count)
{
    const QJsonArray devices{
        QJsonObject{{u"deviceId"_s, device}, {u"publicKeyBase64"_s, crypto::readPublicKeyFile()}}};
    QJsonArray items;
    for (int i = 0; i < count; ++i)
        items.append(conversation(i, devices));
    return QJsonDocument(items).toJson(QJsonDocument::Compact);
}

/// A client that has just signed in.
class Client
{
public:
    Client() : reader(device) { reader.signIn(user); }

    /// From a reply's bytes to the painted list, in milliseconds.
    double show(const QByteArray &body)
    {
        const QByteArray arrived(body.constData(), body.size());
        return bench::millisecondsOf([&] {
            const QJsonArray items = reply.read(arrived).array();
            window.conversations->show(reader.conversationRows(items, ui::Language::English));
            QApplication::sendPostedEvents(); // painting is one of them
        });
    }
    void finish() const
    {
        while (!window.conversations->isSettled())
            QApplication::processEvents();
    }

private:
    bench::ListWindow window{u"dmList"_s};
    net::ReplyCache reply;
    ui::MessageReader reader;
};

void measureFirstReply()
{
    const QByteArray many = sealedConversations(2'000);
    const QByteArray few = sealedConversations(50);
    QList<double> ratios;
    QList<double> longTimes;
    QList<double> shortTimes;
    for (int i = 0; i < runs; ++i) {
        longTimes.append(Client().show(many));
        shortTimes.append(Client().show(few));
        ratios.append(longTimes.last() / shortTimes.last());
    }
    bench::reportRatio("2,000 conversations, first reply's bytes to painted, vs 50", bench::medianOf(ratios),
                       2,
                       QByteArray::number(bench::medianOf(longTimes), 'f', 1) + " ms, 50 of them "
                           + QByteArray::number(bench::medianOf(shortTimes), 'f', 1) + " ms");
}

void measureRefresh()
{
    const QByteArray body = sealedConversations(10'000);
    Client client;
    client.show(body);
    client.finish();
    QList<double> times;
    for (int i = 0; i < runs; ++i)
        times.append(client.show(body));
    bench::inform("unchanged refresh of 10,000 conversations, reply's bytes to painted",
                  QByteArray::number(bench::medianOf(times), 'f', 1) + " ms");
}

} // namespace

int main(int argc, char **argv)
{
    const tests::TestHome home;
    const QApplication application(argc, argv);
    if (!crypto::ensureKeyPair())
        qFatal("No key pair.");
    Client().show(sealedConversations(50)); // fonts and the like, once
    measureFirstReply();
    measureRefresh();
    return 0;
}
