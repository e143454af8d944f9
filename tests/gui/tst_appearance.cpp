// What a choice of theme and accent does to the window, and what it leaves alone.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/appearance_parts.h"
#include "tests/support/test_main.h"
#include "ui/style/style_sheets.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

/// The signed-in window that shows its settings.
class OpenSettings : public SettingsProbe
{
public:
    OpenSettings() { openSettings(); }
};

} // namespace

class TestAppearance : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void windowWearsWhatIsChosen();
    void marksStayWhereTheyWerePut();
    void footerInitialsStay();
    void footerPictureSurvives();
    void nothingIsAskedOrStored();
};

void TestAppearance::windowWearsWhatIsChosen()
{
    const OpenSettings probe;
    const AppearanceParts section(probe);
    section.chooseTheme(1);
    section.chooseAccent(u"#25a868"_s);
    QCOMPARE(probe.window->styleSheet(), expectedSheet(false, u"#25a868"_s));
}

// Settings that are left and opened again are the same page.
void TestAppearance::marksStayWhereTheyWerePut()
{
    const OpenSettings probe;
    const AppearanceParts section(probe);
    section.chooseTheme(1);
    section.chooseAccent(u"#25a868"_s);
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    probe.openSettings();
    QCOMPARE(section.markedThemes(), QList<int>{1});
    QCOMPARE(section.markedSwatches(), QList<int>{2});
}

void TestAppearance::footerInitialsStay()
{
    const OpenSettings probe;
    const AppearanceParts section(probe);
    const auto *avatar = probe.the<QLabel>(u"footerAvatar"_s);
    const QString style = avatar->styleSheet();
    const QString shown = avatar->text();
    QVERIFY(style.startsWith(u"background: qlineargradient("_s));
    QVERIFY(!shown.isEmpty());
    section.chooseTheme(1);
    section.chooseAccent(u"#e05454"_s);
    QCOMPARE(avatar->styleSheet(), style);
    QCOMPARE(avatar->text(), shown);
    QVERIFY(avatar->pixmap(Qt::ReturnByValue).isNull());
}

void TestAppearance::footerPictureSurvives()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"me.png"_s);
    QImage picture(40, 40, QImage::Format_RGB32);
    picture.fill(Qt::magenta);
    QVERIFY(picture.save(path));
    const OpenSettings probe;
    const AppearanceParts section(probe);
    QVERIFY(callSlot(*probe.window, "onAvatarUploaded", Q_ARG(bool, true), Q_ARG(QString, path)));
    const auto *avatar = probe.the<QLabel>(u"footerAvatar"_s);
    const QImage shown = avatar->pixmap(Qt::ReturnByValue).toImage();
    QCOMPARE(shown.size(), QSize(34, 34));
    section.chooseTheme(1);
    section.chooseAccent(u"#e05454"_s);
    QCOMPARE(avatar->pixmap(Qt::ReturnByValue).toImage(), shown);
    QCOMPARE(avatar->text(), QString());
    // The border keeps its colour whatever the accent.
    QCOMPARE(avatar->styleSheet(), pictureStyle);
}

void TestAppearance::nothingIsAskedOrStored()
{
    OpenSettings probe;
    const AppearanceParts section(probe);
    probe.service.clear();
    for (int theme = 0; theme < themes.size(); ++theme)
        section.chooseTheme(theme);
    for (const QString &colour : colours)
        section.chooseAccent(colour);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1); // the one that was waited for
    QCOMPARE(QSettings().allKeys(), QStringList());
    // The next window starts with the dark sheet and the default accent again.
    const tideloft::ui::MainWindow next;
    QCOMPARE(next.styleSheet(), tideloft::ui::darkStyleSheet());
}

TIDELOFT_GUI_TEST_MAIN(TestAppearance)
#include "tst_appearance.moc"
