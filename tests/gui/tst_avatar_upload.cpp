// The profile picture on its way: what the service gets, and what a refusal leaves behind.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_picture_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::MainWindow;

class TestAvatarUpload : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareForFileDialogs(); }
    void init()
    {
        failOnToolkitWarnings();
        forgetTimers();
    }
    void bytesOnTheWire_data();
    void bytesOnTheWire();
    void onlyTheCookieSaysWhose();
    void nothingChangesBeforeTheAnswer();
    void aRefusalShowsNothing_data();
    void aRefusalShowsNothing();
    void whatHoldsNoPictureChangesNothing_data();
    void whatHoldsNoPictureChangesNothing();
    void aFileGoneSinceChangesNothing();
    void theWindowMayGoMeanwhile();

private:
    const PictureFolder files;
};

void TestAvatarUpload::bytesOnTheWire_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("suffix");
    QTest::newRow("Me.PNG is sent as avatar.png") << u"Me.PNG"_s << QByteArray("png");
    QTest::newRow("JPG is not made jpeg") << u"holiday.JPG"_s << QByteArray("jpg");
    QTest::newRow("only the last dot counts") << u"a.gif.jpeg"_s << QByteArray("jpeg");
    QTest::newRow("the file's own name stays here") << u"åäö; name=y.png"_s << QByteArray("png");
}

void TestAvatarUpload::bytesOnTheWire()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, suffix);
    const QString path = files.write(name, contentOf(files.writeWidePicture(u"wide.png"_s)));
    SettingsProbe probe;
    QVERIFY(chooseAvatar(probe, path));
    QVERIFY(probe.service.waitForRequests(requests::uploadAvatar, 1));
    const RecordedRequest request = probe.service.lastRequest(requests::uploadAvatar);
    QCOMPARE(sentUpload(request),
             wantedUpload(request, "/api/profile/avatar/upload", "avatar", suffix, contentOf(path)));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::uploadAvatar), 1);
}

void TestAvatarUpload::onlyTheCookieSaysWhose()
{
    SettingsProbe probe;
    probe.service.answer("GET /api/groups", 200, "[]", {{"Set-Cookie", "session=one; Path=/"}});
    QVERIFY(callSlot(*probe.window, "onServerIconUploaded", Q_ARG(QString, {}), Q_ARG(QString, {})));
    QVERIFY(probe.settle());
    QVERIFY(probe.service.lastRequest().hasHeader("X-Device-Token"));
    QVERIFY(probe.service.lastRequest().hasHeader("X-Device-Name"));
    QVERIFY(chooseAvatar(probe, files.writeWidePicture(u"wide.png"_s)));
    QVERIFY(probe.service.waitForRequests(requests::uploadAvatar, 1));
    const RecordedRequest request = probe.service.lastRequest(requests::uploadAvatar);
    QCOMPARE(request.header("Cookie"), QByteArray("session=one"));
    QVERIFY(!request.hasHeader("X-Device-Token"));
    QVERIFY(!request.hasHeader("X-Device-Name"));
}

void TestAvatarUpload::nothingChangesBeforeTheAnswer()
{
    SettingsProbe probe;
    probe.service.answer(requests::uploadAvatar, 200, "{}");
    probe.service.hold(requests::uploadAvatar);
    QVERIFY(chooseAvatar(probe, files.writeWidePicture(u"wide.png"_s)));
    QVERIFY(probe.service.waitForRequests(requests::uploadAvatar, 1));
    QVERIFY(probe.settle());
    const auto *avatar = probe.the<QLabel>(u"footerAvatar"_s);
    QCOMPARE(avatar->text(), u"AL"_s);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
    probe.service.release(requests::uploadAvatar);
    QTRY_COMPARE(avatar->text(), QString());
}

void TestAvatarUpload::aRefusalShowsNothing_data()
{
    QTest::addColumn<int>("status"); // 0: no answer
    for (const int status : {400, 401, 413, 500, 0})
        QTest::addRow("%d", status) << status;
}

// The failed upload may look like any other moment: the same page, the same initials, no box.
void TestAvatarUpload::aRefusalShowsNothing()
{
    QFETCH(int, status);
    SettingsProbe probe;
    probe.openSettings();
    if (status)
        probe.service.answer(requests::uploadAvatar, status, R"({"message":"No such picture"})");
    else
        probe.service.drop(requests::uploadAvatar);
    const auto *avatar = probe.the<QLabel>(u"footerAvatar"_s);
    const QString style = avatar->styleSheet();
    QSignalSpy ready(probe.window.get(), &MainWindow::avatarPixmapReady);
    const QString path = files.writeWidePicture(u"wide.png"_s);
    QVERIFY(chooseAvatar(probe, path));
    QVERIFY(probe.service.waitForRequests(requests::uploadAvatar, 1));
    QVERIFY(uploadIsOver(path));
    QCOMPARE(ready.size(), 0);
    QCOMPARE(messageCount(), 0);
    QCOMPARE(avatar->text(), u"AL"_s);
    QCOMPARE(avatar->styleSheet(), style);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
    QCOMPARE(probe.the<QPushButton>(u"settingsAvatarBtn"_s)->text(), u"AL"_s);
    QVERIFY(pendingTimers().isEmpty());
}

void TestAvatarUpload::whatHoldsNoPictureChangesNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text") << QByteArray("no picture at all");
    QTest::newRow("empty") << QByteArray();
    const QByteArray whole = contentOf(files.writeWidePicture(u"wide.png"_s));
    QTest::newRow("only a picture's first bytes") << whole.left(40);
}

void TestAvatarUpload::whatHoldsNoPictureChangesNothing()
{
    QFETCH(QByteArray, content);
    SettingsProbe probe;
    probe.openSettings();
    probe.service.answer(requests::uploadAvatar, 200, "{}");
    QSignalSpy ready(probe.window.get(), &MainWindow::avatarPixmapReady);
    const QString path = files.write(u"image.png"_s, content);
    QVERIFY(chooseAvatar(probe, path));
    QVERIFY(probe.service.waitForRequests(requests::uploadAvatar, 1)); // it is uploaded all the same
    QVERIFY(uploadIsOver(path));
    QCOMPARE(ready.size(), 0);
    QCOMPARE(messageCount(), 0);
    QCOMPARE(probe.the<QLabel>(u"footerAvatar"_s)->text(), u"AL"_s);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
    QCOMPARE(probe.the<QPushButton>(u"settingsAvatarBtn"_s)->text(), u"AL"_s);
}

void TestAvatarUpload::aFileGoneSinceChangesNothing()
{
    SettingsProbe probe;
    probe.service.answer(requests::uploadAvatar, 200, "{}");
    probe.service.hold(requests::uploadAvatar);
    QSignalSpy ready(probe.window.get(), &MainWindow::avatarPixmapReady);
    const QString path = files.writeWidePicture(u"passing.png"_s);
    QVERIFY(chooseAvatar(probe, path));
    QVERIFY(probe.service.waitForRequests(requests::uploadAvatar, 1));
    QVERIFY(QFile::remove(path));
    QVERIFY(isOpen(path)); // the client has not heard of its end yet
    probe.service.release(requests::uploadAvatar);
    QVERIFY(uploadIsOver(path));
    QCOMPARE(ready.size(), 0);
    QCOMPARE(messageCount(), 0);
    QCOMPARE(probe.the<QLabel>(u"footerAvatar"_s)->text(), u"AL"_s);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
}

void TestAvatarUpload::theWindowMayGoMeanwhile()
{
    SettingsProbe probe;
    probe.service.answer(requests::uploadAvatar, 200, "{}");
    probe.service.hold(requests::uploadAvatar);
    QVERIFY(chooseAvatar(probe, files.writeWidePicture(u"wide.png"_s)));
    QVERIFY(probe.service.waitForRequests(requests::uploadAvatar, 1));
    QSignalSpy ready(probe.window.get(), &MainWindow::avatarPixmapReady);
    probe.window.reset();
    probe.service.release(requests::uploadAvatar);
    SettingsProbe another; // time for the answer to arrive
    QCOMPARE(ready.size(), 0);
    QVERIFY(pendingTimers().isEmpty());
}

TIDELOFT_GUI_TEST_MAIN(TestAvatarUpload)
#include "tst_avatar_upload.moc"
