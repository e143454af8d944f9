// Unwrapping of content keys: with which private key, and when that is parsed.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/key_unwrapping.h"
#include "tests/support/crypto/reading.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestKeyUnwrapping : public QObject
{
    Q_OBJECT

private slots:
    void privateKeyIsParsedOnce();
    void failureLeavesTheParsedKeyFitForUse();
};

void TestKeyUnwrapping::privateKeyIsParsedOnce()
{
    KeyUnwrapping unwrapping;
    const QByteArray wrapped = fromBase64Text(wrappedKeyOf(sealedWith(contentKey, "hi")));
    QString error;
    QVERIFY(unwrapping.unwrap("no key", wrapped, &error).isEmpty());
    QVERIFY2(error.startsWith(u"Could not parse private key: error:"_s), qPrintable(error));
    QVERIFY(!unwrapping.hasPrivateKey());
    QCOMPARE(unwrapping.unwrap(publishedPrivateKey(), wrapped, nullptr), contentKey);
    QVERIFY(unwrapping.hasPrivateKey());
    QCOMPARE(unwrapping.unwrap("not looked at any more", wrapped, nullptr), contentKey);
    unwrapping.clear();
    QVERIFY(unwrapping.unwrap("no key", wrapped, nullptr).isEmpty());
}

void TestKeyUnwrapping::failureLeavesTheParsedKeyFitForUse()
{
    KeyUnwrapping unwrapping;
    const QByteArray wrapped = fromBase64Text(wrappedKeyOf(sealedWith(contentKey, "hi")));
    QString error;
    QVERIFY(unwrapping.unwrap(publishedPrivateKey(), wrapped.chopped(1), &error).isEmpty());
    QVERIFY2(error.startsWith(u"RSA-OAEP decrypt failed: error:"_s), qPrintable(error));
    QCOMPARE(unwrapping.unwrap({}, wrapped, nullptr), contentKey);
}

TIDELOFT_TEST_MAIN(TestKeyUnwrapping)
#include "tst_key_unwrapping.moc"
