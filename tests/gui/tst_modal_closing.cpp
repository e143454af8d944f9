// The end at any moment: the window is closed, the program quits or restarts, the user logs out, while
// something is under way or open.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/gui/tst_modal_probe.h"
#include "tests/gui/tst_picture_probe.h"
#include "tests/support/patience.h"
#include "tests/support/person.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

// Where a copy of the program that a restart starts leaves a file of its own and does nothing else.
constexpr auto copiesVariable = "TIDELOFT_MODAL_CLOSING_COPIES";
constexpr int stillRunning = 7;

int leaveTrace()
{
    QFile trace(qEnvironmentVariable(copiesVariable) + u"/%1"_s.arg(QCoreApplication::applicationPid()));
    return trace.open(QIODevice::WriteOnly) ? 0 : 1;
}

/// A request that waits for its answer, and what a person did to cause it.
struct Moment {
    const char *name;
    QByteArray waiting;
    std::function<void(ModalProbe &)> begin;
    bool isOfMessage = false;
};

void signInAgain(ModalProbe &probe, const QString &button)
{
    probe.window->logOut();
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(button);
}

const QList<Moment> &moments()
{
    static const PictureFolder folder;
    static const QList<Moment> all{
        {"sign-in", "POST /api/auth/login", [](auto &probe) { signInAgain(probe, u"primaryButton"_s); }},
        {"profile", "GET /api/me", [](auto &probe) { signInAgain(probe, u"primaryButton"_s); }},
        {"new account", "POST /api/auth/register", [](auto &probe) { signInAgain(probe, u"ghostButton"_s); }},
        {"key registration", "POST /api/chat/device-key",
         [](auto &probe) { signInAgain(probe, u"primaryButton"_s); }},
        {"recipient's keys", "GET /api/chat/public-key/bob", [](auto &probe) { probe.write(u"not lost"_s); },
         true},
        {"sending", "POST /api/chat/send", [](auto &probe) { probe.write(u"not lost"_s); }, true},
        {"history", "GET /api/chat/history/bob", [](auto &probe) { callSlot(*probe.window, "refreshData"); }},
        {"search", "GET /api/users/search",
         [](auto &probe) { probe.template the<QLineEdit>(u"sideSearch"_s)->setText(u"some"_s); }},
        {"new server", "POST /api/groups", [](auto &probe) { createServer(probe, u"Lagoon"_s); }},
        {"picture", "POST /api/profile/avatar/upload",
         [](auto &probe) { chooseAvatar(probe, folder.writeWidePicture(u"p.png"_s)); }},
        {"profile texts", "POST /api/profile/update", [](auto &probe) {
             probe.openSettings();
             buttonWith(probe.content(Account), u"Save changes"_s)->click();
         }}};
    return all;
}

/// Runs the event loop as the client does until LAST ends it; 0 if the program was asked to quit.
int runWith(tideloft::ui::MainWindow *window, const std::function<void()> &last)
{
    const QObject run; // nothing of this run is left for the next
    QTimer::singleShot(0, window, last);
    QTimer::singleShot(patience(), &run, [] { QCoreApplication::exit(stillRunning); });
    return QApplication::exec();
}

const QList<QPair<const char *, std::function<void(ModalProbe &)>>> &endings()
{
    static const QList<QPair<const char *, std::function<void(ModalProbe &)>>> all{
        {"destroyed", [](ModalProbe &probe) { probe.window.reset(); }},
        {"logged out", [](ModalProbe &probe) { probe.window->logOut(); }},
        {"closed",
         [](ModalProbe &probe) {
             auto *window = probe.window.get();
             QCOMPARE(runWith(window, [window] { window->close(); }), 0);
         }},
        {"restarted", [](ModalProbe &probe) {
             auto *window = probe.window.get();
             QCOMPARE(runWith(window, [window] { QTest::keyClick(window, Qt::Key_R, Qt::ControlModifier); }),
                      0);
         }}};
    return all;
}

/// The same with FRONT open, and END called then.
int runAndEnd(ModalProbe &probe, const InFront &front, const std::function<void()> &end)
{
    const Person<QWidget> person([&end](QWidget &) { end(); });
    return runWith(probe.window.get(), [&] { front.open(probe); });
}

using Closing = void (*)(QWidget &window);

void quitProgram(QWidget &)
{
    QCoreApplication::quit();
}

void closeWindow(QWidget &window)
{
    window.close();
    QVERIFY(!window.isVisible());
    ModalProbe::closeAll();
}

// The cross of the title bar, which a window manager offers behind a dialog too.
void askToClose(QWidget &window)
{
    QCloseEvent request;
    QCoreApplication::sendEvent(window.windowHandle(), &request);
    QVERIFY(!window.isVisible());
    ModalProbe::closeAll();
}

} // namespace

Q_DECLARE_METATYPE(Closing)

class TestModalClosing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void whileAReplyIsAwaited_data();
    void whileAReplyIsAwaited();
    void whileSomethingIsOpen_data();
    void whileSomethingIsOpen();
    void aHeldRestartKeyStartsOneCopy();

private:
    [[nodiscard]] qsizetype copies() const { return QDir(folder->path()).entryList(QDir::Files).size(); }

    std::unique_ptr<QTemporaryDir> folder;
};

void TestModalClosing::initTestCase()
{
    prepareForFileDialogs();
}

void TestModalClosing::init()
{
    failOnToolkitWarnings();
    // A program that has quit ends every later event loop at once, those of dialogs too, until it runs again.
    QCoreApplication::processEvents();
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QApplication::exec();
    folder = std::make_unique<QTemporaryDir>();
    qputenv(copiesVariable, folder->path().toUtf8());
}

void TestModalClosing::whileAReplyIsAwaited_data()
{
    QTest::addColumn<int>("moment");
    QTest::addColumn<int>("ending");
    QTest::addColumn<int>("status");
    for (int moment = 0; moment < moments().size(); ++moment) {
        for (int ending = 0; ending < endings().size(); ++ending) {
            for (const int status : {200, 500})
                QTest::addRow("%s, %s, then %d", moments().at(moment).name, endings().at(ending).first,
                              status)
                    << moment << ending << status;
        }
    }
}

void TestModalClosing::whileAReplyIsAwaited()
{
    QFETCH(const int, moment);
    QFETCH(const int, ending);
    QFETCH(const int, status);
    const Moment &now = moments().at(moment);
    ModalProbe probe;
    probe.input()->setText(u"not lost"_s);
    probe.service.hold(now.waiting);
    now.begin(probe);
    QTRY_VERIFY(probe.service.heldCount(now.waiting) > 0);
    endings().at(ending).second(probe);
    if (status != 200)
        probe.service.answer(now.waiting, status, R"({"message":"late"})");
    probe.service.release(now.waiting);
    if (probe.window)
        QVERIFY(probe.settle());
    ModalProbe::closeAll();
    const bool isSent = status == 200 && now.isOfMessage;
    if (probe.window)
        QTRY_COMPARE(probe.input()->text(), isSent ? QString() : u"not lost"_s);
    if (endings().at(ending).first == QByteArray("restarted"))
        QTRY_COMPARE(copies(), 1);
}

void TestModalClosing::whileSomethingIsOpen_data()
{
    QTest::addColumn<int>("front");
    QTest::addColumn<Closing>("closing");
    const QList<InFront> fronts = everythingInFront();
    for (int i = 0; i < fronts.size(); ++i) {
        QTest::addRow("%s, the program quits", fronts.at(i).name) << i << Closing(quitProgram);
        QTest::addRow("%s, the window closes", fronts.at(i).name) << i << Closing(closeWindow);
        QTest::addRow("%s, the desktop closes the window", fronts.at(i).name) << i << Closing(askToClose);
    }
}

// A program that quits closes what is open, and its event loops end from the innermost.
void TestModalClosing::whileSomethingIsOpen()
{
    QFETCH(const int, front);
    QFETCH(const Closing, closing);
    ModalProbe probe;
    probe.input()->setText(u"not lost"_s);
    const int code = runAndEnd(probe, everythingInFront().at(front), [&] { closing(*probe.window); });
    QCOMPARE(code, 0);
    QCOMPARE(probe.input()->text(), u"not lost"_s);
    QVERIFY(!QApplication::activePopupWidget() && !QApplication::activeModalWidget());
}

void TestModalClosing::aHeldRestartKeyStartsOneCopy()
{
    ModalProbe probe;
    auto *window = probe.window.get();
    const int code = runWith(window, [window] {
        for (int i = 0; i < 20; ++i) { // the window was busy, and the keyboard repeated the key meanwhile
            QKeyEvent key(QEvent::KeyPress, Qt::Key_R, Qt::ControlModifier, {}, i > 0);
            QCoreApplication::sendEvent(window, &key);
        }
    });
    QCOMPARE(code, 0);
    QTRY_VERIFY(copies() > 0);
    QVERIFY(probe.settle()); // further copies would have come meanwhile
    QCOMPARE(copies(), 1);
}

static int runOrLeaveTrace(int argc, char **argv)
{
    if (qEnvironmentVariableIsSet(copiesVariable))
        return leaveTrace();
    return runTests<QApplication, TestModalClosing>(argc, argv);
}

TIDELOFT_TEST_RUN(runOrLeaveTrace)
#include "tst_modal_closing.moc"
