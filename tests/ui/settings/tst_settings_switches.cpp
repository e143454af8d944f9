// The thirty switches of the settings: what they say, how they look, and that they do nothing else.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/settings_page_probe.h"
#include "tests/support/settings_switches_table.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::Language;

class TestSettingsSwitches : public QObject
{
    Q_OBJECT

private slots:
    void cleanupTestCase() { probe.reset(); }
    void init() { failOnToolkitWarnings(); }
    void thirtyOfThem();
    void looks_data() { addRows(); }
    void looks();
    void togglesOnlyItsColour_data() { addRows(); }
    void togglesOnlyItsColour();
    void byKeyboard();

private:
    static void addRows();
    SettingsPageProbe &probeIn(Language language);

    // One page serves all rows of a language: every switch is touched by its own row only.
    std::unique_ptr<SettingsPageProbe> probe;
    Language spoken = Language::English;
};

namespace
{

QString switchStyle(bool on)
{
    return u"QPushButton { background: %1; border-radius: 12px; border: none; }"
           "QPushButton::indicator { width: 0; height: 0; }"_s.arg(on ? u"#3b8beb"_s : u"#2a3a4a"_s);
}

QPushButton *switchOf(const QWidget *row)
{
    const auto buttons = row->findChildren<QPushButton *>();
    return buttons.size() == 1 ? buttons.first() : nullptr;
}

/// Every widget of the window that has a style of its own, with it.
QHash<QWidget *, QString> stylesIn(const QWidget &window)
{
    QHash<QWidget *, QString> styles;
    for (auto *widget : window.findChildren<QWidget *>())
        styles.insert(widget, widget->styleSheet());
    return styles;
}

QList<QWidget *> changed(const QHash<QWidget *, QString> &before, const QHash<QWidget *, QString> &after)
{
    QList<QWidget *> widgets;
    for (auto it = after.cbegin(); it != after.cend(); ++it) {
        if (!before.contains(it.key()) || before.value(it.key()) != it.value())
            widgets.append(it.key());
    }
    return widgets;
}

} // namespace

void TestSettingsSwitches::addRows()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<int>("index");
    for (const Language language : {Language::English, Language::Swedish}) {
        for (int i = 0; i < switchRows().size(); ++i)
            QTest::addRow("%d %s", i + 1, qPrintable(switchRows().at(i).label.in(language))) << language << i;
    }
}

SettingsPageProbe &TestSettingsSwitches::probeIn(Language language)
{
    if (!probe || spoken != language) {
        probe = std::make_unique<SettingsPageProbe>(language);
        spoken = language;
    }
    return *probe;
}

void TestSettingsSwitches::thirtyOfThem()
{
    const SettingsPageProbe &window = probeIn(Language::English);
    QCOMPARE(switchRows().size(), 30);
    qsizetype switches = 0;
    for (const auto *row : window.settingsPage()->findChildren<QWidget *>(u"settingsRow"_s))
        switches += switchOf(row) && switchOf(row)->isCheckable() ? 1 : 0;
    QCOMPARE(switches, 30);
}

void TestSettingsSwitches::looks()
{
    QFETCH(Language, language);
    QFETCH(int, index);
    const SwitchRow &expected = switchRows().at(index);
    const SettingsPageProbe &window = probeIn(language);
    const QWidget *row = window.row(expected.section, expected.label.in(language));
    QCOMPARE(headerAbove(row), expected.header.in(language));
    QCOMPARE(row->minimumHeight(), 56);
    QCOMPARE(spacesOf(row), u"16 12 16 12, spacing 12"_s);
    QCOMPARE(itemsOf(row), u"[QLabel QLabel]*1 QPushButton()"_s);
    QCOMPARE(row->layout()->itemAt(0)->layout()->spacing(), 2);
    QCOMPARE(row->layout()->itemAt(1)->alignment(), Qt::AlignVCenter);

    const auto labels = row->findChildren<QLabel *>();
    QCOMPARE(labelTexts(row), (QStringList{expected.label.in(language), expected.hint.in(language)}));
    QCOMPARE(labels.at(0)->styleSheet(),
             u"color: #e8f0f8; font-size: 13px; font-weight: 600; background: transparent;"_s);
    QCOMPARE(labels.at(1)->styleSheet(), u"color: #5a7a9a; font-size: 11px; background: transparent;"_s);
    QVERIFY(labels.at(1)->wordWrap());

    const QPushButton *button = switchOf(row);
    QVERIFY(button && button->isCheckable());
    QCOMPARE(button->isChecked(), expected.on);
    QCOMPARE(button->styleSheet(), switchStyle(expected.on));
    QCOMPARE(propertyOf(*button, "fixedWidth"), QVariant(44));
    QCOMPARE(propertyOf(*button, "fixedHeight"), QVariant(24));
    QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(button->accessibleName(), expected.label.in(language));
}

void TestSettingsSwitches::togglesOnlyItsColour()
{
    QFETCH(Language, language);
    QFETCH(int, index);
    const SwitchRow &expected = switchRows().at(index);
    SettingsPageProbe &window = probeIn(language);
    window.clickRow(expected.section);
    QPushButton *button = switchOf(window.row(expected.section, expected.label.in(language)));
    const QHash<QWidget *, QString> before = stylesIn(window.window);
    const QString sheet = window.window.styleSheet();
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(button->isChecked(), !expected.on);
    QCOMPARE(button->styleSheet(), switchStyle(!expected.on));
    QCOMPARE(changed(before, stylesIn(window.window)), QList<QWidget *>{button});
    QCOMPARE(window.window.styleSheet(), sheet);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(button->styleSheet(), switchStyle(expected.on));
    QCOMPARE(window.window.sentSignals(), 0);
    QCOMPARE(QSettings().allKeys(), QStringList());
}

void TestSettingsSwitches::byKeyboard()
{
    const SettingsPageProbe &window = probeIn(Language::English);
    window.clickRow(Notifications);
    QPushButton *button = switchOf(window.row(Notifications, u"Do not disturb"_s));
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(button->styleSheet(), switchStyle(true));
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(button->styleSheet(), switchStyle(false));
}

TIDELOFT_GUI_TEST_MAIN(TestSettingsSwitches)
#include "tst_settings_switches.moc"
