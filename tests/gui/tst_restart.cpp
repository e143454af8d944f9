// The restart key: the running program quits, and a copy of it starts with the same command line.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/loopback_service.h"
#include "tests/support/test_main.h"
#include "tests/support/widget_parts.h"
#include "ui/main_window.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSaveFile>
#include <QTimer>

#include <vector>

using namespace Qt::StringLiterals;
using tideloft::tests::LoopbackService;
using tideloft::ui::MainWindow;

namespace
{

// Where the copy says how it was started. Only the test sets it, for the copies that it starts.
constexpr auto reportVariable = "TIDELOFT_RESTART_REPORT";
constexpr int stillRunning = 7;

// What the copy does in place of the tests: its working directory and its arguments, a line each.
int report(int argc, char **argv)
{
    QSaveFile file(qEnvironmentVariable(reportVariable)); // appears only when it is complete
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    file.write(QDir::currentPath().toUtf8());
    for (int i = 0; i < argc; ++i)
        file.write('\n' + QByteArray(argv[i]));
    return file.commit() ? 0 : 1;
}

QStringList readReport(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n');
}

// Runs the event loop as the client does, with KEY pressed in it. The exit code is 0 if the program was asked
// to quit.
int runAndPress(QWidget *target, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const QObject run; // nothing of this run is left for the next
    QTimer::singleShot(0, &run, [&run, target, key, modifiers] {
        QTest::keyClick(target, key, modifiers);
        QTimer::singleShot(0, &run, [] { QCoreApplication::exit(stillRunning); });
    });
    return QApplication::exec();
}

} // namespace

class TestRestart : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void quitsAndStartsTheSameCommandLine();
    void worksWhileAMessageIsTyped();
    void otherKeysDoNotRestart_data();
    void otherKeysDoNotRestart();

private:
    void expectReport() const;
    static void openConversation(MainWindow &window, LoopbackService &service);

    QString startFolder = QDir::currentPath();
    QTemporaryDir workFolder;
    QString reportFile;
};

void TestRestart::init()
{
    QVERIFY(QDir::setCurrent(workFolder.path()));
    reportFile = workFolder.filePath(u"report"_s);
    qputenv(reportVariable, reportFile.toUtf8());
}

void TestRestart::cleanup()
{
    qunsetenv(reportVariable);
    QFile::remove(reportFile);
    QDir::setCurrent(startFolder);
}

void TestRestart::expectReport() const
{
    QTRY_VERIFY(QFile::exists(reportFile));
    // No folder was asked for, so the copy works where this program does. The toolkit's own list of arguments
    // begins with the program, and so the copy finds the program twice.
    const QStringList arguments = QCoreApplication::arguments();
    QCOMPARE(arguments.last(), u"1999"_s);
    QCOMPARE(readReport(reportFile),
             QStringList{QDir::currentPath()} << QCoreApplication::applicationFilePath() << arguments);
}

void TestRestart::quitsAndStartsTheSameCommandLine()
{
    MainWindow window;
    window.show();
    QCOMPARE(runAndPress(&window, Qt::Key_R, Qt::ControlModifier), 0);
    expectReport();
}

void TestRestart::openConversation(MainWindow &window, LoopbackService &service)
{
    service.answer("POST /api/auth/login", 200, R"({"username":"alice"})");
    service.answer("GET /api/me", 200, R"({"username":"alice"})");
    service.answer("POST /api/chat/device-key", 200, "{}");
    service.answer("GET /api/chat/conversations", 200, R"([{"peer":"bob","text":"hi"}])");
    window.show();
    tideloft::tests::waitForMainPage(window);
    const auto fields = window.findChildren<QLineEdit *>(u"authInput"_s);
    QTest::keyClicks(fields.value(0), u"alice"_s);
    QTest::keyClicks(fields.value(1), u"a good password"_s);
    QTest::mouseClick(window.findChild<QPushButton *>(u"primaryButton"_s), Qt::LeftButton);
    auto *conversations = window.findChild<QListWidget *>(u"dmList"_s);
    QTRY_COMPARE(conversations->count(), 1);
    QTest::mouseClick(conversations->viewport(), Qt::LeftButton, {},
                      conversations->visualItemRect(conversations->item(0)).center());
}

void TestRestart::worksWhileAMessageIsTyped()
{
    LoopbackService service;
    MainWindow window;
    openConversation(window, service);
    auto *input = window.findChild<QLineEdit *>(u"msgInput"_s);
    QTRY_VERIFY(input->hasFocus());
    QTest::keyClicks(input, u"not sent"_s);
    QCOMPARE(runAndPress(input, Qt::Key_R, Qt::ControlModifier), 0);
    expectReport();
    QCOMPARE(input->text(), u"not sent"_s);
}

void TestRestart::otherKeysDoNotRestart_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    const auto row = [](const char *name, Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::newRow(name) << key << modifiers;
    };
    row("R alone", Qt::Key_R, Qt::NoModifier);
    row("Shift+R", Qt::Key_R, Qt::ShiftModifier);
    row("Ctrl+Shift+R", Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    row("Ctrl+Alt+R", Qt::Key_R, Qt::ControlModifier | Qt::AltModifier);
    row("Alt+R", Qt::Key_R, Qt::AltModifier);
    row("Meta+R", Qt::Key_R, Qt::MetaModifier);
    row("Ctrl+E", Qt::Key_E, Qt::ControlModifier);
    row("Ctrl+Return", Qt::Key_Return, Qt::ControlModifier);
    row("F5", Qt::Key_F5, Qt::NoModifier);
}

// Quitting and starting the copy are one: a program that runs on has started none.
void TestRestart::otherKeysDoNotRestart()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    MainWindow window;
    window.show();
    QCOMPARE(runAndPress(&window, key, modifiers), stillRunning);
    QVERIFY(window.isVisible());
    QVERIFY(!QFile::exists(reportFile));
}

static int runOrReport(int argc, char **argv)
{
    if (qEnvironmentVariableIsSet(reportVariable))
        return report(argc, argv);
    // Arguments that change nothing, so that there are some to pass on.
    char option[] = "-maxwarnings";
    char value[] = "1999";
    std::vector<char *> arguments(argv, argv + argc);
    arguments.insert(arguments.end(), {option, value, nullptr});
    return tideloft::tests::runTests<QApplication, TestRestart>(argc + 2, arguments.data());
}

TIDELOFT_TEST_RUN(runOrReport)
#include "tst_restart.moc"
