// The service's host as it is shown.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/service_host.h"
#include "tests/support/test_main.h"
#include "tests/support/test_service_endpoint.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestServiceHost : public QObject
{
    Q_OBJECT

private slots:
    void hasThePortOfTheAddress_data();
    void hasThePortOfTheAddress();
};

void TestServiceHost::hasThePortOfTheAddress_data()
{
    QTest::addColumn<QString>("origin");
    QTest::addColumn<QString>("host");
    QTest::newRow("no port") << u"https://chat.example.org"_s << u"chat.example.org"_s;
    QTest::newRow("port") << u"https://localhost:8443"_s << u"localhost:8443"_s;
    QTest::newRow("IPv6") << u"https://[::1]:8443"_s << u"[::1]:8443"_s;
}

void TestServiceHost::hasThePortOfTheAddress()
{
    QFETCH(const QString, origin);
    tideloft::tests::setServiceBaseUrl(origin);
    QTEST(tideloft::net::serviceHost(), "host");
}

TIDELOFT_TEST_MAIN(TestServiceHost)
#include "tst_service_host.moc"
