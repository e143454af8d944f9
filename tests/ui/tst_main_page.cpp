// The main page alone: when its pages are made, and the theme that a choice in its settings gives the window.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_page.h"

#include "tests/support/appearance_parts.h"
#include "tests/support/page_window.h"
#include "tests/support/test_main.h"
#include "ui/chat/chat_page.h"
#include "ui/rail/rail.h"
#include "ui/settings/settings_page.h"
#include "ui/sidebar/side_footer.h"
#include "ui/sidebar/sidebar.h"
#include "ui/style/style_sheets.h"

#include <QApplication>
#include <QEvent>
#include <QPushButton>

#include <functional>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;
using tideloft::ui::MainPage;
using tideloft::ui::SettingsPage;
using tideloft::ui::Theme;

namespace
{

/// The main page in a window that wears the theme which is chosen there.
class MainPageProbe : public SettingsParts
{
public:
    MainPageProbe() : window(QSize(1100, 720)), page(new MainPage(Language::English, &window))
    {
        window.showPage(page);
        QObject::connect(page, &MainPage::themeChanged, &window,
                         [this](const Theme &theme) { window.setStyleSheet(theme.styleSheet()); });
        QTest::mouseClick(static_cast<QPushButton *>(named(*page, u"railBtn=⚙"_s)), Qt::LeftButton);
    }

    QWidget *settingsPage() const override { return page->findChild<SettingsPage *>(); }
    QString sheet() const { return window.styleSheet(); }

    PageWindow window;
    MainPage *page;
};

/// Asks a question right after a window was painted for the first time.
class AfterFirstPaint : public QObject
{
public:
    AfterFirstPaint(QWidget &window, std::function<bool()> toBeAsked) : question(std::move(toBeAsked))
    {
        window.installEventFilter(this);
    }
    bool eventFilter(QObject *window, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            window->removeEventFilter(this);
            QMetaObject::invokeMethod(
                this, [this] { answer = question(); }, Qt::QueuedConnection);
        }
        return false;
    }

    std::optional<bool> answer;

private:
    std::function<bool()> question;
};

} // namespace

class TestMainPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();
    void pagesAreMadeAfterTheFirstFrame();
    void pageThatIsAskedForIsMade();
    void hiddenPageSpeaksTheLanguageChosenBefore();
    void themeChoice_data();
    void themeChoice();
    void accentChoice_data();
    void accentChoice();
    void themeAndAccent_data();
    void themeAndAccent();
    void lightThenAccentThenDarkKeepsTheAccent();
    void defaultAccentRestoresTheGradients();
    void byKeyboard();

private:
    [[nodiscard]] QString sheet() const { return probe->sheet(); }

    std::unique_ptr<MainPageProbe> probe;
    std::unique_ptr<AppearanceParts> section;
};

// One page for all: every test chooses what the one before may have left otherwise.
void TestMainPage::initTestCase()
{
    probe = std::make_unique<MainPageProbe>();
    section = std::make_unique<AppearanceParts>(*probe);
    QCOMPARE(sheet(), expectedSheet(true, colours.first()));
}

void TestMainPage::cleanupTestCase()
{
    section.reset();
    probe.reset();
}

void TestMainPage::init()
{
    failOnToolkitWarnings();
    section->chooseTheme(0);
    section->chooseAccent(colours.first());
    QCOMPARE(sheet(), expectedSheet(true, colours.first()));
}

// It is not shown: somebody has to sign in first.
void TestMainPage::pagesAreMadeAfterTheFirstFrame()
{
    QMainWindow window;
    auto *page = new MainPage(Language::English, &window);
    page->hide();
    const AfterFirstPaint painted(window, [page] { return page->findChildren<QWidget *>().isEmpty(); });
    window.show();
    QTRY_VERIFY(page->findChild<QWidget *>(u"centerPanel"_s));
    QVERIFY(painted.answer == std::optional(true));
    QCOMPARE(page->findChildren<QWidget *>(u"centerPanel"_s).size(), 1);
    QCOMPARE(page->rail(), page->findChild<QWidget *>(u"rail"_s));
    QVERIFY(!page->isVisible());
}

void TestMainPage::pageThatIsAskedForIsMade()
{
    QMainWindow window;
    MainPage page(Language::English, &window);
    page.showUser(u"alice"_s, {});
    QVERIFY(page.findChild<QWidget *>(u"rail"_s));
    QVERIFY(page.rail() && page.sidebar() && page.footer() && page.chat());
    QCOMPARE(page.findChildren<QWidget *>(u"centerPanel"_s).size(), 1);
}

void TestMainPage::hiddenPageSpeaksTheLanguageChosenBefore()
{
    QMainWindow window;
    MainPage page(Language::English, &window);
    page.retranslate(Language::Swedish);
    QVERIFY(page.sidebar());
    QCOMPARE(page.findChild<QWidget *>(u"sideSearch"_s)->accessibleName(),
             u"Sök eller starta konversation"_s);
    QCOMPARE(page.findChild<QWidget *>(u"footerAvatar"_s)->toolTip(), u"Click to change profile picture"_s);
    QCOMPARE(page.findChild<QWidget *>(u"searchResults"_s)->accessibleName(), u"Sökresultat"_s);
}

void TestMainPage::themeChoice_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("dark");
    QTest::newRow("Dark") << 0 << true;
    QTest::newRow("Light") << 1 << false;
    QTest::newRow("System means dark") << 2 << true;
}

void TestMainPage::themeChoice()
{
    QFETCH(int, index);
    QFETCH(bool, dark);
    section->chooseTheme(dark ? 1 : 0); // the other one first, so that something has to change
    QCOMPARE(sheet(), expectedSheet(!dark, colours.first()));
    section->chooseTheme(index);
    QCOMPARE(sheet(), expectedSheet(dark, colours.first()));
    QCOMPARE(section->markedThemes(), QList<int>{index});
    section->chooseTheme(index);
    QCOMPARE(sheet(), expectedSheet(dark, colours.first()));
    QCOMPARE(section->markedThemes(), QList<int>{index});
    QCOMPARE(section->markedSwatches(), QList<int>{0});
}

void TestMainPage::accentChoice_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < colours.size(); ++i)
        QTest::newRow(qPrintable(colours.at(i))) << i;
}

void TestMainPage::accentChoice()
{
    QFETCH(int, index);
    section->chooseAccent(colours.at(index == 0 ? 1 : 0));
    section->chooseAccent(colours.at(index));
    QCOMPARE(section->markedSwatches(), QList<int>{index});
    QCOMPARE(section->markedThemes(), QList<int>{0});
    QCOMPARE(sheet(), expectedSheet(true, colours.at(index)));
}

void TestMainPage::themeAndAccent_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QString>("accent");
    for (int theme = 0; theme < themes.size(); ++theme) {
        for (const QString &colour : colours)
            QTest::addRow("%s %s", qPrintable(themes.at(theme)), qPrintable(colour)) << theme << colour;
    }
}

// Either may come first.
void TestMainPage::themeAndAccent()
{
    QFETCH(int, theme);
    QFETCH(QString, accent);
    const QString expected = expectedSheet(theme != 1, accent);
    section->chooseTheme(theme);
    section->chooseAccent(accent);
    QCOMPARE(sheet(), expected);
    section->chooseTheme(theme == 1 ? 0 : 1);
    QCOMPARE(sheet(), expectedSheet(theme == 1, accent));
    section->chooseTheme(theme);
    QCOMPARE(sheet(), expected);
    QCOMPARE(section->markedThemes(), QList<int>{theme});
    QCOMPARE(section->markedSwatches(), QList<int>{int(colours.indexOf(accent))});
}

void TestMainPage::lightThenAccentThenDarkKeepsTheAccent()
{
    section->chooseTheme(1);
    section->chooseAccent(u"#e05454"_s);
    QVERIFY(!sheet().contains(u"#3b8beb"_s));
    QVERIFY(!sheet().contains(u"#2563eb"_s));
    QCOMPARE(sheet().count(u"#e05454"_s), expectedSheet(false, u"#e05454"_s).count(u"#e05454"_s));
    section->chooseTheme(0);
    QCOMPARE(sheet(), expectedSheet(true, u"#e05454"_s));
}

void TestMainPage::defaultAccentRestoresTheGradients()
{
    section->chooseAccent(u"#ec4899"_s);
    QVERIFY(!sheet().contains(u"#2563eb"_s));
    section->chooseAccent(u"#3b8beb"_s);
    QCOMPARE(sheet(), tideloft::ui::darkStyleSheet());
    QVERIFY(sheet().contains(u"#2563eb"_s));
}

void TestMainPage::byKeyboard()
{
    section->buttons(0).at(1)->setFocus();
    QTest::keyClick(section->buttons(0).at(1), Qt::Key_Space);
    QCOMPARE(sheet(), expectedSheet(false, colours.first()));
    section->buttons(1).at(4)->setFocus();
    QTest::keyClick(section->buttons(1).at(4), Qt::Key_Space);
    QCOMPARE(sheet(), expectedSheet(false, u"#f59e0b"_s));
}

TIDELOFT_GUI_TEST_MAIN(TestMainPage)
#include "tst_main_page.moc"
