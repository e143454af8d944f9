// Secrets are overwritten when they leave use.
#include "crypto/secret_bytes.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <optional>

using namespace tideloft::crypto;

namespace
{

QByteArray freshSecret()
{
    return QByteArray(32, 'k');
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

TIDELOFT_TEST_MAIN(TestSecretBytes)
#include "tst_secret_bytes.moc"
