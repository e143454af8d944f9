// When the list of the user's devices is asked for once more.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/messages/own_devices.h"

#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft;

class TestOwnDevices : public QObject
{
    Q_OBJECT

private slots:
    void asksAgain_data();
    void asksAgain();
    void asksOnlyOnceInASignIn();
    void theListOutlivesTheSignIn();
};

namespace
{

QJsonArray listWith(const QString &device)
{
    return {QJsonObject{{u"deviceId"_s, device}}};
}

/// Lets DEVICES hear of each event of EVENTS: "in", "out", "registered", "listed" with this device,
/// "without".
bool asksAfter(ui::OwnDevices &devices, const QStringList &events)
{
    bool asks = false;
    for (const QString &event : events) {
        if (event == u"in")
            devices.beginSignIn();
        else if (event == u"out")
            devices.endSignIn();
        else if (event == u"registered")
            devices.setRegistered();
        else
            devices.setKeys(listWith(event == u"listed" ? u"this"_s : u"another"_s));
        asks = devices.takeReloadRequest(u"this"_s);
    }
    return asks;
}

} // namespace

void TestOwnDevices::asksAgain_data()
{
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<bool>("asks");
    const auto row = [](const char *name, const QStringList &events, bool asks) {
        QTest::newRow(name) << events << asks;
    };
    row("the list came first, without it", {u"in"_s, u"without"_s, u"registered"_s}, true);
    row("the list came last, without it", {u"in"_s, u"registered"_s, u"without"_s}, true);
    row("the list has it", {u"in"_s, u"listed"_s, u"registered"_s}, false);
    row("the list is late", {u"in"_s, u"registered"_s}, false);
    row("the registration is late or has failed", {u"in"_s, u"without"_s}, false);
    row("the list is of the sign-in before", {u"in"_s, u"without"_s, u"in"_s, u"registered"_s}, false);
    row("the registration is of the sign-in before", {u"in"_s, u"registered"_s, u"in"_s, u"without"_s},
        false);
    row("both come after the log-out", {u"in"_s, u"out"_s, u"registered"_s, u"without"_s}, false);
    row("a second sign-in", {u"in"_s, u"out"_s, u"in"_s, u"registered"_s, u"without"_s}, true);
}

void TestOwnDevices::asksAgain()
{
    QFETCH(QStringList, events);
    ui::OwnDevices devices;
    QTEST(asksAfter(devices, events), "asks");
}

void TestOwnDevices::asksOnlyOnceInASignIn()
{
    ui::OwnDevices devices;
    QVERIFY(asksAfter(devices, {u"in"_s, u"without"_s, u"registered"_s}));
    QVERIFY(!asksAfter(devices, {u"without"_s}));
    QVERIFY(!asksAfter(devices, {u"registered"_s}));
}

void TestOwnDevices::theListOutlivesTheSignIn()
{
    ui::OwnDevices devices;
    asksAfter(devices, {u"in"_s, u"listed"_s, u"out"_s, u"in"_s});
    QCOMPARE(devices.keys(), listWith(u"this"_s));
}

TIDELOFT_TEST_MAIN(TestOwnDevices)
#include "tst_own_devices.moc"
