// The tool tips of servers with names that someone chose to do harm.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/listed_server.h"
#include "tests/support/rail_page_probe.h"
#include "tests/support/test_main.h"
#include "ui/style/emoji_font.h"

#include <QApplication>
#include <QHelpEvent>
#include <QScopeGuard>
#include <QScreen>
#include <QTextDocument>
#include <QToolTip>

using namespace Qt::StringLiterals;
namespace style = tideloft::ui::style;
using namespace tideloft::tests;

class TestServerTips : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void tipsShowMarkupAsText();
    void tipsShowPicturesAndMarkupAsText_data();
    void tipsShowPicturesAndMarkupAsText();
    void tipsKeepToHalfTheScreen_data();
    void tipsKeepToHalfTheScreen();
};

namespace
{

/// The rail with one server, and the button of that server.
class TipProbe : public RailPageProbe
{
public:
    explicit TipProbe(const QString &name)
    {
        rail->showServers({server(u"g1"_s, name)});
        button = buttons().constFirst();
    }

    /// Has the tool tip shown.
    void show() const
    {
        QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), button->mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(button, &event);
    }
    /// Shows it and gives back what was handed to the toolkit.
    QString shownTip() const
    {
        show();
        const QString tip = QToolTip::text();
        QToolTip::hideText();
        return tip;
    }

    QAbstractButton *button = nullptr;
};

} // namespace

// Around a picture stands the client's own markup, and nothing else in the tip is any.
void TestServerTips::tipsShowPicturesAndMarkupAsText_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("markup beside it") << u"<b>1️⃣</b> & <img src=\"❤️‍🔥\">"_s;
    QTest::newRow("an entity before it") << u"&#3️⃣ &amp;#️⃣"_s;
    QTest::newRow("an end of a span") << u"</span>'\"❤️\"'</p>"_s;
    QTest::newRow("wider than the screen") << u"<b>1️⃣&WWWWWW"_s.repeated(20);
}

void TestServerTips::tipsShowPicturesAndMarkupAsText()
{
    QFETCH(const QString, name);
    QFont::insertSubstitution(style::emojiFamily(), u"Noto Color Emoji"_s);
    const auto restore = qScopeGuard([] { QFont::removeSubstitutions(style::emojiFamily()); });
    const QString tip = TipProbe(name).shownTip();
    QVERIFY2(tip.contains(u"<span style=\"font-family:'%1'\">"_s.arg(style::emojiFamily())), qPrintable(tip));
    QTextDocument document;
    document.setHtml(tip);
    const QString shown = document.toPlainText().remove(QChar::LineSeparator).remove(u'\n');
    QCOMPARE(shown, QString(name).remove(QChar(0xfe0f)));
}

// The property keeps what the service said; what is handed to the toolkit cannot be markup of the name's.
void TestServerTips::tipsShowMarkupAsText()
{
    const TipProbe probe(u"<b>Bold</b> & co"_s);
    QCOMPARE(probe.button->toolTip(), u"<b>Bold</b> & co"_s);
    const QString tip = probe.shownTip();
    QVERIFY2(tip.contains(u"&lt;b&gt;Bold&lt;/b&gt; &amp; co"_s), qPrintable(tip));
    QVERIFY2(!tip.contains(u"<b>"_s), qPrintable(tip));
}

void TestServerTips::tipsKeepToHalfTheScreen_data()
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

void TestServerTips::tipsKeepToHalfTheScreen()
{
    QFETCH(const QString, name);
    const TipProbe probe(name);
    QCOMPARE(probe.button->toolTip(), name);
    probe.show();
    QVERIFY(QToolTip::isVisible());
    int tips = 0;
    const QSize half = probe.button->screen()->availableSize() / 2;
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

TIDELOFT_GUI_TEST_MAIN(TestServerTips)
#include "tst_server_tips.moc"
