// A descriptor is closed when its owner is gone, and only then.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/descriptor.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <fcntl.h>

#include <optional>

using tideloft::local_files::Descriptor;

class TestDescriptor : public QObject
{
    Q_OBJECT

private slots:
    void isClosedAtTheEnd();
    void nothingOpenedIsNotOpen();
    void numberZeroIsOpen();
};

void TestDescriptor::isClosedAtTheEnd()
{
    const int opened = open("/dev/null", O_RDONLY | O_CLOEXEC);
    QVERIFY(opened >= 0);
    {
        const Descriptor descriptor(opened);
        QVERIFY(descriptor.isOpen());
        QCOMPARE(descriptor.get(), opened);
        QVERIFY(fcntl(opened, F_GETFD) >= 0);
    }
    QCOMPARE(fcntl(opened, F_GETFD), -1);
}

void TestDescriptor::nothingOpenedIsNotOpen()
{
    const Descriptor descriptor(-1);
    QVERIFY(!descriptor.isOpen());
}

// The system numbers a file zero in a program that was started without a standard input.
void TestDescriptor::numberZeroIsOpen()
{
    const int input = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
    close(STDIN_FILENO);
    std::optional<Descriptor> descriptor(std::in_place, open("/dev/null", O_RDONLY | O_CLOEXEC));
    const bool isOpen = descriptor->isOpen() && descriptor->get() == STDIN_FILENO;
    descriptor.reset();
    const bool leftOpen = fcntl(STDIN_FILENO, F_GETFD) >= 0;
    if (input >= 0)
        dup2(input, STDIN_FILENO);
    close(input);
    QVERIFY(isOpen);
    QVERIFY(!leftOpen);
}

TIDELOFT_TEST_MAIN(TestDescriptor)
#include "tst_descriptor.moc"
