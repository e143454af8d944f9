// The menu of the sidebar's footer, and the footer itself, under names that try to be more than names.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/popups.h"
#include "tests/support/test_main.h"

#include <QJsonDocument>
#include <QLabel>
#include <QMenu>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestUserMenuNames : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void staysPlain_data();
    void staysPlain();
};

void TestUserMenuNames::staysPlain_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("markup") << u"<img src=\"/dev/zero\"><b>bold</b>"_s;
    QTest::newRow("ampersands") << u"&profile &log out"_s;
    QTest::newRow("line breaks") << u"one\ntwo\nthree"_s;
    QTest::newRow("5,000 characters") << QString(5000, u'w');
    QTest::newRow("an emoji first") << u"🌍 world"_s;
}

void TestUserMenuNames::staysPlain()
{
    QFETCH(QString, name);
    GuiProbe probe;
    probe.window->setLanguageIndex(1);
    const QSize before = probe.window->size();
    probe.service.answer("GET /api/me", 200,
                         QJsonDocument(QJsonObject{{u"username"_s, name}}).toJson(QJsonDocument::Compact));
    QVERIFY(probe.signIn());
    QVERIFY(probe.settle());
    const auto *footer = probe.the<QWidget>(u"sideFooter"_s);
    const auto *label = probe.the<QLabel>(u"myName"_s);
    QCOMPARE(label->text(), name);
    QCOMPARE(label->textFormat(), Qt::PlainText);
    const bool seen = withUserMenu(probe, [footer](const QMenu *menu) {
        QCOMPARE(entriesOf(menu), (QStringList{u"Profile"_s, u"Settings"_s, u"-"_s, u"Log out"_s}));
        QCOMPARE(menu->x(), footer->mapToGlobal(QPoint(0, 0)).x());
        QVERIFY(menu->width() < footer->width());
    });
    QVERIFY(seen);
    QCOMPARE(footer->size(), QSize(260, 58));
    QCOMPARE(probe.window->size(), before);
    QVERIFY(probe.window->minimumSizeHint().width() <= before.width());
}

TIDELOFT_GUI_TEST_MAIN(TestUserMenuNames)
#include "tst_user_menu_names.moc"
