// A call of libcrypto that fails, in a program that links failing_libcrypto.cpp.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tideloft::tests
{

/// As long as it lives, CALL fails once it has succeeded SUCCESSES times. One at a time.
class FailingCall
{
public:
    FailingCall(const QByteArray &call, int successes);
    Q_DISABLE_COPY_MOVE(FailingCall)
    ~FailingCall();
    /// Whether it was called that often.
    static bool hasFailed();
};

} // namespace tideloft::tests
