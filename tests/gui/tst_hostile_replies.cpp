// What a user sees of services that answer nonsense, hang, or are not who they say.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/tls_policy.h"
#include "tests/support/gui_probe.h"
#include "tests/support/net/reply_shapes.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"
#include "tests/support/test_service_endpoint.h"
#include "tests/support/tls_service.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QByteArray historyKey = QByteArrayLiteral("GET /api/chat/history/bob");
const QByteArray profile =
    QByteArrayLiteral("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\n{\"username\":\"alice\"}");

// What the toolkit itself says of a request to URL.
QString toolkitsWords(const QString &url)
{
    QNetworkAccessManager network;
    const std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest(QUrl(url))));
    QSignalSpy finished(reply.get(), &QNetworkReply::finished);
    return finished.wait() ? reply->errorString() : QString();
}

} // namespace

class TestHostileReplies : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init();
    void whoIsNotTrustedGetsNoPassword_data();
    void whoIsNotTrustedGetsNoPassword();
    void theGoodCertificateSignsIn();
    void nonsenseDoesNotLast_data();
    void nonsenseDoesNotLast();
    void whatTheTimerAsksForStandsBack();

private:
    void serve(const TlsService &service);
    const QSslConfiguration untouched = QSslConfiguration::defaultConfiguration();
    const Certificates certificates;
};

void TestHostileReplies::init()
{
    failOnToolkitWarnings();
    QSslConfiguration::setDefaultConfiguration(untouched);
}

void TestHostileReplies::serve(const TlsService &service)
{
    setTrustAnchors({certificates.authority()});
    tideloft::net::applyTlsPolicy();
    setServiceBaseUrl(u"https://127.0.0.1:%1"_s.arg(service.serverPort()));
}

void TestHostileReplies::whoIsNotTrustedGetsNoPassword_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("protocol");
    for (const char *kind : {"stranger", "self-signed", "expired", "other-host"})
        QTest::newRow(kind) << QString::fromLatin1(kind) << int(QSsl::TlsV1_3OrLater);
    QTest::newRow("TLS 1.2 only") << u"good"_s << int(QSsl::TlsV1_2);
}

void TestHostileReplies::whoIsNotTrustedGetsNoPassword()
{
    QFETCH(const QString, kind);
    QFETCH(const int, protocol);
    GuiProbe probe;
    const TlsService service(certificates.server(kind, QSsl::SslProtocol(protocol)), profile);
    serve(service);
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QTRY_VERIFY(probe.errorText() != u"(hidden)"_s);
    const QString words = toolkitsWords(u"https://127.0.0.1:%1/"_s.arg(service.serverPort()));
    QVERIFY2(words.startsWith(u"SSL handshake failed"_s), qPrintable(words));
    QCOMPARE(probe.errorText(), words);
    QVERIFY(!probe.onMainPage());
    QCOMPARE(service.answered, 0);
}

void TestHostileReplies::theGoodCertificateSignsIn()
{
    GuiProbe probe;
    const TlsService service(certificates.server(u"good"_s), profile);
    serve(service);
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QTRY_VERIFY(probe.onMainPage());
    QVERIFY(service.answered > 0);
}

void TestHostileReplies::nonsenseDoesNotLast_data()
{
    constexpr qsizetype drawable = 150'000; // rows for 100,000 entries have a test of their own
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("closes");
    for (const ReplyShape &shape : documentShapes() + wireShapes()) {
        if (shape.bytes.size() < drawable)
            QTest::newRow(shape.name.constData()) << shape.bytes << shape.closes;
    }
}

// The same nonsense for the list and the open conversation at once, and then a service in its right mind.
void TestHostileReplies::nonsenseDoesNotLast()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, closes);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    probe.service.clear();
    probe.service.raw(requests::listConversations, bytes, closes);
    probe.service.raw(historyKey, bytes, closes);
    QVERIFY(callSlot(*probe.window, "refreshData"));
    QVERIFY(probe.service.waitForRequests(requests::listConversations, 1));
    QVERIFY(probe.service.waitForRequests(historyKey, 1));

    probe.service.answer(historyKey, 200, R"([{"from":"bob","text":"hello"}])");
    QVERIFY(probe.listPeers({u"bob"_s, u"eve"_s}));
    QTRY_COMPARE(probe.the<QListWidget>(u"messageList"_s)->count(), 2); // its day and itself
    QVERIFY(!QApplication::activeModalWidget());
}

void TestHostileReplies::whatTheTimerAsksForStandsBack()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    probe.refreshTimer()->stop();
    QVERIFY(probe.settle());
    probe.service.hold(requests::listConversations);
    probe.service.hold(historyKey);
    probe.service.clear();
    for (int i = 0; i < 20; ++i)
        QVERIFY(callSlot(*probe.window, "refreshData"));
    QTRY_COMPARE(probe.service.requests().size(), 6);

    probe.service.clear();
    probe.the<QLineEdit>(u"sideSearch"_s)->setText(u"eve"_s);
    probe.service.releaseAt(requests::listConversations, 0);
    QTRY_VERIFY(!probe.service.requests().isEmpty());
    QCOMPARE(probe.service.requests().first().target, QByteArray("/api/users/search?q=eve"));
}

TIDELOFT_GUI_TEST_MAIN(TestHostileReplies)
#include "tst_hostile_replies.moc"
