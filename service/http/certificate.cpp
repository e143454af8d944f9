// Reading of PEM files.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/certificate.h"

#include <QFile>
#include <QTimeZone>

#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

#include <memory>
#include <stdexcept>

namespace tideloft::service
{

namespace asio = boost::asio;
using namespace Qt::StringLiterals;

namespace
{

struct OpenSslFree {
    void operator()(BIO *bio) const noexcept { BIO_free(bio); }
    void operator()(EVP_PKEY *key) const noexcept { EVP_PKEY_free(key); }
};

[[noreturn]] void fail(const QString &what)
{
    ERR_clear_error();
    throw std::runtime_error(what.toStdString());
}

QByteArray contentOf(const QString &name, const QString &file)
{
    QFile opened(file);
    if (!opened.open(QIODevice::ReadOnly))
        fail(u"Could not read the %1 %2: %3"_s.arg(name, file, opened.errorString()));
    return opened.readAll();
}

std::unique_ptr<EVP_PKEY, OpenSslFree> readKey(const QString &file)
{
    const QByteArray pem = contentOf(u"key"_s, file);
    const std::unique_ptr<BIO, OpenSslFree> bio(
        BIO_new_mem_buf(pem.constData(), static_cast<int>(pem.size())));
    char noPassword[] = ""; // without it OpenSSL asks the terminal
    std::unique_ptr<EVP_PKEY, OpenSslFree> key(
        PEM_read_bio_PrivateKey(bio.get(), nullptr, nullptr, noPassword));
    if (!key)
        fail(u"%1 holds no private key, or one with a password"_s.arg(file));
    return key;
}

} // namespace

asio::ssl::context tlsContext(const QString &certificateFile, const QString &keyFile)
{
    asio::ssl::context context(asio::ssl::context::tls_server);
    SSL_CTX *native = context.native_handle();
    SSL_CTX_set_min_proto_version(native, TLS1_3_VERSION); // RFC 8446
    SSL_CTX_set_mode(native, SSL_MODE_RELEASE_BUFFERS);    // most connections are idle
    const QByteArray chain = contentOf(u"certificate"_s, certificateFile);
    boost::system::error_code error;
    context.use_certificate_chain(asio::buffer(chain.constData(), static_cast<std::size_t>(chain.size())),
                                  error);
    if (error)
        fail(u"%1 holds no certificate"_s.arg(certificateFile));
    const auto key = readKey(keyFile);
    // The library keeps a key for each kind of certificate, and misses none where the kinds differ.
    if (X509_check_private_key(SSL_CTX_get0_certificate(native), key.get()) != 1
        || SSL_CTX_use_PrivateKey(native, key.get()) != 1)
        fail(u"The key %1 does not belong to the certificate %2"_s.arg(keyFile, certificateFile));
    return context;
}

QDateTime certificateEnd(asio::ssl::context &context)
{
    tm end{};
    const X509 *certificate = SSL_CTX_get0_certificate(context.native_handle());
    if (!certificate || ASN1_TIME_to_tm(X509_get0_notAfter(certificate), &end) != 1)
        return {};
    return QDateTime(QDate(end.tm_year + 1900, end.tm_mon + 1, end.tm_mday),
                     QTime(end.tm_hour, end.tm_min, end.tm_sec), QTimeZone::utc())
        .toUTC();
}

QString expiryWarning(const QDateTime &end, const QDateTime &now)
{
    constexpr int soon = 14; // days
    if (now.daysTo(end) >= soon)
        return {};
    return (end <= now ? u"the certificate has expired on %1"_s : u"the certificate expires on %1"_s)
        .arg(end.toString(Qt::ISODate));
}

} // namespace tideloft::service
