// The conversation list's current row: for the keyboard it outlives a rebuild, and no eye sees it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/popups.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestCurrentRow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void survivesARebuild_data();
    void survivesARebuild();
    void goesWithItsEntry();
    void doesNotComeBack();
    void noneStaysNone();
    void doesNotDrawBackWhoHasScrolledAway();
    void aClickedRowSurvivesUnmarked();
    void leavesNoMark();
    void opensByKeyWithOneRequest_data();
    void opensByKeyWithOneRequest();
};

namespace
{

const QStringList threePeers{u"anna"_s, u"bob"_s, u"carol"_s};

QListWidget *dmList(const GuiProbe &probe)
{
    return probe.the<QListWidget>(u"dmList"_s);
}

QString currentPeer(const GuiProbe &probe)
{
    const QListWidgetItem *current = dmList(probe)->currentItem();
    return current ? current->data(Qt::UserRole).toString() : u"(none)"_s;
}

void pressKey(const GuiProbe &probe, Qt::Key key)
{
    QTest::keyClick(probe.window->windowHandle(), key);
}

/// Lists the three and leads the keyboard to bob.
bool walkToBob(SettingsProbe &probe)
{
    probe.service.answer("GET /api/chat/history/bob", 200, "[]");
    if (!probe.listPeers(threePeers))
        return false;
    probe.the<QWidget>(u"sideSearch"_s)->setFocus();
    pressKey(probe, Qt::Key_Tab);
    pressKey(probe, Qt::Key_Down);
    return currentPeer(probe) == u"bob";
}

// The rows get their places a moment after a rebuild.
QImage pictureOf(QListWidget *list)
{
    list->doItemsLayout();
    QCoreApplication::processEvents();
    return list->viewport()->grab().toImage();
}

} // namespace

void TestCurrentRow::survivesARebuild_data()
{
    QTest::addColumn<QStringList>("peers");
    QTest::newRow("with one more below") << QStringList{u"anna"_s, u"bob"_s, u"carol"_s, u"dave"_s};
    QTest::newRow("with one more above") << QStringList{u"dave"_s, u"anna"_s, u"bob"_s, u"carol"_s};
    QTest::newRow("re-ordered, up") << QStringList{u"bob"_s, u"anna"_s, u"carol"_s};
    QTest::newRow("re-ordered, down") << QStringList{u"carol"_s, u"anna"_s, u"bob"_s};
    QTest::newRow("with others gone") << QStringList{u"bob"_s};
}

void TestCurrentRow::survivesARebuild()
{
    QFETCH(QStringList, peers);
    SettingsProbe probe;
    QVERIFY(walkToBob(probe));
    QVERIFY(probe.listPeers(peers));
    QCOMPARE(currentPeer(probe), u"bob"_s);
    QVERIFY(dmList(probe)->hasFocus());
    QVERIFY(dmList(probe)->selectedItems().isEmpty());
    pressKey(probe, Qt::Key_Return);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"bob"_s);
}

void TestCurrentRow::goesWithItsEntry()
{
    SettingsProbe probe;
    QVERIFY(walkToBob(probe));
    QVERIFY(probe.listPeers({u"anna"_s, u"carol"_s}));
    QCOMPARE(currentPeer(probe), u"(none)"_s);
    pressKey(probe, Qt::Key_Return); // nothing to open
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    pressKey(probe, Qt::Key_Down); // and the keyboard begins at the top
    QCOMPARE(currentPeer(probe), u"anna"_s);
}

void TestCurrentRow::doesNotComeBack()
{
    SettingsProbe probe;
    QVERIFY(walkToBob(probe));
    QVERIFY(probe.listPeers({u"anna"_s}));
    QVERIFY(probe.listPeers(threePeers.mid(0, 2)));
    QCOMPARE(currentPeer(probe), u"(none)"_s);
}

void TestCurrentRow::noneStaysNone()
{
    SettingsProbe probe;
    QVERIFY(probe.listPeers(threePeers));
    QCOMPARE(currentPeer(probe), u"(none)"_s);
    QVERIFY(probe.listPeers({u"bob"_s, u"anna"_s}));
    QCOMPARE(currentPeer(probe), u"(none)"_s);
}

void TestCurrentRow::doesNotDrawBackWhoHasScrolledAway()
{
    SettingsProbe probe;
    QStringList peers = threePeers;
    for (int i = 0; i < 40; ++i)
        peers.append(u"peer-%1"_s.arg(i));
    QVERIFY(probe.listPeers(peers));
    probe.clickPeer(u"anna"_s);
    QScrollBar *bar = dmList(probe)->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 1000);
    bar->setValue(1000);
    QVERIFY(probe.listPeers(peers + QStringList{u"zoe"_s}));
    dmList(probe)->doItemsLayout();
    QCOMPARE(bar->value(), 1000);
    QCOMPARE(currentPeer(probe), u"anna"_s);
}

void TestCurrentRow::aClickedRowSurvivesUnmarked()
{
    SettingsProbe probe;
    probe.service.answer("GET /api/chat/history/bob", 200, "[]");
    QVERIFY(probe.listPeers(threePeers));
    const QImage plain = pictureOf(dmList(probe));
    probe.clickPeer(u"bob"_s);
    QVERIFY(probe.listPeers(threePeers + QStringList{u"dave"_s}));
    QVERIFY(probe.listPeers(threePeers));
    QCOMPARE(currentPeer(probe), u"bob"_s);
    QVERIFY(dmList(probe)->selectedItems().isEmpty());
    QTRY_COMPARE(pictureOf(dmList(probe)), plain);
}

void TestCurrentRow::leavesNoMark()
{
    SettingsProbe probe;
    QVERIFY(probe.listPeers(threePeers));
    const QImage plain = pictureOf(dmList(probe));
    QVERIFY(walkToBob(probe));
    QVERIFY(probe.listPeers(threePeers + QStringList{u"dave"_s}));
    QVERIFY(probe.listPeers(threePeers));
    QCOMPARE(currentPeer(probe), u"bob"_s);
    QVERIFY(dmList(probe)->selectedItems().isEmpty());
    QVERIFY(!dmList(probe)->selectionModel()->hasSelection());
    QTRY_COMPARE(pictureOf(dmList(probe)), plain);
}

void TestCurrentRow::opensByKeyWithOneRequest_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Space") << Qt::Key_Space;
}

void TestCurrentRow::opensByKeyWithOneRequest()
{
    QFETCH(Qt::Key, key);
    SettingsProbe probe;
    QVERIFY(walkToBob(probe));
    QCOMPARE(probe.centerPage(), u"emptyState"_s); // walking opens nothing
    probe.service.clear();
    pressKey(probe, key);
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"bob"_s);
    QVERIFY(probe.the<QWidget>(u"msgInput"_s)->hasFocus());
    QCOMPARE(probe.the<QLineEdit>(u"msgInput"_s)->text(), QString()); // the key went no further
    QVERIFY(probe.service.waitForRequests("GET /api/chat/history/bob", 1));
    QCOMPARE(probe.service.requests().size(), 1);
}

TIDELOFT_GUI_TEST_MAIN(TestCurrentRow)
#include "tst_current_row.moc"
