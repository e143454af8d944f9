// When the list of the user's own devices is asked for, and when once more.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QByteArray list = QByteArrayLiteral("GET /api/chat/device-keys/me");
const QByteArray registration = QByteArrayLiteral("POST /api/chat/device-key");

} // namespace

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
    probe.service.hold(registration);
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests(registration, 1));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(list), 1);
    probe.service.release(registration);
    QVERIFY(probe.service.waitForRequests(list, 2));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(list), 2);
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
        probe.service.answer(list, status, "{}");
    else
        probe.service.hold(list);
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests(registration, 1));
    QVERIFY(probe.settle());
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(list), 1);
    probe.service.release(list);
}

// The list of whoever was signed in before says nothing about this user's.
void TestDeviceList::theListOfAnEarlierSignInDoesNotCount()
{
    GuiProbe probe;
    probe.service.answer(list, 200, R"([{"deviceId":"another","publicKeyBase64":"QUJD"}])");
    probe.service.hold(registration);
    QVERIFY(probe.signIn());
    QVERIFY(probe.settle());
    probe.window->logOut();
    probe.service.clear();
    probe.service.release(registration);
    probe.service.hold(list);
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests(registration, 1));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(list), 1); // the first list lacked this device, but the new one is late
    probe.service.release(list);
    QVERIFY(probe.service.waitForRequests(list, 2));
}

TIDELOFT_GUI_TEST_MAIN(TestDeviceList)
#include "tst_device_list.moc"
