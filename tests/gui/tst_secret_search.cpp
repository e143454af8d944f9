// The search for secrets finds what is planted, in every form that a log or a file may hold it in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "tests/gui/traced_person.h"
#include "tests/support/private_numbers.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/secret_search.h"
#include "tests/support/test_main.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace tideloft::crypto;
using namespace tideloft::tests;

namespace
{

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
}

QByteArray utf16(const QString &text)
{
    return {reinterpret_cast<const char *>(text.utf16()), text.size() * 2};
}

} // namespace

class TestSecretSearch : public QObject
{
    Q_OBJECT

private slots:
    void plantedSecretsAreFound_data();
    void plantedSecretsAreFound();
    void harmlessNeighboursAreNotFound();

private:
    const KeyPair bob = makeKeyPair();
};

void TestSecretSearch::plantedSecretsAreFound_data()
{
    QTest::addColumn<QByteArray>("planted");
    QTest::addColumn<QString>("name");
    const QString &text = receivedTexts.at(1);
    const QByteArray key =
        QByteArray::fromHex("9f1e2d3c4b5a69788796a5b4c3d2e1f00112233445566778899aabbccddeeff0");
    const QByteArray der = fromBase64Text(bob.privateKey);
    QTest::newRow("text") << text.toUtf8() << u"text"_s;
    QTest::newRow("text in 16 bits") << utf16(text) << u"text"_s;
    QTest::newRow("text in Base64") << ("x" + text.toUtf8()).toBase64() << u"text"_s;
    QTest::newRow("text in hexadecimal") << text.toUtf8().toHex() << u"text"_s;
    QTest::newRow("key") << key << u"key"_s;
    for (const char *before : {"", "y", "yy"})
        QTest::addRow("key in Base64 behind \"%s\"", before) << (before + key + "zz").toBase64() << u"key"_s;
    QTest::newRow("key in Base64 in 16 bits") << utf16(QString::fromLatin1(key.toBase64())) << u"key"_s;
    QTest::newRow("key in hexadecimal") << key.toHex().toUpper() << u"key"_s;
    QTest::newRow("private key's encoding") << der << u"private key"_s;
    QTest::newRow("private key's Base64") << der.toBase64() << u"private key"_s;
    for (const QByteArray &number : privateNumbers(der)) {
        for (qsizetype inside = 0; inside + 24 <= number.size(); inside += 37) {
            const qsizetype at = der.indexOf(number) + inside;
            QTest::addRow("24 bytes of the private key at %lld", qlonglong(at))
                << der.mid(at, 24) << u"private key"_s;
            QTest::addRow("24 characters of its Base64 at %lld", qlonglong(at))
                << der.toBase64().mid((at + 2) * 4 / 3, 24) << u"private key"_s;
        }
    }
}

void TestSecretSearch::plantedSecretsAreFound()
{
    QFETCH(const QByteArray, planted);
    QFETCH(const QString, name);
    SecretSearch search;
    search.addText(u"text"_s, receivedTexts.at(1));
    search.addKey(u"key"_s,
                  QByteArray::fromHex("9f1e2d3c4b5a69788796a5b4c3d2e1f00112233445566778899aabbccddeeff0"));
    for (const QByteArray &number : privateNumbers(fromBase64Text(bob.privateKey)))
        search.addLongKey(u"private key"_s, number);
    const QTemporaryDir home;
    QDir(home.path()).mkpath(u"cache/.hidden"_s);
    write(home.filePath(u"cache/.hidden/file"_s), "something before" + planted + "something behind");
    QCOMPARE(search.foundBelow(home.path()), QStringList{u"cache/.hidden/file: "_s + name});
}

// The public half is no secret, and neither is another key.
void TestSecretSearch::harmlessNeighboursAreNotFound()
{
    SecretSearch search;
    for (const QByteArray &number : privateNumbers(fromBase64Text(bob.privateKey)))
        search.addLongKey(u"private key"_s, number);
    const KeyPair other = makeKeyPair();
    QCOMPARE(search.foundIn(bob.publicKey.toUtf8()), QStringList());
    QCOMPARE(search.foundIn(fromBase64Text(bob.publicKey)), QStringList());
    QCOMPARE(search.foundIn(other.privateKey.toUtf8()), QStringList());
}

TIDELOFT_TEST_MAIN(TestSecretSearch)
#include "tst_secret_search.moc"
