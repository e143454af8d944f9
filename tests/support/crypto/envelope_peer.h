// Another implementation of the envelope, in a process of its own that answers line by line.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/base64.h"
#include "tests/support/patience.h"

#include <QProcess>
#include <QTest>

namespace tideloft::tests
{
using namespace Qt::StringLiterals;

class EnvelopePeer
{
public:
    EnvelopePeer()
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(u"/usr/bin/python3"_s, {u"-B"_s, QStringLiteral(ENVELOPE_PEER)});
    }
    ~EnvelopePeer()
    {
        process.closeWriteChannel();
        process.waitForFinished(patience());
    }
    Q_DISABLE_COPY_MOVE(EnvelopePeer)

    /// The words of the answer; none when the process is gone or silent.
    QStringList ask(const QStringList &words)
    {
        process.write(words.join(u' ').toLatin1() + '\n');
        while (!process.canReadLine()) {
            if (!process.waitForReadyRead(patience()))
                return {};
        }
        return QString::fromLatin1(process.readLine()).trimmed().split(u' ');
    }

    /// A text as the process reads and writes it.
    static QString word(const QString &text)
    {
        return text.isEmpty() ? u"-"_s : crypto::toBase64Text(text.toUtf8());
    }

private:
    QProcess process;
};

} // namespace tideloft::tests
