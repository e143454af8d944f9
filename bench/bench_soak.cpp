// Eight hours of refreshes without the waiting between them: what the window keeps of them.
//
//   bench_soak [--rounds N]
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"

#include "bench/figures.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_home.h"

#include <QApplication>
#include <QDir>
#include <QNetworkReply>
#include <QSet>
#include <QTimeZone>

#include <algorithm>

#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace tideloft;

namespace
{

constexpr int conversationCount = 40;
constexpr int messageCount = 200;
constexpr int defaultRounds = 9600; // every 3 seconds for 8 hours
constexpr int roundsForNews = 60;   // the newest message changes about every 3 minutes
const QString peer = u"peer0"_s;

// Every reply is sent an event at least when it is to be deleted, and so comes by here.
class ReplyCount : public QObject
{
public:
    [[nodiscard]] qsizetype living() const { return replies.size(); }
    [[nodiscard]] qsizetype seen() const { return all; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (qobject_cast<QNetworkReply *>(watched) && !replies.contains(watched)) {
            replies.insert(watched);
            ++all;
            connect(watched, &QObject::destroyed, this, [this](QObject *gone) { replies.remove(gone); });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QSet<QObject *> replies;
    qsizetype all = 0;
};

// What can be left over.
struct Remains {
    double residentKb = 0;
    double allocatedKb = 0;
    qsizetype replies = 0;
    qsizetype widgets = 0;
    qsizetype files = 0;
    qsizetype sockets = 0;
};

// The toolkit opens that many connections to one host and keeps them for the next requests. Both ends of each
// are in this process, and the socket that listens.
constexpr qsizetype mostConnections = 6;
constexpr qsizetype mostSockets = 2 * mostConnections + 1;

double residentKb()
{
    QFile file(u"/proc/self/smaps_rollup"_s);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The kernel does not tell the resident memory.");
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("Rss:"))
            return line.simplified().split(' ').at(1).toDouble();
    }
    return 0;
}

Remains remainsNow(const ReplyCount &replies)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    malloc_trim(0);
    Remains now{residentKb(), static_cast<double>(mallinfo2().uordblks) / 1024, replies.living(),
                QApplication::allWidgets().size()};
    const auto descriptors =
        QDir(u"/proc/self/fd"_s).entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    now.sockets = std::ranges::count_if(
        descriptors, [](const QFileInfo &file) { return file.symLinkTarget().contains("socket:"_L1); });
    now.files = descriptors.size() - now.sockets;
    return now;
}

QJsonArray conversations(const QJsonArray &history)
{
    QJsonArray items;
    for (int i = 0; i < conversationCount; ++i)
        items.append(QJsonObject{{u"peer"_s, u"peer%1"_s.arg(i)}, {u"lastMessage"_s, history.at(i)}});
    return items;
}

QJsonArray sealedHistory(const QString &deviceId)
{
    const tests::KeyPair pair = tests::ownKeyPair();
    const QDateTime start = QDateTime(QDate(2026, 1, 5), QTime(9, 0), QTimeZone::utc()).toUTC();
    QJsonArray items;
    for (int i = 0; i < messageCount; ++i) {
        QJsonObject item = tests::sealedMessage(peer, u"Message number %1."_s.arg(i), pair, deviceId);
        item.insert(u"createdAt"_s, start.addSecs(i * 40).toString(Qt::ISODateWithMs));
        items.append(item);
    }
    return items;
}

class Soak
{
public:
    Soak();
    void run(int rounds);

private:
    void refreshOnce(int round);

    ReplyCount replies;
    tests::ChatWindow chat;
    QByteArray history;
    QByteArray newerHistory;
};

Soak::Soak()
{
    qApp->installEventFilter(&replies);
    if (!chat.signIn())
        qFatal("Nobody could sign in.");
    QJsonArray items = sealedHistory(chat.deviceId());
    history = tests::json(items);
    items.append(tests::sealedMessage(peer, u"News."_s, tests::ownKeyPair(), chat.deviceId()));
    newerHistory = tests::json(items);
    if (!chat.open(peer, QJsonDocument::fromJson(history).array())
        || !chat.showConversations(conversations(items)))
        qFatal("The conversation did not open.");
}

// Two requests each. The next refresh is asked for as soon as both have reached the service, not later.
void Soak::refreshOnce(int round)
{
    const bool news = round / roundsForNews % 2 == 1;
    chat.service.answer("GET /api/chat/history/" + peer.toUtf8(), 200, news ? newerHistory : history);
    chat.service.clear();
    const qsizetype before = replies.seen();
    chat.refresh();
    while (chat.service.requests().size() < 2 || replies.seen() < before + 2)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void Soak::run(int rounds)
{
    const int warmUp = std::max(2 * roundsForNews, rounds / 20);
    for (int round = 0; round < warmUp; ++round)
        refreshOnce(round);
    refreshOnce(0);
    if (!chat.settle())
        qFatal("The service is gone.");
    const Remains before = remainsNow(replies);
    for (int round = 0; round < rounds; ++round)
        refreshOnce(round);
    refreshOnce(0);
    if (!chat.settle())
        qFatal("The service is gone.");
    const Remains after = remainsNow(replies);

    const double growth = (after.residentKb / before.residentKb - 1) * 100;
    const QByteArray suffix = " after " + QByteArray::number(rounds) + " refreshes";
    bench::report("memory growth" + suffix,
                  QByteArray::number(growth, 'f', 2) + " % (resident "
                      + QByteArray::number(before.residentKb / 1024, 'f', 1) + " to "
                      + QByteArray::number(after.residentKb / 1024, 'f', 1) + " MiB, allocated "
                      + QByteArray::number(before.allocatedKb / 1024, 'f', 2) + " to "
                      + QByteArray::number(after.allocatedKb / 1024, 'f', 2) + " MiB)",
                  "under 2 %", growth < 2);
    bench::report(
        "replies, widgets and open files left over" + suffix,
        QByteArray::number(after.replies) + ", " + QByteArray::number(after.widgets - before.widgets) + ", "
            + QByteArray::number(after.files - before.files),
        "0, 0, 0", after.replies == 0 && after.widgets <= before.widgets && after.files <= before.files);
    bench::report("sockets" + suffix, QByteArray::number(after.sockets),
                  "at most " + QByteArray::number(mostSockets), after.sockets <= mostSockets);
}

int roundsFrom(const QStringList &arguments)
{
    const qsizetype place = arguments.indexOf(u"--rounds"_s);
    return place < 0 ? defaultRounds : std::max(1, arguments.value(place + 1).toInt());
}

} // namespace

int main(int argc, char **argv)
{
    const tests::TestHome home;
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"TideLoft"_s);
    QCoreApplication::setOrganizationName(u"TideLoft"_s);
    QApplication::setCursorFlashTime(0);
    Soak soak;
    soak.run(roundsFrom(QCoreApplication::arguments()));
    return 0;
}
