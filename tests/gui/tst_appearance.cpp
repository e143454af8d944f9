// Theme and accent as they are chosen in the settings: the marks, and the window's style sheet.
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/test_main.h"
#include "ui/style/style_sheets.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
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
    void themeChoice_data();
    void themeChoice();
    void accentChoice_data();
    void accentChoice();
    void themeAndAccent_data();
    void themeAndAccent();
    void lightThenAccentThenDarkKeepsTheAccent();
    void defaultAccentRestoresTheGradients();
    void marksStayWhereTheyWerePut();
    void footerInitialsStay();
    void footerPictureSurvives();
    void nothingIsAskedOrStored();
    void byKeyboard();
};

namespace
{

const QStringList colours{u"#3b8beb"_s, u"#5b5bd6"_s, u"#25a868"_s, u"#e05454"_s, u"#f59e0b"_s, u"#ec4899"_s};
const QStringList themes{u"Dark"_s, u"Light"_s, u"System"_s};

QString themeStyle(bool selected)
{
    return selected ? u"background: #3b8beb; color: #fff; border-radius: 6px; font-size: 12px; "
                      "padding: 6px 16px; border: none;"_s
                    : u"background: #0c151e; color: #5a7a9a; border-radius: 6px; font-size: 12px; "
                      "padding: 6px 16px; border: 1px solid #1a2d40;"_s;
}

QString swatchStyle(const QString &colour, bool marked)
{
    return u"background: %1; border-radius: 14px; border: %2;"_s.arg(
        colour, marked ? u"3px solid #fff"_s : u"2px solid transparent"_s);
}

/// The sheet that must be installed; what a reader would do by hand.
QString expectedSheet(bool dark, const QString &accent)
{
    QString sheet = dark ? tideloft::ui::darkStyleSheet() : tideloft::ui::lightStyleSheet();
    if (accent == colours.first())
        return sheet;
    return sheet.replace(u"#3b8beb"_s, accent).replace(u"#2563eb"_s, accent);
}

/// The signed-in window that shows the Appearance section.
class AppearanceProbe : public SettingsProbe
{
public:
    explicit AppearanceProbe(Language language = Language::English) : SettingsProbe(language)
    {
        openSettings();
        clickRow(Appearance);
    }

    /// The buttons of the first card (0: themes) or the second (1: swatches).
    QList<QPushButton *> buttons(int card) const
    {
        const QWidget *owner = content(Appearance)->layout()->itemAt(2 + 2 * card)->widget();
        QList<QPushButton *> found;
        const QLayout *line = owner->layout()->itemAt(0)->layout();
        for (int i = 0; i < line->count(); ++i) {
            if (auto *button = qobject_cast<QPushButton *>(line->itemAt(i)->widget()))
                found.append(button);
        }
        return found;
    }

    void chooseTheme(int index) const { QTest::mouseClick(buttons(0).at(index), Qt::LeftButton); }
    void chooseAccent(const QString &colour) const
    {
        QTest::mouseClick(buttons(1).at(colours.indexOf(colour)), Qt::LeftButton);
    }
    QString sheet() const { return window->styleSheet(); }

    /// The indexes of the buttons or swatches that carry the mark; -1 for one that has another style.
    QList<int> markedThemes() const
    {
        return marked(
            buttons(0), [](int) { return themeStyle(true); }, [](int) { return themeStyle(false); });
    }
    QList<int> markedSwatches() const
    {
        return marked(
            buttons(1), [](int i) { return swatchStyle(colours.at(i), true); },
            [](int i) { return swatchStyle(colours.at(i), false); });
    }

private:
    template <typename Marked, typename Plain>
    static QList<int> marked(const QList<QPushButton *> &buttons, Marked markedStyle, Plain plainStyle)
    {
        QList<int> found;
        for (int i = 0; i < buttons.size(); ++i) {
            const QString style = buttons.at(i)->styleSheet();
            if (style == markedStyle(i))
                found.append(i);
            else if (style != plainStyle(i))
                found.append(-1);
        }
        return found;
    }
};

} // namespace

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

void TestAppearance::themeChoice_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("dark");
    QTest::newRow("Dark") << 0 << true;
    QTest::newRow("Light") << 1 << false;
    QTest::newRow("System means dark") << 2 << true;
}

void TestAppearance::themeChoice()
{
    QFETCH(int, index);
    QFETCH(bool, dark);
    const AppearanceProbe probe;
    probe.chooseTheme(dark ? 1 : 0); // the other one first, so that something has to change
    QCOMPARE(probe.sheet(), expectedSheet(!dark, colours.first()));
    probe.chooseTheme(index);
    QCOMPARE(probe.sheet(), expectedSheet(dark, colours.first()));
    QCOMPARE(probe.markedThemes(), QList<int>{index});
    probe.chooseTheme(index);
    QCOMPARE(probe.sheet(), expectedSheet(dark, colours.first()));
    QCOMPARE(probe.markedThemes(), QList<int>{index});
    QCOMPARE(probe.markedSwatches(), QList<int>{0});
}

void TestAppearance::accentChoice_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < colours.size(); ++i)
        QTest::newRow(qPrintable(colours.at(i))) << i;
}

void TestAppearance::accentChoice()
{
    QFETCH(int, index);
    const AppearanceProbe probe;
    probe.chooseAccent(colours.at(index == 0 ? 1 : 0));
    probe.chooseAccent(colours.at(index));
    QCOMPARE(probe.markedSwatches(), QList<int>{index});
    QCOMPARE(probe.markedThemes(), QList<int>{0});
    QCOMPARE(probe.sheet(), expectedSheet(true, colours.at(index)));
}

void TestAppearance::themeAndAccent_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QString>("accent");
    for (int theme = 0; theme < themes.size(); ++theme) {
        for (const QString &colour : colours)
            QTest::addRow("%s %s", qPrintable(themes.at(theme)), qPrintable(colour)) << theme << colour;
    }
}

// Either may come first.
void TestAppearance::themeAndAccent()
{
    QFETCH(int, theme);
    QFETCH(QString, accent);
    const AppearanceProbe probe;
    const QString expected = expectedSheet(theme != 1, accent);
    probe.chooseTheme(theme);
    probe.chooseAccent(accent);
    QCOMPARE(probe.sheet(), expected);
    probe.chooseTheme(theme == 1 ? 0 : 1);
    QCOMPARE(probe.sheet(), expectedSheet(theme == 1, accent));
    probe.chooseTheme(theme);
    QCOMPARE(probe.sheet(), expected);
    QCOMPARE(probe.markedThemes(), QList<int>{theme});
    QCOMPARE(probe.markedSwatches(), QList<int>{int(colours.indexOf(accent))});
}

void TestAppearance::lightThenAccentThenDarkKeepsTheAccent()
{
    const AppearanceProbe probe;
    probe.chooseTheme(1);
    probe.chooseAccent(u"#e05454"_s);
    QVERIFY(!probe.sheet().contains(u"#3b8beb"_s));
    QVERIFY(!probe.sheet().contains(u"#2563eb"_s));
    QCOMPARE(probe.sheet().count(u"#e05454"_s), expectedSheet(false, u"#e05454"_s).count(u"#e05454"_s));
    probe.chooseTheme(0);
    QCOMPARE(probe.sheet(), expectedSheet(true, u"#e05454"_s));
}

void TestAppearance::defaultAccentRestoresTheGradients()
{
    const AppearanceProbe probe;
    probe.chooseAccent(u"#ec4899"_s);
    QVERIFY(!probe.sheet().contains(u"#2563eb"_s));
    probe.chooseAccent(u"#3b8beb"_s);
    QCOMPARE(probe.sheet(), tideloft::ui::darkStyleSheet());
    QVERIFY(probe.sheet().contains(u"#2563eb"_s));
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

void TestAppearance::byKeyboard()
{
    const AppearanceProbe probe;
    probe.buttons(0).at(1)->setFocus();
    QTest::keyClick(probe.buttons(0).at(1), Qt::Key_Space);
    QCOMPARE(probe.sheet(), expectedSheet(false, colours.first()));
    probe.buttons(1).at(4)->setFocus();
    QTest::keyClick(probe.buttons(1).at(4), Qt::Key_Space);
    QCOMPARE(probe.sheet(), expectedSheet(false, u"#f59e0b"_s));
}

TIDELOFT_GUI_TEST_MAIN(TestAppearance)
#include "tst_appearance.moc"
