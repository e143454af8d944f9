// When a client is done with a reply, also where it reports nothing of it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/patience.h"
#include "tests/support/waiting.h"

#include <QCoreApplication>
#include <QEvent>
#include <QNetworkReply>
#include <QTest>

namespace tideloft::tests
{

/// Counts the replies that the client is done with. It lets go of each once it has reported it.
class FinishedReplies : public QObject
{
public:
    FinishedReplies() { QCoreApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (event->type() == QEvent::DeferredDelete && qobject_cast<QNetworkReply *>(receiver))
            ++count;
        return false;
    }
    /// In finer steps than the macros', for there are thousands of rows. False also when there are more.
    bool reach(int wanted, int timeout = patience())
    {
        return waitFor([this, wanted] { return count >= wanted; }, timeout) && count == wanted;
    }

private:
    int count = 0;
};

} // namespace tideloft::tests
