// The main() of a test program: a home of its own, the client's identity, then the tests.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/test_home.h"

#include <QCoreApplication>
#include <QtTest>

namespace tideloft::tests
{

template <typename Application, typename Test> int runTests(int argc, char **argv)
{
    const TestHome home;
    const Application application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("TideLoft"));
    QCoreApplication::setOrganizationName(QStringLiteral("TideLoft"));
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace tideloft::tests

/// For tests without a window.
#define TIDELOFT_TEST_MAIN(Test)                                                                             \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return tideloft::tests::runTests<QCoreApplication, Test>(argc, argv);                                \
    }

/// For tests with widgets: include <QApplication> first.
#define TIDELOFT_GUI_TEST_MAIN(Test)                                                                         \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return tideloft::tests::runTests<QApplication, Test>(argc, argv);                                    \
    }
