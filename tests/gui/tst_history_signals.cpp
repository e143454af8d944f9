// The client's two signals of a history: one draws it, the other leaves what is drawn.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/patience.h"
#include "tests/support/test_main.h"

#include <QListWidget>
#include <QMessageBox>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestHistorySignals : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void loadedDrawsTheHistory();
    void failedKeepsTheView();
};

namespace
{

/// Opens the conversation with bob and waits for its only message. Nothing else is ever answered: replies
/// come over several connections, so an older one may be the last to be drawn.
bool showMessageOfBob(GuiProbe &probe)
{
    probe.refreshTimer()->stop();
    probe.service.answer("GET /api/chat/history/bob", 200, R"([{"from":"bob","text":"Hi"}])");
    if (!probe.listPeers({u"bob"_s}))
        return false;
    probe.clickPeer(u"bob"_s);
    const auto *list = probe.the<QListWidget>(u"messageList"_s);
    return waitFor([list] { return list->count() == 2; }, patience());
}

} // namespace

void TestHistorySignals::loadedDrawsTheHistory()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(showMessageOfBob(probe));
}

void TestHistorySignals::failedKeepsTheView()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(showMessageOfBob(probe));
    probe.service.answer("GET /api/chat/history/bob", 404, R"({"message":"Nobody"})");
    const QListWidgetItem *entry = probe.the<QListWidget>(u"messageList"_s)->item(0);
    probe.clickPeer(u"bob"_s);
    QVERIFY(probe.settle());
    QCOMPARE(probe.the<QListWidget>(u"messageList"_s)->item(0), entry);
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

TIDELOFT_GUI_TEST_MAIN(TestHistorySignals)
#include "tst_history_signals.moc"
