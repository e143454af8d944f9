// What one user leaves in the window: the same user finds it again, another user does not.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_profile_probe.h"
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/appearance_styles.h"
#include "tests/support/patience.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QJsonDocument>
#include <QListWidget>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QString initialsStyle =
    u"background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55);border-radius: 17px; "
    "border: 2px solid #3b8beb;color: #7ab0f5; font-size: 11px; font-weight: 700;"_s;
/// Logs out and signs in as NAME, whose profile has BIO.
bool signInAs(GuiProbe &probe, const QString &name, const QString &bio = {})
{
    probe.window->logOut();
    const QJsonObject me{{u"username"_s, name}, {u"bio"_s, bio}};
    probe.service.answer("GET /api/me", 200, QJsonDocument(me).toJson());
    return probe.signIn(name);
}

QLabel *footer(const GuiProbe &probe)
{
    return probe.the<QLabel>(u"footerAvatar"_s);
}

bool hasPicture(const GuiProbe &probe)
{
    return !footer(probe)->pixmap(Qt::ReturnByValue).isNull();
}

bool showPicture(SettingsProbe &probe)
{
    const PictureFolder files;
    probe.service.answer(requests::uploadAvatar, 200, "{}");
    return chooseAvatar(probe, files.writeWidePicture(u"wide.png"_s))
           && waitFor([&] { return hasPicture(probe); }, patience());
}

/// Chooses the light theme, as a person does in the settings.
void changeTheme(const SettingsProbe &probe)
{
    probe.openSettings();
    probe.clickRow(Appearance);
    buttonWith(probe.content(Appearance), u"Light"_s)->click();
}

QPlainTextEdit *bioOf(const SettingsProbe &probe)
{
    return probe.the<QPushButton>(u"settingsAvatarBtn"_s)->parentWidget()->findChild<QPlainTextEdit *>();
}

} // namespace

class TestAnotherUser : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareForFileDialogs(); }
    void init() { failOnToolkitWarnings(); }
    void theSamePersonsPictureComesBackWithTheTheme();
    void anotherPersonSeesNoPicture();
    void theSettingsPageIsMadeAnew();
    void theSamePersonKeepsTheSettingsPage();
    void whatAnotherTypedIsNotSaved();
    void aPictureOfTheSettingsIsForgotten();
    void listsAndLinesAreEmpty();
    void theSamePersonFindsTheLineAgain();
    void theBioIsThatOfTheProfile_data();
    void theBioIsThatOfTheProfile();
    void whatWasTypedIsNotReplaced();
    void aNewerBioReplacesAnUntouchedOne();
    void saveKeepsTheBio_data();
    void saveKeepsTheBio();
};

void TestAnotherUser::theSamePersonsPictureComesBackWithTheTheme()
{
    SettingsProbe probe;
    QVERIFY(showPicture(probe));
    QVERIFY(signInAs(probe, u"alice"_s));
    QCOMPARE(footer(probe)->text(), u"AL"_s);
    QVERIFY(!hasPicture(probe));
    QCOMPARE(footer(probe)->styleSheet(), pictureStyle);
    changeTheme(probe);
    QVERIFY(hasPicture(probe));
    QCOMPARE(footer(probe)->text(), QString());
}

void TestAnotherUser::anotherPersonSeesNoPicture()
{
    SettingsProbe probe;
    QVERIFY(showPicture(probe));
    QVERIFY(signInAs(probe, u"bob"_s));
    QCOMPARE(footer(probe)->text(), u"BO"_s);
    QCOMPARE(footer(probe)->styleSheet(), initialsStyle);
    changeTheme(probe);
    QVERIFY(!hasPicture(probe));
    QCOMPARE(footer(probe)->text(), u"BO"_s);
    QVERIFY(signInAs(probe, u"alice"_s)); // and it does not come back for its owner
    changeTheme(probe);
    QVERIFY(!hasPicture(probe));
}

void TestAnotherUser::theSettingsPageIsMadeAnew()
{
    SettingsProbe probe;
    probe.openSettings();
    QVERIFY(labelTexts(probe.content(Account)).contains(u"alice"_s));
    probe.clickRow(Security);
    const QPointer<QWidget> before = probe.settingsPage();
    QVERIFY(signInAs(probe, u"bob"_s));
    QTRY_VERIFY(!before);
    QVERIFY(!probe.settingsPage()); // until it is asked for
    probe.openSettings();
    QCOMPARE(probe.nav()->currentRow(), 0);
    QVERIFY(labelTexts(probe.content(Account)).contains(u"bob"_s));
    QVERIFY(!labelTexts(probe.content(Account)).contains(u"alice"_s));
    for (const QLineEdit *field : probe.settingsPage()->findChildren<QLineEdit *>())
        QVERIFY(field->text() != u"alice");
}

void TestAnotherUser::theSamePersonKeepsTheSettingsPage()
{
    const auto probe = std::make_unique<SettingsProbe>();
    probe->openSettings();
    probe->clickRow(Security);
    const QPointer<QWidget> before = probe->settingsPage();
    QVERIFY(signInAs(*probe, u"Alice"_s));
    probe->openSettings();
    QCOMPARE(probe->settingsPage(), before.data());
    QCOMPARE(probe->nav()->currentRow(), int(Security));
}

void TestAnotherUser::whatAnotherTypedIsNotSaved()
{
    ProfileProbe probe;
    probe.service.answer(requests::updateProfile, 200, "{}");
    probe.type(probe.bio, u"I am Alice"_s);
    QVERIFY(signInAs(probe, u"bob"_s, u"I am Bob"_s));
    probe.openSettings();
    QCOMPARE(bioOf(probe)->toPlainText(), u"I am Bob"_s);
    buttonWith(probe.content(Account), u"Save changes"_s)->click();
    QVERIFY(probe.service.waitForRequests(requests::updateProfile, 1));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest(requests::updateProfile).body);
    QCOMPARE(sent[u"bio"], QJsonValue(u"I am Bob"_s));
}

void TestAnotherUser::aPictureOfTheSettingsIsForgotten()
{
    SettingsProbe probe;
    probe.openSettings();
    QVERIFY(showPicture(probe));
    QVERIFY(!probe.the<QPushButton>(u"settingsAvatarBtn"_s)->icon().isNull());
    QVERIFY(signInAs(probe, u"bob"_s));
    probe.openSettings();
    QTRY_COMPARE(probe.window->findChildren<QPushButton *>(u"settingsAvatarBtn"_s).size(), 1);
    QVERIFY(probe.the<QPushButton>(u"settingsAvatarBtn"_s)->icon().isNull());
    QCOMPARE(probe.the<QPushButton>(u"settingsAvatarBtn"_s)->text(), u"BO"_s);
}

void TestAnotherUser::listsAndLinesAreEmpty()
{
    SettingsProbe probe;
    QVERIFY(probe.open(u"carol"_s));
    QTest::keyClicks(probe.the<QLineEdit>(u"msgInput"_s), u"for carol alone"_s);
    QTest::keyClicks(probe.the<QLineEdit>(u"sideSearch"_s), u"x"_s);
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    probe.service.hold("GET /api/chat/conversations");
    probe.service.hold("GET /api/groups");
    probe.window->logOut();
    QCOMPARE(probe.the<QListWidget>(u"dmList"_s)->count(), 1); // until somebody else comes
    probe.service.answer("GET /api/me", 200, R"({"username":"bob"})");
    probe.fillIn(u"bob"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QTRY_VERIFY(probe.onMainPage());
    QCOMPARE(probe.the<QListWidget>(u"dmList"_s)->count(), 0);
    QVERIFY(serverButtons(probe).isEmpty());
    QCOMPARE(probe.the<QListWidget>(u"messageList"_s)->count(), 0);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), QString());
    QCOMPARE(probe.the<QLineEdit>(u"msgInput"_s)->text(), QString());
    QCOMPARE(probe.the<QLineEdit>(u"sideSearch"_s)->text(), QString());
    probe.service.release("GET /api/chat/conversations");
    probe.service.release("GET /api/groups");
}

void TestAnotherUser::theSamePersonFindsTheLineAgain()
{
    SettingsProbe probe;
    QVERIFY(probe.open(u"carol"_s));
    QTest::keyClicks(probe.the<QLineEdit>(u"msgInput"_s), u"not yet sent"_s);
    QVERIFY(signInAs(probe, u"alice"_s));
    QCOMPARE(probe.the<QLineEdit>(u"msgInput"_s)->text(), u"not yet sent"_s);
}

void TestAnotherUser::theBioIsThatOfTheProfile_data()
{
    QTest::addColumn<QByteArray>("me");
    QTest::addColumn<QString>("bio");
    QTest::newRow("two lines") << QByteArray(R"({"username":"alice","bio":"I sail.\nAlone."})")
                               << u"I sail.\nAlone."_s;
    QTest::newRow("none") << QByteArray(R"({"username":"alice"})") << QString();
    QTest::newRow("no text") << QByteArray(R"({"username":"alice","bio":{"a":1}})") << QString();
    QTest::newRow("markup stays text")
        << QByteArray(R"({"username":"alice","bio":"<b>bold</b>"})") << u"<b>bold</b>"_s;
    QTest::newRow("too long to be drawn")
        << QByteArray(R"({"username":"alice","bio":")" + QByteArray(1'000'000, 'x') + R"("})") << QString();
}

void TestAnotherUser::theBioIsThatOfTheProfile()
{
    QFETCH(QByteArray, me);
    SettingsProbe probe;
    probe.window->logOut();
    probe.service.answer("GET /api/me", 200, me);
    QVERIFY(probe.signIn());
    probe.openSettings();
    QTEST(bioOf(probe)->toPlainText(), "bio");
    QCOMPARE(bioOf(probe)->placeholderText(), u"Write something about yourself..."_s);
}

void TestAnotherUser::whatWasTypedIsNotReplaced()
{
    ProfileProbe probe;
    probe.type(probe.bio, u"New words"_s);
    QVERIFY(signInAs(probe, u"alice"_s, u"Old words"_s));
    QCOMPARE(probe.bio->toPlainText(), u"New words"_s);
}

void TestAnotherUser::aNewerBioReplacesAnUntouchedOne()
{
    const auto probe = std::make_unique<ProfileProbe>();
    QVERIFY(signInAs(*probe, u"alice"_s, u"First"_s));
    QCOMPARE(probe->bio->toPlainText(), u"First"_s);
    QVERIFY(signInAs(*probe, u"alice"_s, u"Second"_s));
    QCOMPARE(probe->bio->toPlainText(), u"Second"_s);
}

void TestAnotherUser::saveKeepsTheBio_data()
{
    QTest::addColumn<QString>("bio");
    QTest::newRow("short") << u"I sail."_s;
    QTest::newRow("too long to be drawn") << QString(200'000, u'x');
}

// A press of the button without a word typed changes nothing at the service.
void TestAnotherUser::saveKeepsTheBio()
{
    QFETCH(QString, bio);
    SettingsProbe probe;
    probe.service.answer(requests::updateProfile, 200, "{}");
    QVERIFY(signInAs(probe, u"alice"_s, bio));
    probe.openSettings();
    buttonWith(probe.content(Account), u"Save changes"_s)->click();
    QVERIFY(probe.service.waitForRequests(requests::updateProfile, 1));
    QVERIFY(QJsonDocument::fromJson(probe.service.lastRequest(requests::updateProfile).body)[u"bio"]
            == QJsonValue(bio));
}

TIDELOFT_GUI_TEST_MAIN(TestAnotherUser)
#include "tst_another_user.moc"
