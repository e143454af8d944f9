// How an operation says that it failed: a message, an empty result, and OpenSSL's reason where there is one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/failure.h"
#include "crypto/cipher/openssl_error.h"
#include "tests/support/test_main.h"

#include <openssl/err.h>

#include <QTest>

using namespace tideloft::crypto;
using namespace Qt::StringLiterals;

class TestFailure : public QObject
{
    Q_OBJECT

private slots:
    void init() { ERR_clear_error(); }
    void messageEndsInUnknownErrorWithAnEmptyQueue();
    void messageTakesOneError();
    void errorIsTakenEvenWhenNobodyAsks();
    void failureIsEmptyInEveryShape();
    void earlierExplanationSurvives();
};

void TestFailure::messageEndsInUnknownErrorWithAnEmptyQueue()
{
    QString error;
    failOpenssl(&error, u"RSA keygen failed: %1"_s);
    QCOMPARE(error, u"RSA keygen failed: Unknown OpenSSL error"_s);
}

void TestFailure::messageTakesOneError()
{
    ERR_raise(ERR_LIB_USER, 1);
    ERR_raise(ERR_LIB_USER, 2);
    QString error;
    failOpenssl(&error, u"It failed: %1"_s);
    QCOMPARE(error, u"It failed: error:40000001:lib(128)::reason(1)"_s);
    QCOMPARE(opensslErrorText(), u"error:40000002:lib(128)::reason(2)"_s);
}

void TestFailure::errorIsTakenEvenWhenNobodyAsks()
{
    ERR_raise(ERR_LIB_USER, 1);
    failOpenssl(nullptr, u"It failed: %1"_s);
    QCOMPARE(ERR_peek_error(), 0UL);
}

void TestFailure::failureIsEmptyInEveryShape()
{
    QString error = u"before"_s;
    const bool truth = fail(&error, u"now"_s);
    const QByteArray bytes = fail(nullptr, u"now"_s);
    const QString text = fail(nullptr, u"now"_s);
    QVERIFY(!truth);
    QVERIFY(bytes.isEmpty());
    QVERIFY(text.isEmpty());
    QCOMPARE(error, u"now"_s);
}

void TestFailure::earlierExplanationSurvives()
{
    QString error = u"specific"_s;
    failUnlessExplained(&error, u"general"_s);
    QCOMPARE(error, u"specific"_s);
    error.clear();
    failUnlessExplained(&error, u"general"_s);
    QCOMPARE(error, u"general"_s);
    failUnlessExplained(nullptr, u"general"_s);
}

TIDELOFT_TEST_MAIN(TestFailure)
#include "tst_failure.moc"
