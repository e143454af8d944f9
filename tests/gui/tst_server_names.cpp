// Servers with names that someone chose to do harm.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QTextDocument>
#include <QToolTip>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestServerNames : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void hostileNames_data();
    void hostileNames();
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
