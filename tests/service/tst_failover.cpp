// The server dies under load and its standby takes over: the service finds it, and what was acknowledged is
// there once.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "tests/service/daemon.h"
#include "tests/service/message_bodies.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/service/service_call.h"
#include "tests/service/stored_session.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"

#include <QElapsedTimer>

#include <array>
#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestFailover : public QObject
{
    Q_OBJECT

private slots:
    void standbyTakesOver_data();
    void standbyTakesOver();

private:
    static constexpr std::size_t writerCount = 32;

    /// Half of them send what a nonce tells from all other messages, and send it again until it is
    /// acknowledged. The others send plain texts once each, because nobody could tell two of them apart.
    struct Writer {
        QString name;
        bool repeats = false;
        QByteArray cookie;
        QStringList acknowledged;
        QSet<QString> unknown; ///< sent, and not acknowledged
    };
    struct Load {
        quint16 port = 0;
        std::atomic<bool> over = false;
        std::atomic<int> acknowledged = 0;
        std::atomic<int> refused = 0;
        std::atomic<int> others = 0; ///< answers that are neither success nor "try again later"
    };
    static std::array<Writer, writerCount> makeWriters(const QString &place);
    static bool send(Load &load, const Writer &writer, const QString &text);
    static void write(Load &load, Writer &writer);
    static void check(Database &database, const Writer &writer);
};

std::array<TestFailover::Writer, TestFailover::writerCount> TestFailover::makeWriters(const QString &place)
{
    Database database(place);
    std::array<Writer, writerCount> writers;
    for (std::size_t i = 0; i < writers.size(); ++i) {
        writers[i].name = u"user%1"_s.arg(i);
        writers[i].repeats = i % 2 == 0;
        writers[i].cookie = storeSession(database, writers[i].name);
    }
    return writers;
}

bool TestFailover::send(Load &load, const Writer &writer, const QString &text)
{
    const QByteArray padded = text.toLatin1().rightJustified(24, '0');
    QJsonObject message = plainMessage(writer.name, QString::fromLatin1(padded));
    if (writer.repeats) {
        message = sealedMessage(writer.name, QString::fromLatin1(padded.toBase64()));
        message.insert(u"iv"_s, QString::fromLatin1(padded.last(12).toBase64()));
    }
    const int status = call(load.port, "POST", "/api/chat/send", writer.cookie, message).status;
    load.refused += status == 503 ? 1 : 0;
    load.others += status != 503 && status != 201 ? 1 : 0;
    load.acknowledged += status == 201 ? 1 : 0;
    return status == 201;
}

void TestFailover::write(Load &load, Writer &writer)
{
    for (int number = 0; !load.over; ++number) {
        const QString text = QString::number(number);
        bool stored = send(load, writer, text);
        while (!stored && writer.repeats && !load.over)
            stored = send(load, writer, text);
        if (stored)
            writer.acknowledged << text;
        else
            writer.unknown << text;
    }
}

// What nobody knows of is there at most once.
void TestFailover::check(Database &database, const Writer &writer)
{
    Rows rows = database.run(u"SELECT text FROM messages JOIN users ON users.id = sender_id WHERE name = ?"
                             " ORDER BY position, messages.id"_s,
                             {writer.name});
    QStringList kept;
    QSet<QString> once;
    while (rows.next()) {
        const QByteArray text = rows.value(0).toByteArray();
        const QString number =
            QString::number((writer.repeats ? QByteArray::fromBase64(text) : text).toInt());
        QVERIFY2(!once.contains(number), qPrintable(number));
        once << number;
        if (!writer.unknown.contains(number))
            kept << number;
    }
    QCOMPARE(kept, writer.acknowledged);
}

void TestFailover::standbyTakesOver_data()
{
    QTest::addColumn<int>("round");
    const int count = rounds(1, 10);
    for (int round = 1; round <= count; ++round)
        QTest::addRow("%d", round) << round;
}

void TestFailover::standbyTakesOver()
{
    PostgresqlCluster primary;
    PostgresqlCluster standby({u"fsync=off"_s}, PostgresqlCluster::Beginning::Bare);
    standby.follow(primary);
    QVERIFY(primary.run(u"ALTER SYSTEM SET synchronous_standby_names = '*'"_s));
    QVERIFY(primary.run(u"SELECT pg_reload_conf()"_s));
    QTRY_VERIFY(primary.run(u"SELECT 1 / count(*) FROM pg_stat_replication WHERE sync_state = 'sync'"_s));
    const QString place =
        u"postgresql://tideloft@127.0.0.1:%1,127.0.0.1:%2/postgres"_s.arg(primary.port()).arg(standby.port());
    Daemon service;
    QVERIFY(service.startPlain({u"--database"_s, place}));
    Load load;
    load.port = service.port();
    std::array<Writer, writerCount> writers = makeWriters(place);
    std::vector<std::thread> threads;
    threads.reserve(writers.size());
    for (Writer &writer : writers)
        threads.emplace_back([&] { write(load, writer); });
    const auto more = [&load](int count) { return load.acknowledged >= count; };
    const bool begun = QTest::qWaitFor([&] { return more(200); }, 60'000);
    primary.stop(SIGKILL);
    const bool promoted = standby.run(u"SELECT pg_promote()"_s);
    QElapsedTimer since;
    since.start();
    const int before = load.acknowledged;
    const bool first = QTest::qWaitFor([&] { return more(before + 1); }, 60'000);
    const qint64 firstAfter = since.elapsed();
    const bool goesOn = QTest::qWaitFor([&] { return more(before + 200); }, 60'000);
    load.over = true;
    for (std::thread &thread : threads)
        thread.join();
    QVERIFY(begun && promoted && first && goesOn);
    qInfo("%d sends were acknowledged and %d refused; the first after the promotion came after %lld ms",
          load.acknowledged.load(), load.refused.load(), static_cast<long long>(firstAfter));
    QCOMPARE(load.others.load(), 0);
    Database database(place);
    for (const Writer &writer : writers)
        check(database, writer);
}

TIDELOFT_TEST_MAIN(TestFailover)
#include "tst_failover.moc"
