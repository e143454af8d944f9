// What is said when libcrypto fails at what it never fails at: each of its calls in turn.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/aes_gcm.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "tests/support/crypto/failing_libcrypto.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <functional>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestFailingLibcrypto : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { removeDataDir(); }
    void cleanupTestCase() { removeDataDir(); }
    void makingAPair_data();
    void makingAPair();
    void sealing_data();
    void sealing();
    void opening_data();
    void opening();
    void wrapping_data();
    void wrapping();
    void readingPem_data();
    void readingPem();
    void unwrapping_data();
    void unwrapping();

private:
    static void addColumns();
    static void addRow(const char *call, int successesBefore, const char *text);
    static QString expected() { return *static_cast<QString *>(QTest::qData("text", QMetaType::QString)); }
    /// What OPERATION says when the call of this row fails. It has to be reached, and to give nothing.
    static QString errorOf(const std::function<bool(QString *)> &operation);

    const QByteArray key = QByteArray(32, 'k');
    const QByteArray nonce = QByteArray(12, 'n');
    QByteArray sealed;
    QByteArray wrapped;
};

void TestFailingLibcrypto::initTestCase()
{
    sealed = aesGcmEncrypt(key, nonce, "text");
    wrapped = rsaOaepEncrypt(publicKeyOf(publishedPrivateKey()), key);
    QVERIFY(!sealed.isEmpty() && !wrapped.isEmpty());
}

void TestFailingLibcrypto::addColumns()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<int>("successesBefore");
    QTest::addColumn<QString>("text");
}

void TestFailingLibcrypto::addRow(const char *call, int successesBefore, const char *text)
{
    QTest::addRow("%s after %d", call, successesBefore)
        << QByteArray(call) << successesBefore << QString::fromLatin1(text);
}

QString TestFailingLibcrypto::errorOf(const std::function<bool(QString *)> &operation)
{
    QFETCH(const QByteArray, call);
    QFETCH(const int, successesBefore);
    const FailingCall failing(call, successesBefore);
    QString error;
    const bool gaveSomething = operation(&error);
    if (!FailingCall::hasFailed())
        return u"it was not called that often"_s;
    return gaveSomething ? u"it gave something"_s : error;
}

void TestFailingLibcrypto::makingAPair_data()
{
    addColumns();
    addRow("EVP_PKEY_CTX_new_id", 0, "Could not create RSA keygen context: Unknown OpenSSL error");
    addRow("EVP_PKEY_keygen_init", 0, "RSA keygen init failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_CTX_set_rsa_keygen_bits", 0, "RSA keygen bits failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_keygen", 0, "RSA keygen failed: Unknown OpenSSL error");
    addRow("i2d_PrivateKey", 0, "Could not encode private key.");
    addRow("i2d_PrivateKey", 1, "Could not encode private key.");
    addRow("i2d_PUBKEY", 0, "Could not encode public key.");
    addRow("i2d_PUBKEY", 1, "Could not encode public key.");
}

void TestFailingLibcrypto::makingAPair()
{
    QCOMPARE(errorOf([](QString *error) { return generateKeyPair(error); }), expected());
    QVERIFY(!privateKeyExists());
    QVERIFY(!publicKeyExists());
}

void TestFailingLibcrypto::sealing_data()
{
    addColumns();
    addRow("EVP_CIPHER_CTX_new", 0, "Could not create AES-GCM context: Unknown OpenSSL error");
    for (const int initialisation : {0, 1})
        addRow("EVP_EncryptInit_ex", initialisation, "AES-GCM encrypt update failed: Unknown OpenSSL error");
    addRow("EVP_CIPHER_CTX_ctrl", 0, "AES-GCM encrypt update failed: Unknown OpenSSL error");
    addRow("EVP_EncryptUpdate", 0, "AES-GCM encrypt update failed: Unknown OpenSSL error");
    addRow("EVP_EncryptFinal_ex", 0, "AES-GCM encrypt final failed: Unknown OpenSSL error");
    addRow("EVP_CIPHER_CTX_ctrl", 1, "AES-GCM get tag failed: Unknown OpenSSL error");
}

void TestFailingLibcrypto::sealing()
{
    const auto seal = [this](QString *error) { return !aesGcmEncrypt(key, nonce, "text", error).isEmpty(); };
    QCOMPARE(errorOf(seal), expected());
}

void TestFailingLibcrypto::opening_data()
{
    addColumns();
    addRow("EVP_CIPHER_CTX_new", 0, "Could not create AES-GCM context: Unknown OpenSSL error");
    for (const int initialisation : {0, 1})
        addRow("EVP_DecryptInit_ex", initialisation, "AES-GCM decrypt update failed: Unknown OpenSSL error");
    addRow("EVP_CIPHER_CTX_ctrl", 0, "AES-GCM decrypt update failed: Unknown OpenSSL error");
    addRow("EVP_DecryptUpdate", 0, "AES-GCM decrypt update failed: Unknown OpenSSL error");
    addRow("EVP_CIPHER_CTX_ctrl", 1, "AES-GCM set tag failed: Unknown OpenSSL error");
}

void TestFailingLibcrypto::opening()
{
    const auto open = [this](QString *error) { return !aesGcmDecrypt(key, nonce, sealed, error).isEmpty(); };
    QCOMPARE(errorOf(open), expected());
}

void TestFailingLibcrypto::wrapping_data()
{
    addColumns();
    addRow("EVP_PKEY_CTX_new", 0, "Could not create RSA encrypt context: Unknown OpenSSL error");
    addRow("EVP_PKEY_encrypt_init", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_CTX_set_rsa_padding", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_CTX_set_rsa_oaep_md", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_CTX_set_rsa_mgf1_md", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_encrypt", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_encrypt", 1, "RSA-OAEP encrypt failed: Unknown OpenSSL error");
}

void TestFailingLibcrypto::wrapping()
{
    const QByteArray publicKey = publicKeyOf(publishedPrivateKey());
    const auto wrap = [&](QString *error) { return !rsaOaepEncrypt(publicKey, key, error).isEmpty(); };
    QCOMPARE(errorOf(wrap), expected());
}

void TestFailingLibcrypto::readingPem_data()
{
    addColumns();
    addRow("BIO_new_mem_buf", 0, "Could not parse public key (tried DER and PEM): Unknown OpenSSL error");
}

void TestFailingLibcrypto::readingPem()
{
    const QByteArray publicKey = publicPemOf(publishedPrivateKey());
    const auto wrap = [&](QString *error) { return !rsaOaepEncrypt(publicKey, key, error).isEmpty(); };
    QCOMPARE(errorOf(wrap), expected());
}

void TestFailingLibcrypto::unwrapping_data()
{
    addColumns();
    addRow("EVP_PKEY_CTX_new", 0, "Could not create RSA context: Unknown OpenSSL error");
    addRow("EVP_PKEY_decrypt_init", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_CTX_set_rsa_padding", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_CTX_set_rsa_oaep_md", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_CTX_set_rsa_mgf1_md", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_decrypt", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_decrypt", 1, "RSA-OAEP decrypt failed: Unknown OpenSSL error");
}

void TestFailingLibcrypto::unwrapping()
{
    const auto unwrap = [this](QString *error) {
        return !rsaOaepDecrypt(publishedPrivateKey(), wrapped, error).isEmpty();
    };
    QCOMPARE(errorOf(unwrap), expected());
}

TIDELOFT_TEST_MAIN(TestFailingLibcrypto)
#include "tst_failing_libcrypto.moc"
