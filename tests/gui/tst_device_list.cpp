// When the list of the user's own devices is asked for, and when once more.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestDeviceList : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void aListWithoutThisDeviceIsAskedForAgainOnceItIsRegistered();
    void aLateOrFailedListIsNotAskedForAgain_data();
    void aLateOrFailedListIsNotAskedForAgain();
    void theListOfAnEarlierSignInDoesNotCount();
};

// Its first list can come before the registration; without its own key it could not read what it sends.
void TestDeviceList::aListWithoutThisDeviceIsAskedForAgainOnceItIsRegistered()
{
    GuiProbe probe;
    probe.service.hold(requests::registerDevice);
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests(requests::registerDevice, 1));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::listDevices), 1);
    probe.service.release(requests::registerDevice);
    QVERIFY(probe.service.waitForRequests(requests::listDevices, 2));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::listDevices), 2);
}

void TestDeviceList::aLateOrFailedListIsNotAskedForAgain_data()
{
    QTest::addColumn<int>("status"); // 0: it is late
    QTest::newRow("late") << 0;
    QTest::newRow("failed") << 500;
}

void TestDeviceList::aLateOrFailedListIsNotAskedForAgain()
{
    QFETCH(int, status);
    GuiProbe probe;
    if (status)
        probe.service.answer(requests::listDevices, status, "{}");
    else
        probe.service.hold(requests::listDevices);
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests(requests::registerDevice, 1));
    QVERIFY(probe.settle());
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::listDevices), 1);
    probe.service.release(requests::listDevices);
}

// The list of whoever was signed in before says nothing about this user's.
void TestDeviceList::theListOfAnEarlierSignInDoesNotCount()
{
    GuiProbe probe;
    probe.service.answer(requests::listDevices, 200, R"([{"deviceId":"another","publicKeyBase64":"QUJD"}])");
    probe.service.hold(requests::registerDevice);
    QVERIFY(probe.signIn());
    QVERIFY(probe.settle());
    probe.window->logOut();
    probe.service.clear();
    probe.service.release(requests::registerDevice);
    probe.service.hold(requests::listDevices);
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests(requests::registerDevice, 1));
    QVERIFY(probe.settle());
    // The first list lacked this device, but the new one is late.
    QCOMPARE(probe.service.count(requests::listDevices), 1);
    probe.service.release(requests::listDevices);
    QVERIFY(probe.service.waitForRequests(requests::listDevices, 2));
}

TIDELOFT_GUI_TEST_MAIN(TestDeviceList)
#include "tst_device_list.moc"
