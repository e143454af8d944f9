// The new profile picture on screen: three sizes, the confirmation, and what the picture outlives.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_picture_probe.h"
#include "tests/support/appearance_styles.h"
#include "tests/support/patience.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;
using tideloft::ui::MainWindow;

namespace
{

QImage footerPicture(const SettingsProbe &probe)
{
    return probe.the<QLabel>(u"footerAvatar"_s)->pixmap(Qt::ReturnByValue).toImage();
}

QImage settingsPicture(const SettingsProbe &probe)
{
    const auto *button = probe.the<QPushButton>(u"settingsAvatarBtn"_s);
    return button->icon().pixmap(button->iconSize()).toImage();
}

// The wide picture's outer quarters are seen: it was stretched. Corners are clear: it is round.
void compareWideCircle(const QImage &image, int size)
{
    QCOMPARE(image.size(), QSize(size, size));
    QCOMPARE(image.pixelColor(4, size / 2), QColor(Qt::red));
    QCOMPARE(image.pixelColor(size / 4 - 3, size / 2), QColor(Qt::red));
    QCOMPARE(image.pixelColor(size / 4 + 3, size / 2), QColor(Qt::green));
    QCOMPARE(image.pixelColor(size / 2, 2), QColor(Qt::green));
    QCOMPARE(image.pixelColor(size / 2, size - 3), QColor(Qt::green));
    QCOMPARE(image.pixelColor(size - 5, size / 2), QColor(Qt::blue));
    for (const QPoint corner :
         {QPoint(0, 0), QPoint(size - 1, 0), QPoint(0, size - 1), QPoint(size / 10, size / 10)})
        QCOMPARE(image.pixelColor(corner).alpha(), 0);
}

// Uploads the wide picture through the dialog, and waits until the footer shows it.
bool showWidePicture(SettingsProbe &probe, const PictureFolder &files)
{
    probe.service.answer(requests::uploadAvatar, 200, "{}");
    return chooseAvatar(probe, files.writeWidePicture(u"wide.png"_s))
           && waitFor([&] { return !footerPicture(probe).isNull(); }, patience());
}

} // namespace

class TestAvatarPicture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareForFileDialogs(); }
    void init()
    {
        failOnToolkitWarnings();
        forgetTimers();
    }
    void aWidePictureIsStretchedToThreeCircles();
    void thePictureTakesThePlaceOfTheInitials();
    void theScreenShowsThePicture();
    void kindsOfPictures_data();
    void kindsOfPictures();
    void settingsBuiltLaterShowInitials();
    void theNextPictureReplacesIt();
    void confirmationRunsOut_data();
    void confirmationRunsOut();
    void confirmationRunsOutByItself();
    void outlivesThemesAndAccents();
    void outlivesTheLanguage();
    void anotherUserGetsInitials();
    void aLatePictureIsNotTheNextUsers();

private:
    const PictureFolder files;
};

void TestAvatarPicture::aWidePictureIsStretchedToThreeCircles()
{
    SettingsProbe probe;
    probe.openSettings();
    QSignalSpy ready(probe.window.get(), &MainWindow::avatarPixmapReady);
    QVERIFY(showWidePicture(probe, files));
    compareWideCircle(footerPicture(probe), 34);
    QCOMPARE(ready.size(), 1);
    compareWideCircle(ready.first().first().value<QPixmap>().toImage(), 64);
    compareWideCircle(settingsPicture(probe), 72);
}

void TestAvatarPicture::thePictureTakesThePlaceOfTheInitials()
{
    SettingsProbe probe;
    probe.openSettings();
    const auto *avatar = probe.the<QLabel>(u"footerAvatar"_s);
    const auto *button = probe.the<QPushButton>(u"settingsAvatarBtn"_s);
    QCOMPARE(avatar->text(), u"AL"_s);
    QCOMPARE(button->text(), u"AL"_s);
    QVERIFY(showWidePicture(probe, files));
    QCOMPARE(avatar->text(), QString());
    QCOMPARE(avatar->styleSheet(), pictureStyle);
    QCOMPARE(avatar->size(), QSize(34, 34));
    QCOMPARE(button->text(), QString());
    QCOMPARE(button->iconSize(), QSize(72, 72));
    QCOMPARE(button->size(), QSize(72, 72));
    QCOMPARE(button->styleSheet(), u"QPushButton { border-radius: 36px; border: 3px solid #3b8beb; "
                                   "background: transparent; padding: 0; }"
                                   "QPushButton:hover { border-color: #7ab0f5; }"_s);
}

void TestAvatarPicture::theScreenShowsThePicture()
{
    SettingsProbe probe;
    probe.openSettings();
    QVERIFY(probe.fadedIn());
    QVERIFY(showWidePicture(probe, files));
    const QImage footer = probe.the<QLabel>(u"footerAvatar"_s)->grab().toImage();
    const QImage button = probe.the<QPushButton>(u"settingsAvatarBtn"_s)->grab().toImage();
    for (const QImage &image : {footer, button}) {
        const int size = image.width();
        QCOMPARE(image.pixelColor(5, size / 2), QColor(Qt::red));
        QCOMPARE(image.pixelColor(size / 2, size / 2), QColor(Qt::green));
        QCOMPARE(image.pixelColor(size - 6, size / 2), QColor(Qt::blue));
    }
}

void TestAvatarPicture::kindsOfPictures_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("PNG") << u"a.png"_s << QByteArray("PNG");
    QTest::newRow("JPEG") << u"a.jpg"_s << QByteArray("JPEG");
    QTest::newRow("a PNG named jpeg") << u"a.jpeg"_s << QByteArray("PNG");
}

void TestAvatarPicture::kindsOfPictures()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, format);
    QImage picture(40, 40, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QVERIFY(picture.save(files.path(name), format.constData()));
    SettingsProbe probe;
    probe.service.answer(requests::uploadAvatar, 200, "{}");
    QVERIFY(chooseAvatar(probe, files.path(name)));
    QTRY_VERIFY(!footerPicture(probe).isNull());
    QCOMPARE(footerPicture(probe).pixelColor(17, 17), QColor(Qt::white));
}

// The picture itself is not kept at 64 px: a card that is built later waits for the next upload.
void TestAvatarPicture::settingsBuiltLaterShowInitials()
{
    SettingsProbe probe;
    QVERIFY(showWidePicture(probe, files));
    probe.openSettings();
    QCOMPARE(probe.the<QPushButton>(u"settingsAvatarBtn"_s)->text(), u"AL"_s);
    QVERIFY(probe.the<QPushButton>(u"settingsAvatarBtn"_s)->icon().isNull());
}

void TestAvatarPicture::theNextPictureReplacesIt()
{
    SettingsProbe probe;
    probe.openSettings();
    QVERIFY(showWidePicture(probe, files));
    QImage white(10, 10, QImage::Format_RGB32);
    white.fill(Qt::white);
    QVERIFY(white.save(files.path(u"white.png"_s)));
    QVERIFY(chooseAvatar(probe, files.path(u"white.png"_s)));
    QTRY_COMPARE(footerPicture(probe).pixelColor(4, 17), QColor(Qt::white));
    QCOMPARE(settingsPicture(probe).pixelColor(4, 36), QColor(Qt::white));
}

void TestAvatarPicture::confirmationRunsOut_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("confirmation");
    QTest::newRow("English") << Language::English << u"✓ Picture updated"_s;
    QTest::newRow("Swedish") << Language::Swedish << u"✓ Bild uppdaterad"_s;
}

void TestAvatarPicture::confirmationRunsOut()
{
    QFETCH(Language, language);
    SettingsProbe probe(language);
    QVERIFY(showWidePicture(probe, files));
    const auto *status = probe.the<QLabel>(u"myStatus"_s);
    QTEST(status->text(), "confirmation");
    QCOMPARE(pendingTimers().size(), 1);
    const PendingTimer timer = pendingTimers().constFirst();
    QCOMPARE(timer.interval, 2000);
    QCOMPARE(timer.type, Qt::CoarseTimer);
    timer.runOut();
    QCOMPARE(status->text(), u"● Online"_s);
    QVERIFY(pendingTimers().isEmpty());
}

void TestAvatarPicture::confirmationRunsOutByItself()
{
    SettingsProbe probe;
    QVERIFY(showWidePicture(probe, files));
    const auto *status = probe.the<QLabel>(u"myStatus"_s);
    QCOMPARE(status->text(), u"✓ Picture updated"_s);
    QTRY_COMPARE(status->text(), u"● Online"_s);
    QVERIFY(!footerPicture(probe).isNull());
}

void TestAvatarPicture::outlivesThemesAndAccents()
{
    SettingsProbe probe;
    probe.openSettings();
    QVERIFY(showWidePicture(probe, files));
    const QImage footer = footerPicture(probe);
    const QImage button = settingsPicture(probe);
    probe.clickRow(Appearance);
    QStringList sheets;
    for (const QString &theme : {u"Light"_s, u"System"_s, u"Dark"_s}) {
        clickOnScreen(*buttonWith(probe.content(Appearance), theme));
        sheets.append(probe.window->styleSheet());
        QCOMPARE(footerPicture(probe), footer);
        QCOMPARE(settingsPicture(probe), button);
        QCOMPARE(probe.the<QLabel>(u"footerAvatar"_s)->text(), QString());
    }
    QVERIFY(sheets.at(0) != sheets.at(1));
    for (auto *swatch : probe.content(Appearance)->findChildren<QPushButton *>()) {
        if (swatch->property("accentColor") == u"#e05454"_s)
            clickOnScreen(*swatch);
    }
    QVERIFY(probe.window->styleSheet().contains(u"#e05454"_s));
    QCOMPARE(footerPicture(probe), footer);
    QCOMPARE(probe.the<QLabel>(u"footerAvatar"_s)->styleSheet(), pictureStyle); // not in the accent
}

void TestAvatarPicture::outlivesTheLanguage()
{
    SettingsProbe probe;
    QVERIFY(showWidePicture(probe, files));
    const QImage footer = footerPicture(probe);
    probe.window->logOut();
    probe.choose(Language::Swedish);
    QCOMPARE(footerPicture(probe), footer);
    QCOMPARE(probe.the<QLabel>(u"footerAvatar"_s)->styleSheet(), pictureStyle);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s); // the confirmation does not
}

void TestAvatarPicture::anotherUserGetsInitials()
{
    SettingsProbe probe;
    QVERIFY(showWidePicture(probe, files));
    probe.window->logOut();
    probe.service.answer("GET /api/me", 200, R"({"username":"carol"})");
    QVERIFY(probe.signIn(u"carol"_s));
    const auto *footer = probe.the<QLabel>(u"footerAvatar"_s);
    QCOMPARE(footer->text(), u"CA"_s);
    QVERIFY(footerPicture(probe).isNull());
    QVERIFY(footer->styleSheet() != pictureStyle);
    // Nor does the theme bring the other's picture back.
    probe.openSettings();
    probe.clickRow(Appearance);
    clickOnScreen(*buttonWith(probe.content(Appearance), u"Light"_s));
    QVERIFY(footerPicture(probe).isNull());
    QCOMPARE(footer->text(), u"CA"_s);
}

void TestAvatarPicture::aLatePictureIsNotTheNextUsers()
{
    SettingsProbe probe;
    probe.service.answer(requests::uploadAvatar, 200, "{}");
    probe.service.hold(requests::uploadAvatar);
    const QString path = files.writeWidePicture(u"wide.png"_s);
    QVERIFY(chooseAvatar(probe, path));
    QVERIFY(probe.service.waitForRequests(requests::uploadAvatar, 1));
    probe.window->logOut();
    probe.service.answer("GET /api/me", 200, R"({"username":"carol"})");
    QVERIFY(probe.signIn(u"carol"_s));
    probe.service.release(requests::uploadAvatar);
    QVERIFY(uploadIsOver(path));
    QVERIFY(footerPicture(probe).isNull());
    QCOMPARE(probe.the<QLabel>(u"footerAvatar"_s)->text(), u"CA"_s);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestAvatarPicture)
#include "tst_avatar_picture.moc"
