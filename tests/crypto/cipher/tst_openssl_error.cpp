// The text of OpenSSL's earliest queued error.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/openssl_error.h"
#include "tests/support/test_main.h"

#include <openssl/err.h>

#include <QTest>

using namespace tideloft::crypto;
using namespace Qt::StringLiterals;

class TestOpensslError : public QObject
{
    Q_OBJECT

private slots:
    void init() { ERR_clear_error(); }
    void anEmptyQueueIsAnUnknownError();
    void earliestErrorIsTakenAndLaterOnesStay();
};

void TestOpensslError::anEmptyQueueIsAnUnknownError()
{
    QCOMPARE(opensslErrorText(), u"Unknown OpenSSL error"_s);
}

void TestOpensslError::earliestErrorIsTakenAndLaterOnesStay()
{
    ERR_raise(ERR_LIB_RSA, ERR_R_PASSED_NULL_PARAMETER);
    ERR_raise(ERR_LIB_USER, 42);
    QCOMPARE(opensslErrorText(), u"error:020C0102:rsa routines::passed a null parameter"_s);
    QCOMPARE(opensslErrorText(), u"error:4000002A:lib(128)::reason(42)"_s);
    QCOMPARE(opensslErrorText(), u"Unknown OpenSSL error"_s);
}

TIDELOFT_TEST_MAIN(TestOpensslError)
#include "tst_openssl_error.moc"
