// Who the program says it is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/identity.h"
#include "tests/support/test_main.h"

#include <QTest>
#include <QVersionNumber>

using namespace Qt::StringLiterals;
using namespace tideloft::app;

class TestIdentity : public QObject
{
    Q_OBJECT

private slots:
    void namesStay();
    void versionIsTheProjects();
};

// Settings and keys are found by these names.
void TestIdentity::namesStay()
{
    QCOMPARE(applicationName, u"TideLoft"_s);
    QCOMPARE(organisationName, u"TideLoft"_s);
    QCOMPARE(desktopFileName, u"im.tideloft.TideLoft"_s);
}

void TestIdentity::versionIsTheProjects()
{
    QCOMPARE(applicationVersion(), QStringLiteral(TIDELOFT_VERSION));
    QCOMPARE(QVersionNumber::fromString(applicationVersion()).segmentCount(), 3);
}

TIDELOFT_TEST_MAIN(TestIdentity)
#include "tst_identity.moc"
