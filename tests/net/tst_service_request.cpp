// What every request has, whatever is asked for.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/service_request.h"
#include "tests/support/test_main.h"
#include "tests/support/test_service_endpoint.h"

#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace tideloft::net;

class TestServiceRequest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tideloft::tests::setServiceBaseUrl(u"https://chat.example.org:8443"_s); }
    void pathFollowsTheAddress_data();
    void pathFollowsTheAddress();
    void nobodyIsIntroduced();
    void refreshesStandBack();
    void jsonNamesTheDevice();
};

void TestServiceRequest::pathFollowsTheAddress_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("encoded");
    QTest::newRow("plain") << u"/api/me"_s << QByteArray("/api/me");
    QTest::newRow("blank") << u"/api/a b"_s << QByteArray("/api/a%20b");
    QTest::newRow("query") << u"/api/search?q=a%26b"_s << QByteArray("/api/search?q=a%26b");
    QTest::newRow("name that is no ASCII") << u"/api/åsa"_s << QByteArray("/api/%C3%A5sa");
}

void TestServiceRequest::pathFollowsTheAddress()
{
    QFETCH(const QString, path);
    QFETCH(const QByteArray, encoded);
    QCOMPARE(serviceRequest(path).url().toEncoded(), "https://chat.example.org:8443" + encoded);
}

void TestServiceRequest::nobodyIsIntroduced()
{
    const QNetworkRequest request = serviceRequest(u"/api/me"_s);
    QCOMPARE(request.attribute(QNetworkRequest::AuthenticationReuseAttribute).toInt(),
             int(QNetworkRequest::Manual));
    QVERIFY(request.rawHeaderList().isEmpty());
}

void TestServiceRequest::refreshesStandBack()
{
    QCOMPARE(serviceRequest(u"/a"_s).priority(), QNetworkRequest::HighPriority);
    QCOMPARE(serviceRequest(u"/a"_s, RequestPriority::UserInitiated).priority(),
             QNetworkRequest::HighPriority);
    QCOMPARE(serviceRequest(u"/a"_s, RequestPriority::Refresh).priority(), QNetworkRequest::LowPriority);
}

void TestServiceRequest::jsonNamesTheDevice()
{
    const QNetworkRequest request =
        jsonRequest(u"/api/me"_s, {u"a\r\nb"_s, u"Åsa's"_s}, RequestPriority::Refresh);
    QCOMPARE(request.url().path(), u"/api/me"_s);
    QCOMPARE(request.priority(), QNetworkRequest::LowPriority);
    QCOMPARE(request.rawHeader("Content-Type"), QByteArray("application/json"));
    QCOMPARE(request.rawHeader("X-Device-Token"), QByteArray("ab"));
    QCOMPARE(request.rawHeader("X-Device-Name"), QByteArray("Åsa's"));
    QCOMPARE(request.rawHeaderList().size(), 3);
}

TIDELOFT_TEST_MAIN(TestServiceRequest)
#include "tst_service_request.moc"
