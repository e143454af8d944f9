// The servers' buttons in the rail: what each looks like, and which lists give which buttons.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLayout>
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestServerButtons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void initialsOfAServer_data();
    void initialsOfAServer();
    void buttonAsDesigned();
    void columnAsDesigned();
    void listAfterSignInFillsTheRail();
    void skipsWhatIsNoServer();
    void emptyListEmptiesTheRail();
    void noPictureIsAskedFor();
    void aLoadedServerChangesNothing();
};

namespace
{

QString styleOf(const QString &background, const QString &border)
{
    return u"QPushButton { background: %1; border: 1px solid %2; border-radius: 10px; color: #e8f0f8; "
           "font-size: 14px; font-weight: 700; }QPushButton:hover { border-radius: 8px; border-color: "
           "#5aa0f5; }QPushButton:checked { border-radius: 8px; background: rgba(59,139,235,0.25); "
           "border-color: #3b8beb; }"_s.arg(background, border);
}

} // namespace

void TestServerButtons::initialsOfAServer_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("alpha shows A") << u"alpha"_s << u"A"_s;
    QTest::newRow("x shows X") << u"x"_s << u"X"_s;
    QTest::newRow("an empty name shows an empty button") << QString() << QString();
}

void TestServerButtons::initialsOfAServer()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    GuiProbe probe;
    QVERIFY(listServers(probe, {server(u"g1"_s, name)}));
    QCOMPARE(serverButtons(probe).constFirst()->text(), shown);
    QCOMPARE(serverButtons(probe).constFirst()->toolTip(), name);
}

void TestServerButtons::buttonAsDesigned()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s), server(u"g2"_s, u"Two"_s)}));
    QTest::mouseClick(serverButtons(probe).at(1), Qt::LeftButton);
    QCOMPARE(serverChecks(probe), (QList<bool>{false, true}));
    for (const QAbstractButton *button : serverButtons(probe)) {
        QCOMPARE(propertyOf(*button, "fixedWidth"), QVariant(36));
        QCOMPARE(propertyOf(*button, "fixedHeight"), QVariant(36));
        QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(button->contextMenuPolicy(), Qt::CustomContextMenu);
        QVERIFY(button->isCheckable());
        QVERIFY(button->icon().isNull());
        QVERIFY(!button->accessibleName().isEmpty());
    }
    QCOMPARE(serverButtons(probe).at(0)->styleSheet(), styleOf(u"#131e2a"_s, u"#1a2d40"_s));
    QCOMPARE(serverButtons(probe).at(1)->styleSheet(), styleOf(u"rgba(59,139,235,0.2)"_s, u"#3b8beb"_s));
}

void TestServerButtons::columnAsDesigned()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s), server(u"g2"_s, u"Two"_s)}));
    const QWidget *column = serverColumn(probe)->parentWidget();
    QCOMPARE(spacesOf(column), u"0 0 0 0, spacing 4"_s);
    QCOMPARE(itemsOf(column), u"QPushButton(O) QPushButton(T)"_s);
    const QRect first = serverButtons(probe).at(0)->geometry();
    QCOMPARE(serverButtons(probe).at(1)->geometry(), first.translated(0, 36 + 4));
}

void TestServerButtons::listAfterSignInFillsTheRail()
{
    GuiProbe probe;
    probe.service.answer("GET /api/groups", 200,
                         R"([{"groupId":"g1","name":"one"},{"groupId":"g2","name":"two"}])");
    QVERIFY(probe.signIn());
    QTRY_COMPARE(serverButtons(probe).size(), 2);
    QCOMPARE(serverButtons(probe).at(0)->text(), u"O"_s);
    QCOMPARE(serverButtons(probe).at(1)->text(), u"T"_s);
}

void TestServerButtons::skipsWhatIsNoServer()
{
    GuiProbe probe;
    QVERIFY(
        listServers(probe, {u"text"_s, 7, QJsonObject{{u"name"_s, u"No id"_s}}, server(u"g"_s, u"Good"_s)}));
    QCOMPARE(serverButtons(probe).size(), 1);
    QCOMPARE(serverButtons(probe).constFirst()->toolTip(), u"Good"_s);
}

void TestServerButtons::emptyListEmptiesTheRail()
{
    GuiProbe probe;
    QVERIFY(listServers(probe, {server(u"g"_s, u"Good"_s)}));
    const QPointer<QAbstractButton> old = serverButtons(probe).constFirst();
    QVERIFY(callSlot(*probe.window, "onServersLoaded", Q_ARG(QJsonArray, {})));
    QVERIFY(!old); // at once, not later
    QCOMPARE(serverColumn(probe)->count(), 0);
}

void TestServerButtons::noPictureIsAskedFor()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count("GET /icons/g1"), 0);
    QVERIFY(serverButtons(probe).constFirst()->icon().isNull());
}

void TestServerButtons::aLoadedServerChangesNothing()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    const QPointer<QAbstractButton> button = serverButtons(probe).constFirst();
    QVERIFY(callSlot(*probe.window, "onServerLoaded", Q_ARG(QJsonObject, server(u"g1"_s, u"Renamed"_s))));
    QVERIFY(button);
    QCOMPARE(button->toolTip(), u"One"_s);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestServerButtons)
#include "tst_server_buttons.moc"
