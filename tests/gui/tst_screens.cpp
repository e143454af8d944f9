// Every page at every size of the window: nothing is cut, nothing overlaps, no character is a box. The scale
// and the fonts are those of the environment; this program runs once for each that has to be right.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"
#include "tests/gui/tst_screen_faults.h"
#include "tests/gui/tst_screen_glyphs.h"
#include "tests/gui/tst_screen_pages.h"
#include "tests/support/test_main.h"
#include "ui/style/style_sheets.h"
#include "ui/style/symbol_font.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

Q_DECLARE_METATYPE(const ScreenPage *)

class TestScreens : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { failOnToolkitWarnings(); }
    void everyPage_data();
    void everyPage();
    void emojiAreColoured_data();
    void emojiAreColoured();
    void symbolsAreLetters_data();
    void symbolsAreLetters();
    void wheelsAreLetters();
    void digitsAreLetters();
    void faultsAreSeen_data();
    void faultsAreSeen();
};

namespace
{

/// A picture for people to look at, where TIDELOFT_SCREENS_PICTURES names a folder for them.
void keepPicture(QWidget &widget, const QString &size)
{
    const QString folder = qEnvironmentVariable("TIDELOFT_SCREENS_PICTURES");
    if (folder.isEmpty())
        return;
    QString name = QLatin1StringView(QTest::currentDataTag()) + u", "_s + size;
    name.replace(u", "_s, u"-"_s).replace(u' ', u'-');
    if (!widget.grab().save(QDir(folder).filePath(name + u".png"_s)))
        qFatal("No picture could be written to %s", qPrintable(folder));
}

/// Full screen on a real one. The one that is only imagined is smaller than a window may be.
void fillScreen(QWidget &window)
{
    if (QGuiApplication::platformName() == u"offscreen"_s) {
        window.resize(1920, 1080);
        return;
    }
    window.showFullScreen();
    QVERIFY(waitFor([&] { return window.size() == window.screen()->size(); }));
}

void checkAt(QWidget &widget, const QString &size)
{
    // Lists give their rows a place when they are drawn, and once more when that has shown a scroll bar.
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    keepPicture(widget, size);
    const QStringList faults = screenFaults(widget);
    QVERIFY2(faults.isEmpty(), qPrintable(size + u": "_s + faults.join(u"\n  "_s)));
}

void checkAtEverySize(QWidget &widget)
{
    if (!qobject_cast<QMainWindow *>(&widget)) {
        checkAt(widget, u"as it is"_s);
        return;
    }
    checkAt(widget, u"default"_s);
    widget.resize(widget.minimumSize());
    checkAt(widget, u"minimum"_s);
    QCOMPARE(widget.size(), QSize(800, 560));
    widget.resize(900, 600);
    checkAt(widget, u"in between"_s);
    fillScreen(widget);
    checkAt(widget, u"full screen"_s);
}

} // namespace

void TestScreens::initTestCase()
{
    placeKeyPair();
    tideloft::app::substituteFonts();
    // Without this every scale could be the same.
    const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR", u"1"_s);
    QCOMPARE(qApp->devicePixelRatio(), qEnvironmentVariable("TIDELOFT_SCREENS_RATIO", scale).toDouble());
}

void TestScreens::everyPage_data()
{
    QTest::addColumn<const ScreenPage *>("page");
    QTest::addColumn<Language>("language");
    QTest::addColumn<Names>("names");
    for (const ScreenPage &page : screenPages()) {
        QTest::addRow("%s, Swedish", page.name) << &page << Language::Swedish << Names::Usual;
        QTest::addRow("%s, English", page.name) << &page << Language::English << Names::Usual;
        QTest::addRow("%s, long names", page.name) << &page << Language::Swedish << Names::Long;
    }
}

void TestScreens::everyPage()
{
    QFETCH(const ScreenPage *, page);
    QFETCH(const Language, language);
    QFETCH(const Names, names);
    SettingsProbe probe(language);
    int looks = 0;
    QVERIFY(page->show(probe, names, [&](QWidget &widget) {
        ++looks;
        checkAtEverySize(widget);
    }));
    QCOMPARE(looks, 1);
}

void TestScreens::emojiAreColoured_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : {u"💬"_s, u"🔒"_s, u"🌍"_s, u"👤"_s, u"🛡"_s, u"🔔"_s, u"🎨"_s, u"🌊"_s, u"➕"_s,
                                u"⚡"_s, u"😂"_s, u"😊"_s, u"😍"_s, u"😀"_s, u"😢"_s, u"❤"_s})
        QTest::addRow("%s", qPrintable(text)) << text;
    QTest::newRow("Swedish flag") << u"🇸🇪"_s;
    QTest::newRow("British flag") << u"🇬🇧"_s;
}

void TestScreens::emojiAreColoured()
{
    QFETCH(const QString, text);
    const SettingsProbe probe;
    const QFont font = probe.the<QLabel>(u"emptyIcon"_s)->font();
    QCOMPARE(familiesOf(text, font), QStringList{u"noto color emoji"_s});
    QCOMPARE(glyphCount(text, font), 1);
}

void TestScreens::symbolsAreLetters_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : {u"✓"_s, u"➤"_s, u"←"_s, u"●"_s})
        QTest::addRow("%s", qPrintable(text)) << text;
}

void TestScreens::symbolsAreLetters()
{
    QFETCH(const QString, text);
    const SettingsProbe probe;
    const QFont font = probe.the<QLabel>(u"emptyIcon"_s)->font();
    QVERIFY(!familiesOf(text, font).contains(u"noto color emoji"_s));
    QCOMPARE(glyphCount(text, font), 1);
}

// A font of emoji has this one too, in colours that follow neither theme nor accent. The button has no style
// of its own, and looks as one would whose style names the font of symbols.
void TestScreens::wheelsAreLetters()
{
    SettingsProbe probe;
    QVERIFY(probe.signIn());
    probe.openSettings();
    QPushButton *wheel = probe.settingsButton();
    QPushButton letter(wheel->text(), wheel->parentWidget());
    letter.setObjectName(wheel->objectName());
    letter.setCheckable(true);
    letter.setStyleSheet(u"QPushButton { font-family: \"%1\"; }"_s.arg(tideloft::ui::style::symbolFamily()));
    letter.resize(wheel->size());
    QVERIFY(!familiesOf(letter.text(), letter.font()).contains(u"noto color emoji"_s));
    for (const QString &sheet : {tideloft::ui::darkStyleSheet(), tideloft::ui::lightStyleSheet()}) {
        probe.window->setStyleSheet(sheet);
        for (const bool checked : {true, false}) {
            wheel->setChecked(checked);
            letter.setChecked(checked);
            QCOMPARE(wheel->grab().toImage(), letter.grab().toImage());
        }
    }
    const QListWidgetItem *entry = probe.nav()->item(Advanced);
    const QFont font = entry->font().resolve(probe.nav()->font());
    QVERIFY(!familiesOf(entry->text(), font).contains(u"noto color emoji"_s));
}

void TestScreens::digitsAreLetters()
{
    const SettingsProbe probe;
    const QFont font = probe.the<QLabel>(u"emptyIcon"_s)->font();
    QCOMPARE(familiesOf(u"at 12:04, #3 *"_s, font).size(), 1);
    QVERIFY(!familiesOf(u"12"_s, font).contains(u"noto color emoji"_s));
}

void TestScreens::faultsAreSeen_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<std::function<void(QWidget &, QLabel &, QPushButton &)>>("spoil");
    using Spoil = std::function<void(QWidget &, QLabel &, QPushButton &)>;
    QTest::newRow("nothing") << QString() << Spoil([](QWidget &, QLabel &, QPushButton &) {});
    QTest::newRow("label too narrow")
        << u"px of text"_s << Spoil([](QWidget &, QLabel &label, QPushButton &) { label.setFixedWidth(30); });
    QTest::newRow("label too low") << u"px of height"_s << Spoil([](QWidget &, QLabel &label, QPushButton &) {
        label.setFixedHeight(5);
    });
    QTest::newRow("paragraph too low")
        << u"px of height"_s << Spoil([](QWidget &, QLabel &label, QPushButton &) {
               label.setWordWrap(true);
               label.setFixedSize(30, 20);
           });
    QTest::newRow("paragraph narrower than a word")
        << u"px for a word of"_s << Spoil([](QWidget &, QLabel &label, QPushButton &) {
               label.setWordWrap(true);
               label.setFixedSize(20, 60);
           });
    QTest::newRow("button too narrow")
        << u"px of text"_s
        << Spoil([](QWidget &, QLabel &, QPushButton &button) { button.setFixedWidth(20); });
    QTest::newRow("out of its place")
        << u"reaches out"_s << Spoil([](QWidget &, QLabel &, QPushButton &button) { button.move(150, 0); });
    QTest::newRow("over one another")
        << u"overlap"_s
        << Spoil([](QWidget &, QLabel &label, QPushButton &button) { button.move(label.pos()); });
    QTest::newRow("box") << u"is a box"_s << Spoil([](QWidget &, QLabel &label, QPushButton &) {
        label.setText(QString(QChar(0x0378)));
    });
}

void TestScreens::faultsAreSeen()
{
    using Spoil = std::function<void(QWidget &, QLabel &, QPushButton &)>;
    QFETCH(const QString, fault);
    QFETCH(const Spoil, spoil);
    QWidget window;
    window.resize(200, 60);
    QLabel label(u"Some words"_s, &window);
    label.setGeometry(0, 0, 200, 25);
    QPushButton button(u"Save"_s, &window);
    button.setGeometry(0, 30, 120, 30);
    window.show();
    spoil(window, label, button);
    const QString found = screenFaults(window).join(u'\n');
    QCOMPARE(found.isEmpty(), fault.isEmpty());
    QVERIFY2(found.contains(fault), qPrintable(found));
}

TIDELOFT_GUI_TEST_MAIN(TestScreens)
#include "tst_screens.moc"
