// Digests of what is sealed: every character and every border counts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/sealed_texts.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace Qt::StringLiterals;

class TestSealedTexts : public QObject
{
    Q_OBJECT

private slots:
    void digestIsTheSha256OfTheText();
    void everyCharacterCounts();
    void lengthsPartTheTexts();
};

// As another implementation computes it from the text in UTF-16.
void TestSealedTexts::digestIsTheSha256OfTheText()
{
    QCOMPARE(digestOf(u"abc"_s).toHex(),
             QByteArray("13e228567e8249fce53337f25d7970de3bd68ab2653424c7b8f9fd05e33caedf"));
}

void TestSealedTexts::everyCharacterCounts()
{
    const QByteArray digest = digestOf(u"abc"_s);
    QCOMPARE(digestOf(u"abc"_s), digest);
    for (const QString &other : {u"abd"_s, u"Abc"_s, u"ab"_s, u"abc "_s, u"abc\0"_s, u"ab\x163"_s, QString()})
        QVERIFY2(digestOf(other) != digest, qPrintable(other));
}

void TestSealedTexts::lengthsPartTheTexts()
{
    const QByteArray digest = digestOf({.text = u"c"_s, .iv = u"b"_s, .wrappedKey = u"a"_s});
    QCOMPARE(digestOf({.text = u"c"_s, .iv = u"b"_s, .wrappedKey = u"a"_s}), digest);
    QVERIFY(digestOf({.text = u"c"_s, .iv = {}, .wrappedKey = u"ab"_s}) != digest);
    QVERIFY(digestOf({.text = {}, .iv = u"bc"_s, .wrappedKey = u"a"_s}) != digest);
    QVERIFY(digestOf({.text = u"b"_s, .iv = u"c"_s, .wrappedKey = u"a"_s}) != digest);
}

TIDELOFT_TEST_MAIN(TestSealedTexts)
#include "tst_sealed_texts.moc"
