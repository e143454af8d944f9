// The size of a reply: one within the limit comes through, and one byte more does not.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_limit.h"
#include "tests/support/loopback_service.h"
#include "tests/support/patience.h"
#include "tests/support/test_main.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tideloft::net;
using tideloft::tests::LoopbackService;

class TestReplyLimit : public QObject
{
    Q_OBJECT

private slots:
    void oneByteMoreIsTooLarge_data();
    void oneByteMoreIsTooLarge();
};

void TestReplyLimit::oneByteMoreIsTooLarge_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("tooLarge");
    QTest::newRow("nothing") << qint64{0} << false;
    QTest::newRow("the limit") << largestReply << false;
    QTest::newRow("one byte more") << largestReply + 1 << true;
}

void TestReplyLimit::oneByteMoreIsTooLarge()
{
    QFETCH(const qint64, size);
    LoopbackService service;
    service.answer("GET /a", 200, QByteArray(size, ' '));
    QNetworkAccessManager network;
    QNetworkReply *reply = network.get(QNetworkRequest(QUrl(service.url() + u"/a"_s)));
    limitSize(*reply);
    QSignalSpy finished(reply, &QNetworkReply::finished);
    QVERIFY(finished.wait(tideloft::tests::patience()));
    QTEST(isTooLarge(*reply), "tooLarge");
}

TIDELOFT_TEST_MAIN(TestReplyLimit)
#include "tst_reply_limit.moc"
