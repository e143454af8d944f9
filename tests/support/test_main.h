// How a source of tests enters its program: with a home of its own and the client's identity.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/test_class.h"
#include "tests/support/test_home.h"
#include "tests/support/waiting.h"

#include <QCoreApplication>
#include <QTest>

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

// One compiler run may read several sources of tests, so the constant of each has a number.
#define TIDELOFT_ENTRY_NAME_OF(number) entered##number
#define TIDELOFT_ENTRY_NAME(number) TIDELOFT_ENTRY_NAME_OF(number)

/// For tests that do something else before: RUN is their main().
#define TIDELOFT_TEST_RUN(run)                                                                               \
    static const bool TIDELOFT_ENTRY_NAME(__COUNTER__) = tideloft::tests::addTestClass(__FILE__, run);

/// For tests without a window.
#define TIDELOFT_TEST_MAIN(Test) TIDELOFT_TEST_RUN((tideloft::tests::runTests<QCoreApplication, Test>))

/// For tests with widgets: include <QApplication> first.
#define TIDELOFT_GUI_TEST_MAIN(Test) TIDELOFT_TEST_RUN((tideloft::tests::runTests<QApplication, Test>))
