// Calls that stand before libcrypto's own in the program that links them, and fail when a test says so.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/crypto/failing_libcrypto.h"

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>

#include <dlfcn.h>

namespace
{

QByteArray failing;
int successesLeft = 0;

bool fails(const char *call)
{
    return failing == call && successesLeft-- == 0;
}

template <typename Function> Function *libcryptos(const char *call)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, call));
}

} // namespace

namespace tideloft::tests
{

FailingCall::FailingCall(const QByteArray &call, int successes)
{
    failing = call;
    successesLeft = successes;
}

FailingCall::~FailingCall()
{
    failing.clear();
}

bool FailingCall::hasFailed()
{
    return successesLeft < 0;
}

} // namespace tideloft::tests

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
    return fails(__func__) ? 0 : real(key, position); // either is a failure
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

int EVP_PKEY_CTX_set_rsa_oaep_md(EVP_PKEY_CTX *context, const EVP_MD *hash)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_CTX_set_rsa_oaep_md)>(__func__);
    return fails(__func__) ? 0 : real(context, hash);
}

int EVP_PKEY_CTX_set_rsa_mgf1_md(EVP_PKEY_CTX *context, const EVP_MD *hash)
{
    static auto *const real = libcryptos<decltype(EVP_PKEY_CTX_set_rsa_mgf1_md)>(__func__);
    return fails(__func__) ? 0 : real(context, hash);
}

BIO *BIO_new_mem_buf(const void *bytes, int size)
{
    static auto *const real = libcryptos<decltype(BIO_new_mem_buf)>(__func__);
    return fails(__func__) ? nullptr : real(bytes, size);
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
