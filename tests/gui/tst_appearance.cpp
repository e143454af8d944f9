// The themes and accents to choose from, and what a choice leaves alone.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_appearance_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLabel>
#include <QSettings>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestAppearance : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void themeButtons_data();
    void themeButtons();
    void swatches();
    void swatchNames_data();
    void swatchNames();
    void cardRows();
    void marksStayWhereTheyWerePut();
    void footerInitialsStay();
    void footerPictureSurvives();
    void nothingIsAskedOrStored();
};

void TestAppearance::themeButtons_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("English") << Language::English << themes;
    QTest::newRow("Swedish") << Language::Swedish << QStringList{u"Mörkt"_s, u"Ljust"_s, u"System"_s};
}

void TestAppearance::themeButtons()
{
    QFETCH(Language, language);
    const AppearanceProbe probe(language);
    QStringList texts;
    for (const QPushButton *button : probe.buttons(0)) {
        texts.append(button->text());
        QVERIFY(button->isCheckable());
        QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    }
    QTEST(texts, "expected");
    QCOMPARE(probe.markedThemes(), QList<int>{0});
    QVERIFY(probe.buttons(0).at(0)->isChecked());
    QVERIFY(!probe.buttons(0).at(1)->isChecked());
    QVERIFY(!probe.buttons(0).at(2)->isChecked());
}

void TestAppearance::swatches()
{
    const AppearanceProbe probe;
    QStringList kept;
    for (const QPushButton *swatch : probe.buttons(1)) {
        kept.append(swatch->property("accentColor").toString());
        QCOMPARE(swatch->minimumSize(), QSize(28, 28));
        QCOMPARE(swatch->maximumSize(), QSize(28, 28));
        QCOMPARE(swatch->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(swatch->text(), QString());
    }
    QCOMPARE(kept, colours);
    QCOMPARE(probe.markedSwatches(), QList<int>{0});
}

void TestAppearance::swatchNames_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("English") << Language::English << QStringList{u"Blue"_s, u"Violet"_s, u"Green"_s,
                                                                 u"Red"_s,  u"Amber"_s,  u"Pink"_s};
    QTest::newRow("Swedish") << Language::Swedish
                             << QStringList{u"Blå"_s, u"Violett"_s, u"Grön"_s, u"Röd"_s, u"Gul"_s, u"Rosa"_s};
}

void TestAppearance::swatchNames()
{
    QFETCH(Language, language);
    const AppearanceProbe probe(language);
    QStringList names;
    for (const QPushButton *swatch : probe.buttons(1))
        names.append(swatch->accessibleName());
    QTEST(names, "expected");
}

void TestAppearance::cardRows()
{
    const AppearanceProbe probe;
    for (int card = 0; card < 2; ++card) {
        const QWidget *owner = probe.content(Appearance)->layout()->itemAt(2 + 2 * card)->widget();
        const QLayout *line = owner->layout()->itemAt(0)->layout();
        QCOMPARE(line->contentsMargins(), QMargins(16, 12, 16, 12));
        QCOMPARE(line->spacing(), card == 0 ? 12 : 10);
    }
}

// Settings that are left and opened again are the same page.
void TestAppearance::marksStayWhereTheyWerePut()
{
    const AppearanceProbe probe;
    probe.chooseTheme(1);
    probe.chooseAccent(u"#25a868"_s);
    QTest::mouseClick(probe.backButton(), Qt::LeftButton);
    probe.openSettings();
    QCOMPARE(probe.markedThemes(), QList<int>{1});
    QCOMPARE(probe.markedSwatches(), QList<int>{2});
}

void TestAppearance::footerInitialsStay()
{
    const AppearanceProbe probe;
    const auto *avatar = probe.the<QLabel>(u"footerAvatar"_s);
    const QString style = avatar->styleSheet();
    const QString shown = avatar->text();
    QVERIFY(style.startsWith(u"background: qlineargradient("_s));
    QVERIFY(!shown.isEmpty());
    probe.chooseTheme(1);
    probe.chooseAccent(u"#e05454"_s);
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
    const AppearanceProbe probe;
    QVERIFY(callSlot(*probe.window, "onAvatarUploaded", Q_ARG(bool, true), Q_ARG(QString, path)));
    const auto *avatar = probe.the<QLabel>(u"footerAvatar"_s);
    const QImage shown = avatar->pixmap(Qt::ReturnByValue).toImage();
    QCOMPARE(shown.size(), QSize(34, 34));
    probe.chooseTheme(1);
    probe.chooseAccent(u"#e05454"_s);
    QCOMPARE(avatar->pixmap(Qt::ReturnByValue).toImage(), shown);
    QCOMPARE(avatar->text(), QString());
    // The border keeps its colour whatever the accent.
    QCOMPARE(avatar->styleSheet(), u"border-radius: 17px; border: 2px solid #3b8beb;"
                                   "background: transparent; padding: 0;"_s);
}

void TestAppearance::nothingIsAskedOrStored()
{
    AppearanceProbe probe;
    probe.service.clear();
    for (int theme = 0; theme < themes.size(); ++theme)
        probe.chooseTheme(theme);
    for (const QString &colour : colours)
        probe.chooseAccent(colour);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1); // the one that was waited for
    QCOMPARE(QSettings().allKeys(), QStringList());
    // The next window starts with the dark sheet and the default accent again.
    const tideloft::ui::MainWindow next;
    QCOMPARE(next.styleSheet(), tideloft::ui::darkStyleSheet());
}

TIDELOFT_GUI_TEST_MAIN(TestAppearance)
#include "tst_appearance.moc"
