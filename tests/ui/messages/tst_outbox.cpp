// From a written text to a sealed message: what waits, for whom it is sealed, and what is said of failures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"
#include "tests/ui/messages/read_messages.h"
#include "ui/messages/outbox.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tideloft;
using namespace tideloft::tests;
using ui::Outbox;

class TestOutbox : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void nothingIsSealedWithoutAText();
    void theTextIsSealedForTheRecipientAndThisDevice();
    void theTextIsSealedOnce();
    void theAccountsKeyServesWhereNoDeviceIsListed();
    void recipientWithoutKeysIsRefused();
    void badKeyIsRefused();
    void anotherSignInForgetsWhatWaited();
    void signingOutGivesUpWhatIsBeingSealed();
    void arrivedTextsComeBackInTheirOrder();
    void listWithoutThisDeviceIsAskedForAgain();

private:
    /// Seals what waits for bob's device, and returns what was announced.
    QList<QVariantList> sealForBob() const;

    KeyPair bobs = makeKeyPair();
    KeyPair mine = makeKeyPair();
    std::unique_ptr<Outbox> outbox;
    std::unique_ptr<QSignalSpy> sealed;
    std::unique_ptr<QSignalSpy> failed;
};

namespace
{

QString opened(const QVariantList &announced, const QString &keys, const KeyPair &pair, const QString &device)
{
    const auto envelope = announced.at(1).value<crypto::EncryptedEnvelope>();
    const QJsonObject body{{u"text"_s, envelope.ciphertextBase64},
                           {u"iv"_s, envelope.ivBase64},
                           {u"recipientKeys"_s, envelope.recipientKeys},
                           {u"senderKeys"_s, envelope.senderKeys}};
    return openedBody(body, keys, pair, device);
}

} // namespace

void TestOutbox::init()
{
    outbox = std::make_unique<Outbox>(thisDevice);
    sealed = std::make_unique<QSignalSpy>(outbox.get(), &Outbox::sealed);
    failed = std::make_unique<QSignalSpy>(outbox.get(), &Outbox::failed);
    outbox->beginSignIn();
    outbox->setOwnKeys({mine.device(thisDevice), mine.device(u"another"_s)});
}

QList<QVariantList> TestOutbox::sealForBob() const
{
    outbox->seal(u"bob"_s, {bobs.device(u"bobs"_s)}, {});
    return *sealed;
}

void TestOutbox::nothingIsSealedWithoutAText()
{
    QVERIFY(sealForBob().isEmpty());
    outbox->write(u"hello"_s);
    outbox->dropWaiting();
    QVERIFY(sealForBob().isEmpty());
    QVERIFY(failed->isEmpty());
}

void TestOutbox::theTextIsSealedForTheRecipientAndThisDevice()
{
    outbox->write(u"hello"_s);
    const QList<QVariantList> announced = sealForBob();
    QCOMPARE(announced.size(), 1);
    QCOMPARE(announced.first().first().toString(), u"bob"_s);
    QCOMPARE(opened(announced.first(), u"recipientKeys"_s, bobs, u"bobs"_s), u"hello"_s);
    QCOMPARE(opened(announced.first(), u"senderKeys"_s, mine, thisDevice), u"hello"_s);
    QCOMPARE(announced.first().at(1).value<crypto::EncryptedEnvelope>().senderKeys.size(), 1);
}

void TestOutbox::theTextIsSealedOnce()
{
    outbox->write(u"hello"_s);
    sealForBob();
    QCOMPARE(sealForBob().size(), 1);
}

void TestOutbox::theAccountsKeyServesWhereNoDeviceIsListed()
{
    outbox->write(u"hello"_s);
    outbox->seal(u"bob"_s, {}, bobs.publicKey);
    QCOMPARE(sealed->size(), 1);
    QCOMPARE(opened(sealed->first(), u"recipientKeys"_s, bobs, u"legacy"_s), u"hello"_s);
}

void TestOutbox::recipientWithoutKeysIsRefused()
{
    outbox->write(u"hello"_s);
    outbox->seal(u"bob"_s, {}, {});
    QVERIFY(sealed->isEmpty());
    QCOMPARE(failed->size(), 1);
    const auto problem = failed->first().first().value<ui::LocalizedText>();
    QCOMPARE(problem.swedish, u"Mottagaren har inga registrerade nycklar."_s);
    QCOMPARE(problem.english, u"Recipient has no registered keys."_s);
    QVERIFY(sealForBob().isEmpty()); // the text does not wait any longer
}

void TestOutbox::badKeyIsRefused()
{
    QJsonObject device = bobs.device(u"bobs"_s);
    device.insert(u"publicKeyBase64"_s, u"AAAA"_s);
    outbox->write(u"hello"_s);
    outbox->seal(u"bob"_s, {device}, {});
    QVERIFY(sealed->isEmpty());
    QCOMPARE(failed->size(), 1);
    const auto problem = failed->first().first().value<ui::LocalizedText>();
    QVERIFY2(problem.swedish.startsWith(u"Kryptering misslyckades: "_s), qPrintable(problem.swedish));
    QVERIFY2(problem.english.startsWith(u"Encryption failed: "_s), qPrintable(problem.english));
    QVERIFY(outbox->takeArrived().isEmpty());
}

void TestOutbox::anotherSignInForgetsWhatWaited()
{
    outbox->write(u"hello"_s);
    outbox->beginSignIn();
    QVERIFY(sealForBob().isEmpty());
}

void TestOutbox::signingOutGivesUpWhatIsBeingSealed()
{
    const QSignalSpy busy(outbox.get(), &Outbox::sealingChanged);
    QJsonArray devices;
    for (int i = 0; i < 1'000; ++i) // takes many slices
        devices.append(bobs.device(QString::number(i)));
    outbox->write(u"hello"_s);
    outbox->seal(u"bob"_s, devices, {});
    QCOMPARE(busy, QList<QVariantList>{{true}});
    outbox->endSignIn();
    QCOMPARE(busy, (QList<QVariantList>{{true}, {false}}));
    QCoreApplication::processEvents();
    QVERIFY(sealed->isEmpty());
}

void TestOutbox::arrivedTextsComeBackInTheirOrder()
{
    for (const QString &text : {u"one"_s, u"two"_s, u"three"_s}) {
        outbox->write(text);
        sealForBob();
    }
    QCOMPARE(outbox->takeArrived(), u"one"_s);
    outbox->dropFailed();
    QCOMPARE(outbox->takeArrived(), u"three"_s);
    QVERIFY(outbox->takeArrived().isEmpty());
    outbox->write(u"four"_s);
    sealForBob();
    outbox->forgetSent();
    QVERIFY(outbox->takeArrived().isEmpty());
}

void TestOutbox::listWithoutThisDeviceIsAskedForAgain()
{
    const QSignalSpy outdated(outbox.get(), &Outbox::ownKeysOutdated);
    outbox->beginSignIn();
    outbox->setOwnKeys({mine.device(u"another"_s)});
    QVERIFY(outdated.isEmpty());
    outbox->setDeviceRegistered();
    QCOMPARE(outdated.size(), 1);
}

TIDELOFT_TEST_MAIN(TestOutbox)
#include "tst_outbox.moc"
