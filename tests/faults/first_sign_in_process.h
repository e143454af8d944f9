// A first sign-in in a process of its own, started and let go by a test; and what it left in its files.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/base64.h"
#include "crypto/keys/key_store.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/data_dir.h"

#include <QProcess>

namespace tideloft::tests
{
using namespace Qt::StringLiterals;

class FirstSignIn
{
public:
    /// Started, and waiting for its line. ENVIRONMENT is added to that of the test.
    explicit FirstSignIn(const QStringList &arguments = {},
                         const std::pair<QString, QString> &environment = {})
    {
        auto all = QProcessEnvironment::systemEnvironment();
        if (!environment.first.isEmpty())
            all.insert(environment.first, environment.second);
        process.setProcessEnvironment(all);
        process.start(QString::fromUtf8(FIRST_SIGN_IN_PROGRAM), arguments);
        ready = process.waitForReadyRead() && process.readLine() == "ready\n";
    }
    /// Returns when the line has left: without that it would wait for the next look at this process.
    void go()
    {
        process.write("\n");
        process.waitForBytesWritten();
    }
    /// Waits for its end. Its lines: the identifier, and the public key or what went wrong.
    QStringList lines()
    {
        process.waitForFinished(120'000);
        return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    }
    [[nodiscard]] bool wasKilled() const { return process.exitStatus() == QProcess::CrashExit; }
    [[nodiscard]] bool endedWell() const
    {
        return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    bool ready = false;

private:
    QProcess process;
};

inline QByteArray identifierFile()
{
    return readFile(dataLocation() + u"/device_id.txt"_s);
}

/// Whether both key files hold a key, and these two belong together.
inline bool keyFilesMatch()
{
    const QByteArray privateDer = crypto::fromBase64Text(crypto::readPrivateKeyFile());
    const QByteArray publicDer = crypto::fromBase64Text(crypto::readPublicKeyFile());
    return !privateDer.isEmpty() && !publicDer.isEmpty() && keyFromDer(privateDer)
           && publicKeyOf(privateDer) == publicDer;
}

} // namespace tideloft::tests
