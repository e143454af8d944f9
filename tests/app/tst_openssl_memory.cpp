// The client's own libraries, all of them loaded: does what libcrypto frees get overwritten?
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/openssl_memory.h"
#include "tests/support/test_main.h"

#include <QTest>

class TestOpensslMemory : public QObject
{
    Q_OBJECT

private slots:
    // Too late if some library had used libcrypto before.
    void clientComesBeforeEveryOtherUser() { QVERIFY(tideloft::crypto::wipeWhatOpensslFrees()); }
};

TIDELOFT_TEST_MAIN(TestOpensslMemory)
#include "tst_openssl_memory.moc"
