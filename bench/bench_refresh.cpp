// A refresh of the open history as a whole: the reply's bytes parsed, its messages opened, its rows compared,
// shown and scrolled, as the client does it every three seconds.
//     QT_QPA_PLATFORM=offscreen bench_refresh
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/list_window.h"
#include "bench/naive_rows.h"
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/decryption_cache.h"
#include "crypto/messages/envelope.h"
#include "crypto/messages/open_message.h"
#include "net/reply_cache.h"
#include "tests/support/test_home.h"
#include "ui/messages/history_cache.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tideloft;

namespace
{

constexpr int runs = 5;
constexpr int messageCount = 1000;
const QString user = u"alice"_s;
const QString device = u"2f1c9a54-60cf-4d6b-8a57-0d6f2e7b9c11"_s;

QJsonObject sealedItem(int number, const QJsonArray &devices)
{
    const auto envelope = crypto::encryptMessageEnvelope(
        u"Message number %1, as long as most of them are."_s.arg(number), devices, devices);
    const bool isMine = number / 3 % 2;
    return {{u"id"_s, number},
            {u"from"_s, isMine ? user : u"bob"_s},
            {u"to"_s, isMine ? u"bob"_s : user},
            {u"text"_s, envelope.ciphertextBase64},
            {u"iv"_s, envelope.ivBase64},
            {u"encrypted"_s, true},
            {u"recipientKeys"_s, envelope.recipientKeys},
            {u"senderKeys"_s, envelope.senderKeys},
            {u"createdAt"_s, QDateTime(QDate(2024, 5, 1), QTime(8, 0), QTimeZone::utc())
                                 .toUTC()
                                 .addSecs(number * 97)
                                 .toString(Qt::ISODateWithMs)}};
}

QByteArray historyBody(const QJsonArray &items)
{
    return QJsonDocument(items).toJson(QJsonDocument::Compact);
}

/// What the client keeps from one refresh to the next.
struct Client {
    net::ReplyCache reply;
    ui::HistoryCache opened;
    crypto::DecryptionCache cache;
};

ui::Reading readingWith(const ui::OpenMessage &open)
{
    return {user, open, QDateTime::currentDateTime(), ui::Language::English};
}

void refresh(Client &client, const QByteArray &body, ui::HistoryList *list)
{
    const QJsonArray items = client.reply.read(body).array();
    crypto::rereadPrivateKey(user, device, client.cache);
    const auto open = [&](const QJsonObject &item) {
        return crypto::decryptMessageText(item, user, device, client.cache);
    };
    const auto reading = readingWith(open);
    const auto records = client.opened.records(items, reading, client.cache.generation());
    list->show(ui::historyRows(records, reading.now.date(), reading.language));
}

void refreshNaively(const QByteArray &body, QListWidget *list)
{
    const auto reading =
        readingWith([](const QJsonObject &item) { return crypto::decryptMessageText(item, user, device); });
    const auto records = ui::displayRecords(QJsonDocument::fromJson(body).array(), reading);
    bench::showHistoryNaively(list, ui::historyRows(records, reading.now.date(), reading.language));
}

/// The middle one of several times. Every refresh gets bytes of its own, as from the network.
double median(const std::function<QByteArray()> &body, const std::function<void(const QByteArray &)> &show)
{
    QList<double> times;
    for (int i = 0; i < runs; ++i) {
        const QByteArray arrived = body();
        times.append(bench::drawnMilliseconds([&] { show(arrived); }));
    }
    std::sort(times.begin(), times.end());
    return times.at(runs / 2);
}

void report(const QByteArray &what, double ours, double naive, double target)
{
    const QByteArray times =
        QByteArray::number(ours, 'f', 2) + " ms, naive " + QByteArray::number(naive, 'f', 0) + " ms";
    bench::report(what + " vs the naive refresh",
                  QByteArray::number(naive / ours, 'f', 0) + " times (" + times + ')',
                  "at least " + QByteArray::number(target, 'f', 0) + " times", naive >= target * ours);
}

void measure()
{
    if (!crypto::ensureKeyPair())
        qFatal("No key pair.");
    const QJsonArray devices{
        QJsonObject{{u"deviceId"_s, device}, {u"publicKeyBase64"_s, crypto::readPublicKeyFile()}}};
    QJsonArray items;
    for (int i = 0; i < messageCount; ++i)
        items.append(sealedItem(i, devices));
    const auto body = [&] { return historyBody(items); };
    const auto longer = [&] {
        items.append(sealedItem(int(items.size()), devices));
        return body();
    };

    bench::ListWindow window(u"messageList"_s);
    Client client;
    const auto show = [&](const QByteArray &bytes) { refresh(client, bytes, window.history); };
    show(body());
    const double unchanged = median(body, show);
    const double appended = median(longer, show);
    const double naive = median(body, [&](const QByteArray &bytes) { refreshNaively(bytes, window.list); });
    report("unchanged history refresh, 1,000 sealed messages (JSON in, opened, compared, scrolled)",
           unchanged, naive, 500);
    bench::report("the same in GUI thread time", QByteArray::number(unchanged, 'f', 2) + " ms", "under 16 ms",
                  unchanged < 16);
    report("one new sealed message at the end of 1,000 (JSON in to scrolled)", appended, naive, 200);
}

} // namespace

int main(int argc, char **argv)
{
    const tests::TestHome home;
    const QApplication application(argc, argv);
    measure();
    return 0;
}
