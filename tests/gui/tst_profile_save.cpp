// Saving the profile: what is sent, the button meanwhile, and what stays as it was.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_profile_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

namespace
{

QByteArray bodyWith(const QString &bio)
{
    return QJsonDocument(QJsonObject{{u"bio"_s, bio}}).toJson();
}

} // namespace

class TestProfileSave : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init()
    {
        failOnToolkitWarnings();
        forgetTimers();
    }
    void sendsTheBioAlone_data();
    void sendsTheBioAlone();
    void buttonWaitsForTheAnswer_data();
    void buttonWaitsForTheAnswer();
    void failureOnlyRestoresTheButton_data();
    void failureOnlyRestoresTheButton();
    void savingTwiceQuicklySendsOnce_data();
    void savingTwiceQuicklySendsOnce();
    void theKeyboardComesBackToTheButton_data();
    void theKeyboardComesBackToTheButton();
    void whoTypesMeanwhileIsNotDisturbed();
    void savingAgainSendsAgain();
    void namesStayAsTheyWere();
    void theWindowMayGoMeanwhile();
};

void TestProfileSave::sendsTheBioAlone_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("bio");
    QTest::newRow("text") << u"I sail."_s << u"I sail."_s;
    QTest::newRow("trimmed") << u"  I sail.  "_s << u"I sail."_s;
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("only blanks") << u"   "_s << QString();
    QTest::newRow("quotes, markup and letters") << u"\"Åsa\" <b>&"_s << u"\"Åsa\" <b>&"_s;
    QTest::newRow("emoji") << u"⛵ 🌍"_s << u"⛵ 🌍"_s;
}

void TestProfileSave::sendsTheBioAlone()
{
    QFETCH(QString, typed);
    QFETCH(QString, bio);
    ProfileProbe probe;
    probe.service.answer(requests::updateProfile, 200, "{}");
    probe.displayName->clear();
    probe.type(probe.displayName, u"  Alice the Great "_s); // taken, but not for the service
    probe.type(probe.bio, typed);
    clickOnScreen(*probe.save);
    QVERIFY(probe.service.waitForRequests(requests::updateProfile, 1));
    const RecordedRequest request = probe.service.lastRequest(requests::updateProfile);
    QCOMPARE(request.body, bodyWith(bio));
    QCOMPARE(request.header("Content-Type"), QByteArray("application/json"));
    QVERIFY(request.hasHeader("X-Device-Token"));
    QCOMPARE(request.header("X-Device-Name"), QByteArray("TideLoft Desktop"));
}

void TestProfileSave::buttonWaitsForTheAnswer_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("waiting");
    QTest::addColumn<QString>("ready");
    QTest::newRow("English") << Language::English << u"Saving..."_s << u"Save changes"_s;
    QTest::newRow("Swedish") << Language::Swedish << u"Sparar..."_s << u"Spara ändringar"_s;
}

void TestProfileSave::buttonWaitsForTheAnswer()
{
    QFETCH(Language, language);
    ProfileProbe probe(language);
    probe.service.answer(requests::updateProfile, 200, "{}");
    probe.service.hold(requests::updateProfile);
    clickOnScreen(*probe.save);
    QVERIFY(!probe.save->isEnabled());
    QTEST(probe.save->text(), "waiting");
    QVERIFY(probe.service.waitForRequests(requests::updateProfile, 1));
    QVERIFY(probe.settle());
    QVERIFY(!probe.save->isEnabled());
    QCOMPARE(probe.status->text(), u"● Online"_s);
    probe.service.release(requests::updateProfile);
    QTRY_VERIFY(probe.save->isEnabled());
    QTEST(probe.save->text(), "ready");
}

void TestProfileSave::failureOnlyRestoresTheButton_data()
{
    QTest::addColumn<int>("status"); // 0: no answer
    for (const int status : {400, 401, 500, 0})
        QTest::addRow("%d", status) << status;
}

void TestProfileSave::failureOnlyRestoresTheButton()
{
    QFETCH(int, status);
    ProfileProbe probe;
    if (status)
        probe.service.answer(requests::updateProfile, status, R"({"message":"Not today"})");
    else
        probe.service.drop(requests::updateProfile);
    probe.type(probe.bio, u"I sail."_s);
    clickOnScreen(*probe.save);
    QVERIFY(!probe.save->isEnabled());
    QTRY_VERIFY(probe.save->isEnabled());
    QCOMPARE(probe.save->text(), u"Save changes"_s);
    QCOMPARE(probe.status->text(), u"● Online"_s);
    QVERIFY(pendingTimers().isEmpty());
    QCOMPARE(messageCount(), 0);
    QCOMPARE(probe.bio->toPlainText(), u"I sail."_s); // to try again
}

void TestProfileSave::savingTwiceQuicklySendsOnce_data()
{
    QTest::addColumn<QString>("way");
    for (const QString &way : {u"click"_s, u"double click"_s, u"Space"_s})
        QTest::addRow("%s", qPrintable(way)) << way;
}

void TestProfileSave::savingTwiceQuicklySendsOnce()
{
    QFETCH(QString, way);
    ProfileProbe probe;
    probe.service.answer(requests::updateProfile, 200, "{}");
    probe.service.hold(requests::updateProfile);
    if (way == u"Space") {
        probe.save->setFocus();
        press(*probe.window, Qt::Key_Space);
        press(*probe.window, Qt::Key_Space);
    } else {
        clickOnScreen(*probe.save);
        if (way == u"click")
            clickOnScreen(*probe.save);
        else
            QTest::mouseDClick(probe.window->windowHandle(), Qt::LeftButton, {},
                               probe.save->mapTo(probe.window.get(), probe.save->rect().center()));
    }
    QVERIFY(probe.service.waitForRequests(requests::updateProfile, 1));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::updateProfile), 1);
    probe.service.release(requests::updateProfile);
    QTRY_VERIFY(probe.save->isEnabled());
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::updateProfile), 1);
}

void TestProfileSave::theKeyboardComesBackToTheButton_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("saved, Space") << 200 << false;
    QTest::newRow("saved, click") << 200 << true;
    QTest::newRow("refused, Space") << 500 << false;
}

void TestProfileSave::theKeyboardComesBackToTheButton()
{
    QFETCH(int, status);
    QFETCH(bool, byMouse);
    ProfileProbe probe;
    probe.service.answer(requests::updateProfile, status, "{}");
    probe.service.hold(requests::updateProfile);
    if (byMouse) {
        clickOnScreen(*probe.save);
    } else {
        probe.save->setFocus();
        press(*probe.window, Qt::Key_Space);
    }
    QVERIFY(!probe.save->isEnabled());
    press(*probe.window, Qt::Key_Space); // there is nothing that it could press
    probe.service.release(requests::updateProfile);
    QTRY_VERIFY(probe.save->isEnabled());
    QCOMPARE(probe.window->focusWidget(), probe.save);
    QCOMPARE(probe.service.count(requests::updateProfile), 1);
}

void TestProfileSave::whoTypesMeanwhileIsNotDisturbed()
{
    ProfileProbe probe;
    probe.service.answer(requests::updateProfile, 200, "{}");
    probe.service.hold(requests::updateProfile);
    clickOnScreen(*probe.save);
    probe.type(probe.bio, u"More"_s);
    probe.service.release(requests::updateProfile);
    QTRY_VERIFY(probe.save->isEnabled());
    QCOMPARE(probe.window->focusWidget(), probe.bio);
}

void TestProfileSave::savingAgainSendsAgain()
{
    ProfileProbe probe;
    probe.service.answer(requests::updateProfile, 200, "{}");
    clickOnScreen(*probe.save);
    QTRY_VERIFY(probe.save->isEnabled());
    probe.type(probe.bio, u"More"_s);
    clickOnScreen(*probe.save);
    QTRY_VERIFY(probe.save->isEnabled());
    QCOMPARE(probe.service.count(requests::updateProfile), 2);
    QCOMPARE(probe.service.lastRequest(requests::updateProfile).body, bodyWith(u"More"_s));
}

void TestProfileSave::namesStayAsTheyWere()
{
    ProfileProbe probe;
    probe.service.answer(requests::updateProfile, 200, R"({"username":"bob","bio":"another"})");
    probe.displayName->clear();
    probe.type(probe.displayName, u"Bob"_s);
    clickOnScreen(*probe.save);
    QTRY_COMPARE(probe.status->text(), u"✓ Saved"_s);
    QCOMPARE(probe.the<QLabel>(u"myName"_s)->text(), u"alice"_s);
    QCOMPARE(probe.the<QLabel>(u"footerAvatar"_s)->text(), u"AL"_s);
    QCOMPARE(probe.the<QPushButton>(u"settingsAvatarBtn"_s)->text(), u"AL"_s);
    QCOMPARE(labelTexts(probe.the<QPushButton>(u"settingsAvatarBtn"_s)->parentWidget()).constFirst(),
             u"alice"_s);
    QCOMPARE(probe.displayName->text(), u"Bob"_s);
    QCOMPARE(probe.bio->toPlainText(), QString());
}

void TestProfileSave::theWindowMayGoMeanwhile()
{
    ProfileProbe probe;
    probe.service.answer(requests::updateProfile, 200, "{}");
    probe.service.hold(requests::updateProfile);
    clickOnScreen(*probe.save);
    QVERIFY(probe.service.waitForRequests(requests::updateProfile, 1));
    probe.window.reset();
    probe.service.release(requests::updateProfile);
    const SettingsProbe another; // time for the answer to arrive
    QVERIFY(pendingTimers().isEmpty());
}

TIDELOFT_GUI_TEST_MAIN(TestProfileSave)
#include "tst_profile_save.moc"
