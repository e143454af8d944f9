// Answering the create-server dialog: what is sent, byte for byte, and what keeps it open.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestCreateDialogAnswers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void sendsTrimmedTexts_data();
    void sendsTrimmedTexts();
    void sendsTheWholeRequest();
    void sendsWhileTheReplyIsOut();
    void fieldsTakeNoMore();
    void withoutANameItStaysOpen_data();
    void withoutANameItStaysOpen();
    void aNameAfterAllIsSent();
    void leavingSendsNothing_data();
    void leavingSendsNothing();
    void keysCreate_data();
    void keysCreate();
};

namespace
{

QByteArray bodyWith(const QString &name, const QString &description)
{
    return u"{\n    \"description\": \"%1\",\n    \"name\": \"%2\"\n}\n"_s.arg(description, name).toUtf8();
}

void clickCreate(const QDialog &dialog)
{
    clickOnScreen(*createOf(dialog));
}

} // namespace

void TestCreateDialogAnswers::sendsTrimmedTexts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("as typed") << u"My Club"_s << u"For us"_s << bodyWith(u"My Club"_s, u"For us"_s);
    QTest::newRow("name surrounded by blanks")
        << u"  My Club   "_s << u"For us"_s << bodyWith(u"My Club"_s, u"For us"_s);
    QTest::newRow("description of only blanks is the empty text")
        << u"My Club"_s << u"    "_s << bodyWith(u"My Club"_s, {});
    QTest::newRow("description surrounded by blanks")
        << u"My Club"_s << u"  For us "_s << bodyWith(u"My Club"_s, u"For us"_s);
    QTest::newRow("no description") << u"My Club"_s << QString() << bodyWith(u"My Club"_s, {});
    QTest::newRow("markup, quotes and letters of all kinds")
        << u"<b>\"Å&ß\""_s << u"a\\b"_s << bodyWith(u"<b>\\\"Å&ß\\\""_s, u"a\\\\b"_s);
}

void TestCreateDialogAnswers::sendsTrimmedTexts()
{
    QFETCH(QString, name);
    QFETCH(QString, description);
    SettingsProbe probe;
    int result = -1;
    const bool came = withCreateDialog(probe, [&](QDialog &dialog) {
        fillIn(dialog, name, description);
        clickCreate(dialog);
        QVERIFY(!dialog.isVisible());
        result = dialog.result();
    });
    QVERIFY(came);
    QCOMPARE(result, int(QDialog::Accepted));
    QVERIFY(probe.service.waitForRequests(requests::createServer, 1));
    QTEST(probe.service.lastRequest(requests::createServer).body, "body");
}

void TestCreateDialogAnswers::sendsTheWholeRequest()
{
    SettingsProbe probe;
    probe.service.clear();
    QVERIFY(createServer(probe, u"My Club"_s));
    QVERIFY(probe.service.waitForRequests(requests::createServer, 1));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::createServer), 1);
    const RecordedRequest request = probe.service.lastRequest(requests::createServer);
    QCOMPARE(request.target, QByteArray("/api/groups"));
    QCOMPARE(request.header("Content-Type"), QByteArray("application/json"));
    QVERIFY(request.hasHeader("X-Device-Token"));
    QCOMPARE(request.header("Content-Length"), QByteArray::number(request.body.size()));
}

// The dialog waits for nothing: it is closed, and the window goes on, while the reply is still out.
void TestCreateDialogAnswers::sendsWhileTheReplyIsOut()
{
    SettingsProbe probe;
    probe.service.hold(requests::createServer);
    QVERIFY(createServer(probe, u"My Club"_s));
    QVERIFY(probe.service.waitForRequests(requests::createServer, 1));
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.heldCount(requests::createServer), 1);
}

void TestCreateDialogAnswers::fieldsTakeNoMore()
{
    SettingsProbe probe;
    const bool came = withCreateDialog(probe, [](QDialog &dialog) {
        fillIn(dialog, QString(33, u'n'), QString(201, u'd'));
        clickCreate(dialog);
    });
    QVERIFY(came);
    QVERIFY(probe.service.waitForRequests(requests::createServer, 1));
    QCOMPARE(probe.service.lastRequest(requests::createServer).body,
             bodyWith(QString(32, u'n'), QString(200, u'd')));
}

void TestCreateDialogAnswers::withoutANameItStaysOpen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("byKey");
    QTest::newRow("empty, click") << QString() << false;
    QTest::newRow("blanks, click") << u"   "_s << false;
    QTest::newRow("empty, Return") << QString() << true;
    QTest::newRow("blanks, Return") << u"   "_s << true;
}

void TestCreateDialogAnswers::withoutANameItStaysOpen()
{
    QFETCH(QString, name);
    QFETCH(bool, byKey);
    SettingsProbe probe;
    const bool came = withCreateDialog(probe, [&](QDialog &dialog) {
        fillIn(dialog, name, u"For us"_s);
        const QStringList before = labelTexts(&dialog);
        if (byKey)
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
        else
            clickCreate(dialog);
        QVERIFY(dialog.isVisible());
        QCOMPARE(QApplication::activeModalWidget(), &dialog); // and no message over it
        QCOMPARE(labelTexts(&dialog), before);
        QCOMPARE(nameOf(dialog)->text(), name);
    });
    QVERIFY(came);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::createServer), 0);
}

void TestCreateDialogAnswers::aNameAfterAllIsSent()
{
    SettingsProbe probe;
    const bool came = withCreateDialog(probe, [](QDialog &dialog) {
        clickCreate(dialog);
        QVERIFY(dialog.isVisible());
        fillIn(dialog, u"My Club"_s, {});
        clickCreate(dialog);
        QVERIFY(!dialog.isVisible());
    });
    QVERIFY(came);
    QVERIFY(probe.service.waitForRequests(requests::createServer, 1));
    QCOMPARE(probe.service.lastRequest(requests::createServer).body, bodyWith(u"My Club"_s, {}));
}

void TestCreateDialogAnswers::leavingSendsNothing_data()
{
    QTest::addColumn<QString>("way");
    for (const QString &way :
         {u"Cancel"_s, u"Escape"_s, u"Space on Cancel"_s, u"Return on Cancel"_s, u"the window's cross"_s})
        QTest::addRow("%s", qPrintable(way)) << way;
}

void TestCreateDialogAnswers::leavingSendsNothing()
{
    QFETCH(QString, way);
    SettingsProbe probe;
    const bool came = withCreateDialog(probe, [&way](QDialog &dialog) {
        fillIn(dialog, u"My Club"_s, u"For us"_s);
        if (way == u"Cancel") {
            clickOnScreen(*cancelOf(dialog));
        } else if (way == u"Escape") {
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
        } else if (way == u"the window's cross") {
            dialog.windowHandle()->close();
        } else {
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), cancelOf(dialog));
            QTest::keyClick(dialog.windowHandle(),
                            way.startsWith(u"Space"_s) ? Qt::Key_Space : Qt::Key_Return);
        }
        QTRY_VERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
    });
    QVERIFY(came);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::createServer), 0);
}

void TestCreateDialogAnswers::keysCreate_data()
{
    QTest::addColumn<int>("tabs");
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return in the name") << 0 << Qt::Key_Return;
    QTest::newRow("keypad Enter in the name") << 0 << Qt::Key_Enter;
    QTest::newRow("Return in the description") << 1 << Qt::Key_Return;
    QTest::newRow("Return on the button") << 3 << Qt::Key_Return;
    QTest::newRow("Space on the button") << 3 << Qt::Key_Space;
}

void TestCreateDialogAnswers::keysCreate()
{
    QFETCH(int, tabs);
    QFETCH(Qt::Key, key);
    SettingsProbe probe;
    const bool came = withCreateDialog(probe, [&](QDialog &dialog) {
        typeText(u"My Club"_s);
        for (int i = 0; i < tabs; ++i)
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
        QTest::keyClick(dialog.windowHandle(), key);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
    });
    QVERIFY(came);
    QVERIFY(probe.service.waitForRequests(requests::createServer, 1));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::createServer), 1);
    QCOMPARE(probe.service.lastRequest(requests::createServer).body, bodyWith(u"My Club"_s, {}));
}

TIDELOFT_GUI_TEST_MAIN(TestCreateDialogAnswers)
#include "tst_create_dialog_answers.moc"
