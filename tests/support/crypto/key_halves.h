// The two halves of a key pair, so that tests hold the files of both to the same rules.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/keys/key_store.h"
#include "tests/support/data_dir.h"

#include <QString>
#include <QTest>

namespace tideloft::tests
{
using namespace Qt::StringLiterals;

using Writer = bool (*)(const QString &, QString *);
using Reader = QString (*)(QString *);

/// One row for each half.
inline void addHalves()
{
    QTest::addColumn<QString>("half");
    QTest::addColumn<QString>("path");
    QTest::addColumn<Writer>("write");
    QTest::addColumn<Reader>("read");
    const QString directory = dataLocation();
    QTest::newRow("private") << u"private"_s << directory + u"/chat_private_key.b64"_s
                             << Writer(crypto::writePrivateKeyFile) << Reader(crypto::readPrivateKeyFile);
    QTest::newRow("public") << u"public"_s << directory + u"/chat_public_key.b64"_s
                            << Writer(crypto::writePublicKeyFile) << Reader(crypto::readPublicKeyFile);
}

inline QString capitalised(const QString &half)
{
    return half.left(1).toUpper() + half.mid(1);
}

} // namespace tideloft::tests

Q_DECLARE_METATYPE(tideloft::tests::Writer)
Q_DECLARE_METATYPE(tideloft::tests::Reader)
