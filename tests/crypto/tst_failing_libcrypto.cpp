// What is said when libcrypto fails at what it never fails at: each of its calls in turn.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/aes_gcm.h"
#include "crypto/key_pair.h"
#include "crypto/key_store.h"
#include "crypto/rsa_oaep.h"
#include "tests/crypto/data_dir.h"
#include "tests/crypto/test_keys.h"
#include "tests/support/test_main.h"

#include <openssl/evp.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>

#include <QTest>

#include <dlfcn.h>

#include <cstring>
#include <functional>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

// Which call is to fail, and how many of its kind succeed before it.
const char *failing = "";
int successes = 0;

bool fails(const char *call)
{
    return std::strcmp(call, failing) == 0 && successes-- == 0;
}

template <typename Function> Function *libcryptos(const char *call)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, call));
}

} // namespace

// These stand before libcrypto's own in this program.
extern "C" {

EVP_PKEY_CTX *EVP_PKEY_CTX_new_id(int id, ENGINE *engine)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_CTX_new_id)>(__func__);
    return fails(__func__) ? nullptr : real(id, engine);
}

EVP_PKEY_CTX *EVP_PKEY_CTX_new(EVP_PKEY *key, ENGINE *engine)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_CTX_new)>(__func__);
    return fails(__func__) ? nullptr : real(key, engine);
}

int EVP_PKEY_keygen_init(EVP_PKEY_CTX *context)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_keygen_init)>(__func__);
    return fails(__func__) ? 0 : real(context);
}

int EVP_PKEY_CTX_set_rsa_keygen_bits(EVP_PKEY_CTX *context, int bits)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_CTX_set_rsa_keygen_bits)>(__func__);
    return fails(__func__) ? 0 : real(context, bits);
}

int EVP_PKEY_keygen(EVP_PKEY_CTX *context, EVP_PKEY **key)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_keygen)>(__func__);
    return fails(__func__) ? 0 : real(context, key);
}

int i2d_PrivateKey(const EVP_PKEY *key, unsigned char **position)
{
    static auto *const real = libcryptos<decltype(i2d_PrivateKey)>(__func__);
    return fails(__func__) ? -1 : real(key, position);
}

int i2d_PUBKEY(const EVP_PKEY *key, unsigned char **position)
{
    static auto *const real = libcryptos<decltype(i2d_PUBKEY)>(__func__);
    return fails(__func__) ? -1 : real(key, position);
}

EVP_CIPHER_CTX *EVP_CIPHER_CTX_new()
{
    static auto *const real = libcryptos<decltype(EVP_CIPHER_CTX_new)>(__func__);
    return fails(__func__) ? nullptr : real();
}

int EVP_CIPHER_CTX_ctrl(EVP_CIPHER_CTX *context, int type, int size, void *bytes)
{
    static auto *const real = libcryptos<decltype(EVP_CIPHER_CTX_ctrl)>(__func__);
    return fails(__func__) ? 0 : real(context, type, size, bytes);
}

int EVP_EncryptInit_ex(EVP_CIPHER_CTX *context, const EVP_CIPHER *cipher, ENGINE *engine,
                       const unsigned char *key, const unsigned char *iv)
{
    static auto *const real = libcryptos<decltype(EVP_EncryptInit_ex)>(__func__);
    return fails(__func__) ? 0 : real(context, cipher, engine, key, iv);
}

int EVP_EncryptUpdate(EVP_CIPHER_CTX *context, unsigned char *to, int *written, const unsigned char *from,
                      int size)
{
    static auto *const real = libcryptos<decltype(EVP_EncryptUpdate)>(__func__);
    return fails(__func__) ? 0 : real(context, to, written, from, size);
}

int EVP_EncryptFinal_ex(EVP_CIPHER_CTX *context, unsigned char *to, int *written)
{
    static auto *const real = libcryptos<decltype(EVP_EncryptFinal_ex)>(__func__);
    return fails(__func__) ? 0 : real(context, to, written);
}

int EVP_DecryptInit_ex(EVP_CIPHER_CTX *context, const EVP_CIPHER *cipher, ENGINE *engine,
                       const unsigned char *key, const unsigned char *iv)
{
    static auto *const real = libcryptos<decltype(EVP_DecryptInit_ex)>(__func__);
    return fails(__func__) ? 0 : real(context, cipher, engine, key, iv);
}

int EVP_DecryptUpdate(EVP_CIPHER_CTX *context, unsigned char *to, int *written, const unsigned char *from,
                      int size)
{
    static auto *const real = libcryptos<decltype(EVP_DecryptUpdate)>(__func__);
    return fails(__func__) ? 0 : real(context, to, written, from, size);
}

int EVP_PKEY_encrypt_init(EVP_PKEY_CTX *context)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_encrypt_init)>(__func__);
    return fails(__func__) ? 0 : real(context);
}

int EVP_PKEY_decrypt_init(EVP_PKEY_CTX *context)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_decrypt_init)>(__func__);
    return fails(__func__) ? 0 : real(context);
}

int EVP_PKEY_CTX_set_rsa_padding(EVP_PKEY_CTX *context, int padding)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_CTX_set_rsa_padding)>(__func__);
    return fails(__func__) ? 0 : real(context, padding);
}

int EVP_PKEY_encrypt(EVP_PKEY_CTX *context, unsigned char *to, size_t *size, const unsigned char *from,
                     size_t fromSize)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_encrypt)>(__func__);
    return fails(__func__) ? 0 : real(context, to, size, from, fromSize);
}

int EVP_PKEY_decrypt(EVP_PKEY_CTX *context, unsigned char *to, size_t *size, const unsigned char *from,
                     size_t fromSize)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_decrypt)>(__func__);
    return fails(__func__) ? 0 : real(context, to, size, from, fromSize);
}

} // extern "C"

class TestFailingLibcrypto : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { removeDataDir(); }
    void cleanup() { failing = ""; }
    void cleanupTestCase() { removeDataDir(); }
    void makingAPair_data();
    void makingAPair();
    void sealing_data();
    void sealing();
    void opening_data();
    void opening();
    void wrapping_data();
    void wrapping();
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
    failing = call.constData();
    successes = successesBefore;
    QString error;
    const bool gaveSomething = operation(&error);
    failing = "";
    if (successes != -1)
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
    addRow("EVP_PKEY_encrypt", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_encrypt", 1, "RSA-OAEP encrypt failed: Unknown OpenSSL error");
}

void TestFailingLibcrypto::wrapping()
{
    const QByteArray publicKey = publicKeyOf(publishedPrivateKey());
    const auto wrap = [&](QString *error) { return !rsaOaepEncrypt(publicKey, key, error).isEmpty(); };
    QCOMPARE(errorOf(wrap), expected());
}

void TestFailingLibcrypto::unwrapping_data()
{
    addColumns();
    addRow("EVP_PKEY_CTX_new", 0, "Could not create RSA context: Unknown OpenSSL error");
    addRow("EVP_PKEY_decrypt_init", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
    addRow("EVP_PKEY_CTX_set_rsa_padding", 0, "RSA-OAEP size query failed: Unknown OpenSSL error");
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
