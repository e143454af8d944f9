// The servers' buttons in the rail: what each looks like, and which lists give which buttons.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/listed_server.h"
#include "tests/support/rail_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLayout>
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestServerButton : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void initialsOfAServer_data();
    void initialsOfAServer();
    void buttonAsDesigned();
    void columnAsDesigned();
    void skipsWhatIsNoServer();
    void emptyListEmptiesTheRail();
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

void TestServerButton::initialsOfAServer_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("alpha shows A") << u"alpha"_s << u"A"_s;
    QTest::newRow("x shows X") << u"x"_s << u"X"_s;
    QTest::newRow("an empty name shows an empty button") << QString() << QString();
}

void TestServerButton::initialsOfAServer()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    const RailPageProbe probe;
    probe.rail->showServers({server(u"g1"_s, name)});
    QCOMPARE(probe.buttons().constFirst()->text(), shown);
    QCOMPARE(probe.buttons().constFirst()->toolTip(), name);
}

void TestServerButton::buttonAsDesigned()
{
    const RailPageProbe probe;
    probe.rail->showServers({server(u"g1"_s, u"One"_s), server(u"g2"_s, u"Two"_s)});
    QTest::mouseClick(probe.buttons().at(1), Qt::LeftButton);
    QVERIFY(!probe.buttons().at(0)->isChecked());
    QVERIFY(probe.buttons().at(1)->isChecked());
    for (const QAbstractButton *button : probe.buttons()) {
        QCOMPARE(propertyOf(*button, "fixedWidth"), QVariant(36));
        QCOMPARE(propertyOf(*button, "fixedHeight"), QVariant(36));
        QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(button->contextMenuPolicy(), Qt::CustomContextMenu);
        QVERIFY(button->isCheckable());
        QVERIFY(button->icon().isNull());
        QVERIFY(!button->accessibleName().isEmpty());
    }
    QCOMPARE(probe.buttons().at(0)->styleSheet(), styleOf(u"#131e2a"_s, u"#1a2d40"_s));
    QCOMPARE(probe.buttons().at(1)->styleSheet(), styleOf(u"rgba(59,139,235,0.2)"_s, u"#3b8beb"_s));
}

void TestServerButton::columnAsDesigned()
{
    const RailPageProbe probe;
    probe.rail->showServers({server(u"g1"_s, u"One"_s), server(u"g2"_s, u"Two"_s)});
    const QWidget *column = probe.column();
    QCOMPARE(spacesOf(column), u"0 0 0 0, spacing 4"_s);
    QCOMPARE(itemsOf(column), u"QPushButton(O) QPushButton(T)"_s);
    const QRect first = probe.buttons().at(0)->geometry();
    QTRY_COMPARE(probe.buttons().at(1)->geometry(), first.translated(0, 36 + 4));
}

void TestServerButton::skipsWhatIsNoServer()
{
    const RailPageProbe probe;
    probe.rail->showServers({u"text"_s, 7, QJsonObject{{u"name"_s, u"No id"_s}}, server(u"g"_s, u"Good"_s)});
    QCOMPARE(probe.buttons().size(), 1);
    QCOMPARE(probe.buttons().constFirst()->toolTip(), u"Good"_s);
}

void TestServerButton::emptyListEmptiesTheRail()
{
    const RailPageProbe probe;
    probe.rail->showServers({server(u"g"_s, u"Good"_s)});
    const QPointer<QAbstractButton> old = probe.buttons().constFirst();
    probe.rail->showServers({});
    QVERIFY(!old); // at once, not later
    QCOMPARE(probe.column()->layout()->count(), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestServerButton)
#include "tst_server_button.moc"
