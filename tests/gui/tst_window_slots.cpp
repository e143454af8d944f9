// The window as the toolkit's meta-object shows it: its slots in their order, and its one signal.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QMetaMethod>

using namespace Qt::StringLiterals;
using tideloft::tests::GuiProbe;
using tideloft::ui::MainWindow;

class TestWindowSlots : public QObject
{
    Q_OBJECT

private slots:
    void init() { tideloft::tests::failOnToolkitWarnings(); }
    void oneSignalAndThirtyThreeSlots();
    void slotsInOrder_data();
    void slotsInOrder();
    void theSignal();
    void slotsThatDoNothing_data();
    void slotsThatDoNothing();
};

namespace
{

QList<QMetaMethod> methodsOf(QMetaMethod::MethodType type)
{
    QList<QMetaMethod> found;
    const QMetaObject &meta = MainWindow::staticMetaObject;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        if (meta.method(index).methodType() == type)
            found.append(meta.method(index));
    }
    return found;
}

struct SlotRow {
    const char *signature;
    QList<QByteArray> parameters;
};

QList<SlotRow> expectedSlots()
{
    return {
        {"onLoginClicked()", {}},
        {"onLoginSucceeded(QString)", {"username"}},
        {"onLoginFailed(QString)", {"message"}},
        {"onRegisterClicked()", {}},
        {"onRegisterSucceeded(QString)", {"username"}},
        {"onRegisterFailed(QString)", {"message"}},
        {"onMeLoaded(QJsonObject)", {"me"}},
        {"onMeFailed(QString)", {"message"}},
        {"onSearchClicked()", {}},
        {"onSearchLoaded(QJsonArray)", {"users"}},
        {"onSearchFailed(QString)", {"message"}},
        {"onConversationSelected()", {}},
        {"onConversationsLoaded(QJsonArray)", {"items"}},
        {"onConversationsFailed(QString)", {"message"}},
        {"onHistoryLoaded(QString,QJsonArray)", {"peer", "items"}},
        {"onHistoryFailed(QString)", {"message"}},
        {"onSendClicked()", {}},
        {"onSearchUserDoubleClicked()", {}},
        {"onMessageSent()", {}},
        {"onMessageSendFailed(QString)", {"message"}},
        {"onDeviceKeyRegistered()", {}},
        {"onDeviceKeyRegisterFailed(QString)", {"message"}},
        {"onUserPublicKeysLoaded(QString,QJsonArray,QString)", {"username", "keys", "legacyPublicKey"}},
        {"onUserPublicKeysFailed(QString,QString)", {"username", "message"}},
        {"onMyDeviceKeysLoaded(QJsonArray)", {"keys"}},
        {"onAvatarUploaded(bool,QString)", {"ok", "localPath"}},
        {"onServersLoaded(QJsonArray)", {"servers"}},
        {"onServerLoaded(QJsonObject)", {"server"}},
        {"onServerCreated(QJsonObject)", {"server"}},
        {"onServerIconUploaded(QString,QString)", {"groupId", "iconUrl"}},
        {"refreshData()", {}},
        {"showSettingsView()", {}},
        {"showSettingsSection(QString)", {"section"}},
    };
}

} // namespace

void TestWindowSlots::oneSignalAndThirtyThreeSlots()
{
    QCOMPARE(methodsOf(QMetaMethod::Signal).size(), 1);
    QCOMPARE(methodsOf(QMetaMethod::Slot).size(), 33);
    QCOMPARE(MainWindow::staticMetaObject.methodCount() - MainWindow::staticMetaObject.methodOffset(), 34);
}

void TestWindowSlots::slotsInOrder_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QList<QByteArray>>("parameters");
    const QList<SlotRow> rows = expectedSlots();
    for (int i = 0; i < rows.size(); ++i)
        QTest::addRow("%d %s", i + 1, rows.at(i).signature)
            << i << QByteArray(rows.at(i).signature) << rows.at(i).parameters;
}

void TestWindowSlots::slotsInOrder()
{
    QFETCH(int, index);
    const QMetaMethod slot = methodsOf(QMetaMethod::Slot).value(index);
    QTEST(slot.methodSignature(), "signature");
    // The parameters' names are kept as they are given; the names of unused ones are kept too.
    QTEST(slot.parameterNames(), "parameters");
    QCOMPARE(slot.access(), QMetaMethod::Private);
    QCOMPARE(QByteArray(slot.typeName()), QByteArray("void"));
}

void TestWindowSlots::theSignal()
{
    const QMetaMethod signal = methodsOf(QMetaMethod::Signal).value(0);
    QCOMPARE(signal.methodSignature(), QByteArray("avatarPixmapReady(QPixmap)"));
    QCOMPARE(signal.parameterNames(), QList<QByteArray>{"pix"});
}

void TestWindowSlots::slotsThatDoNothing_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QString>("argument");
    for (const char *slot : {"onConversationSelected", "onSearchUserDoubleClicked", "showSettingsView"})
        QTest::newRow(slot) << QByteArray(slot) << QString();
    for (const char *slot :
         {"onSearchFailed", "onConversationsFailed", "onHistoryFailed", "showSettingsSection"})
        QTest::newRow(slot) << QByteArray(slot) << u"privacy"_s;
}

// The settings have not been built yet here.
void TestWindowSlots::slotsThatDoNothing()
{
    QFETCH(QByteArray, slot);
    QFETCH(QString, argument);
    GuiProbe probe;
    const QPixmap before = probe.window->grab();
    const int pages = probe.center()->count();
    if (argument.isNull())
        QVERIFY(tideloft::tests::callSlot(*probe.window, slot));
    else
        QVERIFY(tideloft::tests::callSlot(*probe.window, slot, Q_ARG(QString, argument)));
    QCOMPARE(probe.center()->count(), pages);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    QVERIFY(!probe.onMainPage());
    QCOMPARE(probe.window->grab().toImage(), before.toImage());
    QVERIFY(probe.settle()); // whatever had been asked for would have come in by now
    QCOMPARE(probe.service.requests().size(), 1);
}

TIDELOFT_GUI_TEST_MAIN(TestWindowSlots)
#include "tst_window_slots.moc"
