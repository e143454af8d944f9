// Replies that arrive while a box, a menu or a dialog is open, and failures that come in a row.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_modal_probe.h"
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

void addFronts()
{
    QTest::addColumn<int>("front");
    const QList<InFront> fronts = everythingInFront();
    for (int i = 0; i < fronts.size(); ++i)
        QTest::newRow(fronts.at(i).name) << i;
}

/// The message boxes that are open.
qsizetype boxCount()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::count_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && qobject_cast<const QMessageBox *>(window);
    });
}

bool isSaid(const QString &text)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [&text](const QWidget *window) {
        const auto *box = qobject_cast<const QMessageBox *>(window);
        return box && box->isVisible() && box->text() == text;
    });
}

} // namespace

class TestModalReplies : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { failOnToolkitWarnings(); }
    void everythingArrivesMeanwhile_data() { addFronts(); }
    void everythingArrivesMeanwhile();
    void logOutMeanwhile_data() { addFronts(); }
    void logOutMeanwhile();
    void theSameFailureFiftyTimesIsOneBox();
    void theSameFailureIsShownAgainLater();
    void fiftyFailuresAreReadOneByOne();
};

void TestModalReplies::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    placeKeyPair();
}

void TestModalReplies::everythingArrivesMeanwhile()
{
    QFETCH(const int, front);
    ModalProbe probe;
    probe.service.hold(requests::keysOfBob);
    probe.write(u"not lost"_s);
    QVERIFY(probe.service.waitForRequests(requests::keysOfBob, 1));
    const QStringList said = probe.during(everythingInFront().at(front), [&probe] {
        probe.service.answer("GET /api/chat/history/bob", 200, R"([{"from":"bob","text":"new"}])");
        probe.service.answer(requests::keysOfBob, 500, R"({"message":"refused"})");
        QVERIFY(listServers(probe, {server(u"g2"_s, u"Lagoon"_s)})); // the button of a menu is gone
        QVERIFY(probe.listPeers({u"bob"_s, u"dan"_s}));
        probe.service.release(requests::keysOfBob);
        QTRY_VERIFY(isSaid(u"refused"_s));
        QTRY_COMPARE(probe.the<QListWidget>(u"messageList"_s)->count(), 2);
    });
    QCOMPARE(said.count(u"refused"_s), 1);
    QCOMPARE(probe.input()->text(), u"not lost"_s);
}

// Only a program can log out then, but a reply may do as much one day.
void TestModalReplies::logOutMeanwhile()
{
    QFETCH(const int, front);
    ModalProbe probe;
    probe.input()->setText(u"not lost"_s);
    probe.during(everythingInFront().at(front), [&probe] { probe.window->logOut(); });
    QVERIFY(!probe.onMainPage());
    QCOMPARE(probe.input()->text(), u"not lost"_s);
    QVERIFY(probe.signIn());
}

void TestModalReplies::theSameFailureFiftyTimesIsOneBox()
{
    ModalProbe probe;
    probe.service.hold(requests::keysOfBob);
    probe.service.answer(requests::keysOfBob, 503, R"({"message":"busy"})");
    for (int i = 0; i < 50; ++i)
        probe.write(u"not lost"_s); // as the Return key does that is held down
    QTRY_VERIFY(probe.service.heldCount(requests::keysOfBob) > 0);
    probe.service.release(requests::keysOfBob);
    QVERIFY(probe.service.waitForRequests(requests::keysOfBob, 50));
    QVERIFY(probe.settle());
    QVERIFY(probe.settle());
    QCOMPARE(boxCount(), 1);
    QCOMPARE(ModalProbe::closeAll(), QStringList{u"busy"_s});
    QCOMPARE(probe.input()->text(), u"not lost"_s);
}

void TestModalReplies::theSameFailureIsShownAgainLater()
{
    ModalProbe probe;
    probe.service.answer(requests::keysOfBob, 503, R"({"message":"busy"})");
    for (int i = 0; i < 3; ++i) {
        probe.write(u"not lost"_s);
        QTRY_COMPARE(boxCount(), 1);
        QCOMPARE(ModalProbe::closeAll(), QStringList{u"busy"_s});
    }
}

// Each says something else, so each is shown; the Return key alone leads back to the window.
void TestModalReplies::fiftyFailuresAreReadOneByOne()
{
    ModalProbe probe;
    for (int i = 0; i < 50; ++i) {
        probe.service.answerOnce(requests::keysOfBob, 503,
                                 R"({"message":"busy )" + QByteArray::number(i) + R"("})");
        probe.write(u"not lost"_s);
    }
    QTRY_COMPARE(boxCount(), 50);
    for (int left = 49; left >= 0; --left) {
        QTest::keyClick(QApplication::activeModalWidget()->windowHandle(), Qt::Key_Return);
        QTRY_COMPARE(boxCount(), left);
    }
    QCOMPARE(probe.input()->text(), u"not lost"_s);
    probe.write(u"again"_s);
    QTRY_COMPARE(probe.input()->text(), QString());
}

TIDELOFT_GUI_TEST_MAIN(TestModalReplies)

#include "tst_modal_replies.moc"
