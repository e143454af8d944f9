// For which devices a message is sealed.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "tests/ui/messages/read_messages.h"
#include "ui/messages/sealing_devices.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;
using tideloft::ui::recipientDevices;
using tideloft::ui::senderDevices;
using namespace tideloft::tests;

class TestSealingDevices : public QObject
{
    Q_OBJECT

private slots:
    void recipients_data();
    void recipients();
    void senders_data();
    void senders();
};

void TestSealingDevices::recipients_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("legacy");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *keys, const QString &legacy, const char *expected) {
        QTest::newRow(name) << QByteArray(keys) << legacy << QByteArray(expected);
    };
    row("an empty list and a legacy key: one device legacy", "[]", u"K"_s,
        R"([{"deviceId":"legacy","publicKeyBase64":"K"}])");
    row("neither keys nor a legacy key", "[]", {}, "[]");
    row("the keys as they came, in their order",
        R"([{"deviceId":"b","publicKeyBase64":"B","x":[1]},{"deviceId":"a"}])", {},
        R"([{"deviceId":"b","publicKeyBase64":"B","x":[1]},{"deviceId":"a"}])");
    row("a legacy key beside keys is left out", R"([{"deviceId":"a"}])", u"K"_s, R"([{"deviceId":"a"}])");
    row("a legacy key of blanks is a key", "[]", u" "_s, R"([{"deviceId":"legacy","publicKeyBase64":" "}])");
}

void TestSealingDevices::recipients()
{
    QFETCH(const QByteArray, keys);
    QFETCH(const QString, legacy);
    QFETCH(const QByteArray, expected);
    QCOMPARE(recipientDevices(parsed(keys), legacy), parsed(expected));
}

void TestSealingDevices::senders_data()
{
    QTest::addColumn<QByteArray>("devices");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *devices, const char *expected) {
        QTest::newRow(name) << QByteArray(devices) << QByteArray(expected);
    };
    row("three devices of the user: this one alone",
        R"([{"deviceId":"other"},{"deviceId":"this","publicKeyBase64":"K","x":1},{"deviceId":"third"}])",
        R"([{"deviceId":"this","publicKeyBase64":"K","x":1}])");
    row("the first of two with the same identifier",
        R"([{"deviceId":"this","n":1},{"deviceId":"this","n":2}])", R"([{"deviceId":"this","n":1}])");
    row("this device is not listed", R"([{"deviceId":"other"}])", "[]");
    row("no devices", "[]", "[]");
    row("letter case counts", R"([{"deviceId":"THIS"}])", "[]");
    row("blanks count", R"([{"deviceId":" this "}])", "[]");
    row("what is no object is passed over", R"(["this",7,null,["this"],{"deviceId":"this"}])",
        R"([{"deviceId":"this"}])");
    row("an identifier that is no text", R"([{"deviceId":1},{}])", "[]");
}

void TestSealingDevices::senders()
{
    QFETCH(const QByteArray, devices);
    QFETCH(const QByteArray, expected);
    QCOMPARE(senderDevices(parsed(devices), u"this"_s), parsed(expected));
}

TIDELOFT_TEST_MAIN(TestSealingDevices)
#include "tst_sealing_devices.moc"
