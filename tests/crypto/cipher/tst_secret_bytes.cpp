// Secrets are overwritten when they leave use.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/secret_bytes.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <optional>

using namespace tideloft::crypto;

namespace
{

QByteArray freshSecret()
{
    return {32, 'k'};
}

} // namespace

class TestSecretBytes : public QObject
{
    Q_OBJECT

private slots:
    void destructionWipesTheSecret();
    void wipeEmptiesTheObject();
    void moveLeavesOneOwner();
    void sharedOriginalIsNotTouched();
    void literalIsNotWrittenTo();
    void emptySecretIsHarmless();
    void whatWasCutOffIsWipedToo();
    void whatWasTakenFromItsBeginningIsWipedToo();
    void whatWasTrimmedInPlaceIsWipedToo();
    void releasedSecretIsLeftAlone();
    void textIsWipedAsBytesAre();
};

void TestSecretBytes::destructionWipesTheSecret()
{
    std::optional<SecretBytes> secret(freshSecret());
    const QByteArray witness = secret->view(); // shares the buffer, and keeps it alive
    QCOMPARE(witness, freshSecret());
    secret.reset();
    QCOMPARE(witness, QByteArray(32, '\0'));
}

void TestSecretBytes::wipeEmptiesTheObject()
{
    SecretBytes secret(freshSecret());
    const QByteArray witness = secret.view();
    secret.wipe();
    QVERIFY(secret.isEmpty());
    QCOMPARE(witness, QByteArray(32, '\0'));
}

void TestSecretBytes::moveLeavesOneOwner()
{
    std::optional<SecretBytes> first(freshSecret());
    std::optional<SecretBytes> second(std::move(*first));
    const QByteArray witness = second->view();
    first.reset();
    QCOMPARE(witness, freshSecret());
    second.reset();
    QCOMPARE(witness, QByteArray(32, '\0'));
}

void TestSecretBytes::sharedOriginalIsNotTouched()
{
    const QByteArray original = freshSecret();
    {
        const SecretBytes secret{QByteArray(original)};
        QCOMPARE(secret.view(), original);
    }
    QCOMPARE(original, freshSecret());
}

void TestSecretBytes::literalIsNotWrittenTo()
{
    const SecretBytes secret(QByteArrayLiteral("read-only memory"));
    QCOMPARE(secret.view(), QByteArray("read-only memory"));
}

void TestSecretBytes::emptySecretIsHarmless()
{
    SecretBytes secret{QByteArray()};
    QVERIFY(secret.isEmpty());
    secret.wipe();
    QVERIFY(secret.isEmpty());
}

void TestSecretBytes::whatWasCutOffIsWipedToo()
{
    SecretBytes secret(freshSecret());
    secret.buffer().truncate(4);
    const QByteArray witness = secret.view();
    const auto cutOff = QByteArray::fromRawData(witness.constData() + 5, 27); // behind the new end's zero
    QCOMPARE(cutOff, QByteArray(27, 'k'));
    secret.wipe();
    QCOMPARE(witness, QByteArray(4, '\0'));
    QCOMPARE(cutOff, QByteArray(27, '\0'));
}

// The toolkit moves nothing then: the text begins later in its buffer.
void TestSecretBytes::whatWasTakenFromItsBeginningIsWipedToo()
{
    SecretBytes secret(freshSecret());
    const auto buffer = QByteArray::fromRawData(secret.view().constData(), 32);
    secret.buffer().remove(0, 8);
    const QByteArray witness = secret.view();
    QCOMPARE(witness.constData(), buffer.constData() + 8);
    QCOMPARE(buffer, freshSecret());
    secret.wipe();
    QCOMPARE(buffer, QByteArray(32, '\0'));
}

// As the private key's file is trimmed when its text begins with a blank: moved down in its own buffer.
void TestSecretBytes::whatWasTrimmedInPlaceIsWipedToo()
{
    QByteArray read = QByteArray(1, ' ') + freshSecret() + QByteArray(8, ' ');
    const char *place = read.constData();
    SecretBytes secret(std::move(read).trimmed());
    QCOMPARE(secret.view(), freshSecret());
    const QByteArray witness = secret.view(); // keeps the buffer
    QCOMPARE(witness.size(), freshSecret().size());
    const auto buffer = QByteArray::fromRawData(place, 41);
    QVERIFY(buffer.contains('k'));
    secret.wipe();
    QCOMPARE(buffer, QByteArray(41, '\0'));
}

void TestSecretBytes::releasedSecretIsLeftAlone()
{
    QByteArray released;
    {
        SecretBytes secret(freshSecret());
        released = secret.release();
        QVERIFY(secret.isEmpty());
    }
    QCOMPARE(released, freshSecret());
}

void TestSecretBytes::textIsWipedAsBytesAre()
{
    std::optional<SecretText> secret(QString(32, u'k'));
    const QString witness = secret->view();
    QCOMPARE(witness, QString(32, u'k'));
    secret.reset();
    QCOMPARE(witness, QString(32, QChar(0)));
}

TIDELOFT_TEST_MAIN(TestSecretBytes)
#include "tst_secret_bytes.moc"
