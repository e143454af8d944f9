// The header that tells the service the device's identifier, whatever the identifier's file holds.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"
#include "tests/support/loopback_service.h"
#include "tests/support/test_main.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QStandardPaths>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using tideloft::tests::LoopbackService;

class TestDeviceHeader : public QObject
{
    Q_OBJECT

private slots:
    void staysOneLine_data();
    void staysOneLine();
};

// Only what no header may hold is left out; the rest of the identifier is the file's own.
void TestDeviceHeader::staysOneLine_data()
{
    QTest::addColumn<QByteArray>("between");
    QTest::addColumn<QByteArray>("sent");
    QTest::newRow("carriage return and line feed") << QByteArray("\r\n") << QByteArray();
    for (int character = 0; character < 0x20; ++character) {
        const QByteArray byte(1, static_cast<char>(character));
        QTest::addRow("character %02x", character) << byte << (byte == "\t" ? byte : QByteArray());
    }
    QTest::newRow("delete") << QByteArray("\x7f") << QByteArray();
    for (const QByteArray &kept : {QByteArray("\xc2\x85"), QByteArray(" \t ")})
        QTest::newRow(kept.toHex()) << kept << kept;
}

void TestDeviceHeader::staysOneLine()
{
    QFETCH(const QByteArray, between);
    QFETCH(const QByteArray, sent);
    const QString home = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QVERIFY(QDir().mkpath(home));
    QFile file(home + u"/device_id.txt"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("abc" + between + "X-Injected: yes\n");
    file.close();
    LoopbackService service;
    ApiClient client;
    QVERIFY(file.remove());
    QCOMPARE(client.deviceId(), QString::fromUtf8("abc" + between + "X-Injected: yes")); // as it was read
    QSignalSpy failed(&client, &ApiClient::meFailed);
    client.fetchMe();
    QVERIFY(failed.wait());
    QCOMPARE(service.lastRequest().header("X-Device-Token"), "abc" + sent + "X-Injected: yes");
    QVERIFY(!service.lastRequest().hasHeader("X-Injected"));
}

TIDELOFT_TEST_MAIN(TestDeviceHeader)
#include "tst_device_header.moc"
