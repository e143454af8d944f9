// Every shape of device key record that a service may list.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/device_key_records.h"
#include "tests/support/test_main.h"

#include <QJsonDocument>

using tideloft::net::normaliseDeviceKeys;

class TestDeviceKeyRecords : public QObject
{
    Q_OBJECT

private slots:
    void normalises_data();
    void normalises();
};

void TestDeviceKeyRecords::normalises_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *source, const char *expected) {
        QTest::newRow(name) << QByteArray(source) << QByteArray(expected);
    };
    row("empty list", "[]", "[]");
    row("what is no object is dropped", R"([42,"a",null,true,[{}]])", "[]");
    row("publicKey becomes publicKeyBase64", R"([42,{"deviceId":"d","publicKey":"K"}])",
        R"([{"deviceId":"d","publicKeyBase64":"K"}])");
    row("publicKeyBase64 stays", R"([{"deviceId":"d","publicKeyBase64":"K"}])",
        R"([{"deviceId":"d","publicKeyBase64":"K"}])");
    row("both keys stay both", R"([{"publicKey":"A","publicKeyBase64":"B"}])",
        R"([{"publicKey":"A","publicKeyBase64":"B"}])");
    row("neither key is kept too", R"([{"deviceId":"d"},{}])", R"([{"deviceId":"d"},{}])");
    row("an empty publicKeyBase64 counts as there", R"([{"publicKey":"A","publicKeyBase64":""}])",
        R"([{"publicKey":"A","publicKeyBase64":""}])");
    row("a publicKey that is no text moves as it is", R"([{"publicKey":7}])", R"([{"publicKeyBase64":7}])");
    row("other fields pass, the order stays", R"([{"publicKey":"A","x":[1]},{"publicKey":"B","deviceId":2}])",
        R"([{"publicKeyBase64":"A","x":[1]},{"publicKeyBase64":"B","deviceId":2}])");
}

void TestDeviceKeyRecords::normalises()
{
    QFETCH(const QByteArray, source);
    QFETCH(const QByteArray, expected);
    QCOMPARE(normaliseDeviceKeys(QJsonDocument::fromJson(source).array()),
             QJsonDocument::fromJson(expected).array());
}

TIDELOFT_TEST_MAIN(TestDeviceKeyRecords)
#include "tst_device_key_records.moc"
