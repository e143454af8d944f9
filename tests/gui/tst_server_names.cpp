// Servers with names that someone chose to do harm.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/test_main.h"
#include "ui/style/emoji_font.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QScopeGuard>
#include <QScreen>
#include <QTextDocument>
#include <QToolTip>

using namespace Qt::StringLiterals;
namespace style = tideloft::ui::style;
using namespace tideloft::tests;

class TestServerNames : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void hostileNames_data();
    void hostileNames();
    void tipsShowMarkupAsText();
    void tipsShowPicturesAndMarkupAsText_data();
    void tipsShowPicturesAndMarkupAsText();
    void tipsKeepToHalfTheScreen_data();
    void tipsKeepToHalfTheScreen();
    void anIdentifierIsPlainTextToo();
};

namespace
{

/// Has the tool tip of BUTTON shown and gives back what was handed to the toolkit.
QString shownTip(QAbstractButton *button)
{
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), button->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(button, &event);
    const QString tip = QToolTip::text();
    QToolTip::hideText();
    return tip;
}

} // namespace

void TestServerNames::hostileNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("markup") << u"<img src=\"/dev/zero\">"_s << u"<"_s;
    QTest::newRow("ampersand") << u"&Club"_s << u"&&"_s; // doubled: a shown "&", not a shortcut
    QTest::newRow("line breaks") << u"One\nTwo\nThree"_s << u"O"_s;
    QTest::newRow("5,000 characters") << QString(5000, u'w') << u"W"_s;
    QTest::newRow("an emoji first") << u"🌍 World"_s << u"🌍"_s;
}

void TestServerNames::hostileNames()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    const QSize before = probe.window->size();
    QVERIFY(listServers(probe, {server(u"g1"_s, name)}));
    QAbstractButton *button = serverButtons(probe).constFirst();
    QCOMPARE(button->text(), shown);
    QCOMPARE(button->toolTip(), name);
    QVERIFY(button->shortcut().isEmpty());
    QTextDocument document;
    document.setHtml(shownTip(button));
    QString tip = document.toPlainText().replace(QChar::LineSeparator, u'\n');
    if (!name.contains(u'\n'))
        tip.remove(u'\n'); // where a word is wider than the tip
    QVERIFY2(tip.startsWith(name.left(300)), qPrintable(tip));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->textFormat(), Qt::PlainText);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), name);
    QCoreApplication::processEvents();
    QCOMPARE(probe.window->size(), before);
    QCOMPARE(probe.window->minimumSizeHint().width() <= before.width(), true);
}

// Around a picture stands the client's own markup, and nothing else in the tip is any.
void TestServerNames::tipsShowPicturesAndMarkupAsText_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("markup beside it") << u"<b>1️⃣</b> & <img src=\"❤️‍🔥\">"_s;
    QTest::newRow("an entity before it") << u"&#3️⃣ &amp;#️⃣"_s;
    QTest::newRow("an end of a span") << u"</span>'\"❤️\"'</p>"_s;
    QTest::newRow("wider than the screen") << u"<b>1️⃣&WWWWWW"_s.repeated(20);
}

void TestServerNames::tipsShowPicturesAndMarkupAsText()
{
    QFETCH(const QString, name);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QFont::insertSubstitution(style::emojiFamily(), u"Noto Color Emoji"_s);
    const auto restore = qScopeGuard([] { QFont::removeSubstitutions(style::emojiFamily()); });
    QVERIFY(listServers(probe, {server(u"g1"_s, name)}));
    const QString tip = shownTip(serverButtons(probe).constFirst());
    QVERIFY2(tip.contains(u"<span style=\"font-family:'%1'\">"_s.arg(style::emojiFamily())), qPrintable(tip));
    QTextDocument document;
    document.setHtml(tip);
    const QString shown = document.toPlainText().remove(QChar::LineSeparator).remove(u'\n');
    QCOMPARE(shown, QString(name).remove(QChar(0xfe0f)));
}

// The property keeps what the service said; what is handed to the toolkit cannot be markup of the name's.
void TestServerNames::tipsShowMarkupAsText()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"<b>Bold</b> & co"_s)}));
    QCOMPARE(serverButtons(probe).constFirst()->toolTip(), u"<b>Bold</b> & co"_s);
    const QString tip = shownTip(serverButtons(probe).constFirst());
    QVERIFY2(tip.contains(u"&lt;b&gt;Bold&lt;/b&gt; &amp; co"_s), qPrintable(tip));
    QVERIFY2(!tip.contains(u"<b>"_s), qPrintable(tip));
}

void TestServerNames::tipsKeepToHalfTheScreen_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("ordinary") << u"The walkers of the valley & friends"_s;
    QTest::newRow("5,000 letters") << QString(5'000, u'W');
    QTest::newRow("wide letters") << u"﷽"_s.repeated(300);
    QTest::newRow("wide words") << u"﷽ "_s.repeated(150);
    QTest::newRow("ten lines of letters") << (QString(29, u'W') + u'\n').repeated(10);
    QTest::newRow("blanks that hold words together") << u"a\u00a0"_s.repeated(2'500);
    QTest::newRow("tabs") << u"a\t"_s.repeated(2'500);
    QTest::newRow("markup and letters") << u"<b>&"_s.repeated(1'000);
}

void TestServerNames::tipsKeepToHalfTheScreen()
{
    QFETCH(const QString, name);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, name)}));
    QAbstractButton *button = serverButtons(probe).constFirst();
    QCOMPARE(button->toolTip(), name);
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), button->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(button, &event);
    QVERIFY(QToolTip::isVisible());
    int tips = 0;
    const QSize half = button->screen()->availableSize() / 2;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->inherits("QTipLabel") || !window->isVisible())
            continue;
        ++tips;
        QVERIFY2(window->width() <= half.width() && window->height() <= half.height(),
                 qPrintable(u"%1 x %2"_s.arg(window->width()).arg(window->height())));
        QVERIFY(window->width() >= 20 && window->height() >= 10);
    }
    QCOMPARE(tips, 1);
    QToolTip::hideText();
}

void TestServerNames::anIdentifierIsPlainTextToo()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    const QSize before = probe.window->size();
    const QString identifier = u"<img src=\"/dev/zero\">"_s + QString(5000, u'w');
    QVERIFY(listServers(probe, {server(identifier, {})}));
    QTest::mouseClick(serverButtons(probe).constFirst(), Qt::LeftButton);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), identifier);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->textFormat(), Qt::PlainText);
    QVERIFY(probe.settle()); // it is laid out by then
    QCOMPARE(probe.window->size(), before);
    QVERIFY(probe.window->minimumSizeHint().width() <= before.width());
}

TIDELOFT_GUI_TEST_MAIN(TestServerNames)
#include "tst_server_names.moc"
