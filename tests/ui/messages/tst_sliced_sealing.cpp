// Sealing in slices: at once for few devices, between events for many, and given up without a word.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"
#include "ui/messages/sliced_sealing.h"

#include <QJsonArray>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;
using namespace tideloft::tests;

class TestSlicedSealing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void fewDevicesAreDoneAtOnce();
    void manyDevicesAreDoneFromTheEventLoop();
    void whatIsGivenUpIsNotHandedOver();
    void theNextMessageTakesThePlaceOfTheLast();
    void theReceiverMayBeginTheNextMessage();

private:
    QJsonArray devices(int count) const;
    void begin(const QString &text, int deviceCount);

    KeyPair pair = makeKeyPair();
    std::unique_ptr<SlicedSealing> sealing;
    QList<tideloft::crypto::EncryptedEnvelope> done;
};

void TestSlicedSealing::init()
{
    sealing = std::make_unique<SlicedSealing>();
    done.clear();
}

QJsonArray TestSlicedSealing::devices(int count) const
{
    QJsonArray all;
    for (int i = 0; i < count; ++i)
        all.append(pair.device(u"device %1"_s.arg(i)));
    return all;
}

void TestSlicedSealing::begin(const QString &text, int deviceCount)
{
    sealing->begin(text, devices(deviceCount), {}, [this](const auto &envelope) { done.append(envelope); });
}

void TestSlicedSealing::fewDevicesAreDoneAtOnce()
{
    const QSignalSpy busy(sealing.get(), &SlicedSealing::busyChanged);
    begin(u"hello"_s, 8);
    QCOMPARE(done.size(), 1);
    QVERIFY(done.first().ok);
    QCOMPARE(done.first().recipientKeys.size(), 8);
    QVERIFY(!sealing->isBusy());
    QCOMPARE(busy.size(), 0);
}

// So many that no computer has them all within a slice of milliseconds.
void TestSlicedSealing::manyDevicesAreDoneFromTheEventLoop()
{
    const QSignalSpy busy(sealing.get(), &SlicedSealing::busyChanged);
    begin(u"hello"_s, 3'000);
    QVERIFY(done.isEmpty());
    QVERIFY(sealing->isBusy());
    QCOMPARE(busy.size(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(done.size(), 1, 60'000);
    QVERIFY(done.first().ok);
    QCOMPARE(done.first().recipientKeys.size(), 3'000);
    QVERIFY(!sealing->isBusy());
    QCOMPARE(busy.size(), 2);
}

void TestSlicedSealing::whatIsGivenUpIsNotHandedOver()
{
    const QSignalSpy busy(sealing.get(), &SlicedSealing::busyChanged);
    begin(u"hello"_s, 3'000);
    sealing->cancel();
    QVERIFY(!sealing->isBusy());
    QCOMPARE(busy.size(), 2);
    sealing->cancel(); // and nothing more
    QCOMPARE(busy.size(), 2);
    QCoreApplication::processEvents();
    QVERIFY(done.isEmpty());
}

void TestSlicedSealing::theNextMessageTakesThePlaceOfTheLast()
{
    begin(u"first"_s, 3'000);
    begin(u"second"_s, 1);
    QCoreApplication::processEvents();
    QCOMPARE(done.size(), 1);
    QCOMPARE(done.first().recipientKeys.size(), 1);
    const QJsonObject body{{u"text"_s, done.first().ciphertextBase64},
                           {u"iv"_s, done.first().ivBase64},
                           {u"recipientKeys"_s, done.first().recipientKeys}};
    QCOMPARE(openedBody(body, u"recipientKeys"_s, pair, u"device 0"_s), u"second"_s);
}

void TestSlicedSealing::theReceiverMayBeginTheNextMessage()
{
    sealing->begin(u"first"_s, devices(1), {}, [this](const auto &envelope) {
        done.append(envelope);
        begin(u"second"_s, 2);
    });
    QCOMPARE(done.size(), 2);
    QCOMPARE(done.at(0).recipientKeys.size(), 1);
    QCOMPARE(done.at(1).recipientKeys.size(), 2);
}

TIDELOFT_TEST_MAIN(TestSlicedSealing)
#include "tst_sliced_sealing.moc"
