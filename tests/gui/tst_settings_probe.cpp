// Finding the parts of the settings view.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_settings_probe.h"

#include "tests/gui/tst_popups.h"
#include "tests/support/patience.h"
#include "tests/support/waiting.h"

#include <QAbstractAnimation>
#include <QApplication>
#include <QComboBox>
#include <QGraphicsEffect>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

template <typename Widget> Widget *withText(const QWidget *root, const QString &text)
{
    Widget *found = nullptr;
    for (auto *widget : root->findChildren<Widget *>()) {
        if (widget->text() != text)
            continue;
        if (found)
            qFatal("\"%s\" is there more than once", qPrintable(text));
        found = widget;
    }
    if (!found)
        qFatal("\"%s\" is missing", qPrintable(text));
    return found;
}

QString describeBlock(QLayoutItem *item)
{
    const QWidget *block = item->widget();
    if (!block)
        return u"stretch"_s;
    if (const auto *label = qobject_cast<const QLabel *>(block))
        return label->text();
    if (block->objectName() == u"settingsSectionHeader")
        return u"# "_s + labelTexts(block).join(u'|');
    QStringList rows;
    for (const QWidget *row : block->findChildren<QWidget *>(u"settingsRow"_s))
        rows.append(labelTexts(row).value(0));
    return block->objectName() == u"settingsCard" ? u"card(%1)"_s.arg(rows.join(u", "_s)) : u"box"_s;
}

} // namespace

SettingsProbe::SettingsProbe(ui::Language language)
{
    choose(language);
    const bool signedIn = signIn();
    refreshTimer()->stop(); // from here on every request has its reason in the test
    // The keys are asked for again once the own one is registered.
    if (!signedIn || !service.waitForRequests("GET /api/chat/device-keys/me", 2) || !settle())
        qFatal("The sign-in does not come to its end");
}

void SettingsProbe::choose(ui::Language language) const
{
    the<QComboBox>(u"langCombo"_s)->setCurrentIndex(static_cast<int>(language));
}

QPushButton *SettingsProbe::messagesButton() const
{
    return static_cast<QPushButton *>(named(*window, u"railBtn=💬"_s));
}

QPushButton *SettingsProbe::settingsButton() const
{
    return static_cast<QPushButton *>(named(*window, u"railBtn=⚙"_s));
}

void SettingsProbe::openSettings() const
{
    QTest::mouseClick(settingsButton(), Qt::LeftButton);
}

bool SettingsProbe::fadedIn() const
{
    return waitFor(
        [this] {
            const QGraphicsEffect *effect = settingsPage()->graphicsEffect();
            return effect && !effect->isEnabled();
        },
        patience());
}

QWidget *SettingsProbe::settingsPage() const
{
    for (int i = 0; i < center()->count(); ++i) {
        if (center()->widget(i)->findChild<QWidget *>(u"settingsNav"_s))
            return center()->widget(i);
    }
    return nullptr;
}

QListWidget *SettingsProbe::nav() const
{
    return the<QWidget>(u"settingsNav"_s)->findChild<QListWidget *>();
}

QPushButton *SettingsProbe::backButton() const
{
    return the<QWidget>(u"settingsNav"_s)->findChild<QPushButton *>();
}

QStackedWidget *SettingsProbe::sections() const
{
    return settingsPage()->findChild<QStackedWidget *>();
}

QScrollArea *SettingsProbe::section(int index) const
{
    auto *area = qobject_cast<QScrollArea *>(sections()->widget(index));
    if (!area)
        qFatal("Section %d has no scroll area", index);
    return area;
}

QWidget *SettingsProbe::content(int index) const
{
    return section(index)->widget();
}

void SettingsProbe::clickRow(int index) const
{
    const QRect spot = nav()->visualItemRect(nav()->item(index));
    QTest::mouseClick(nav()->viewport(), Qt::LeftButton, {}, spot.center());
}

QWidget *SettingsProbe::row(int index, const QString &label) const
{
    for (auto *row : content(index)->findChildren<QWidget *>(u"settingsRow"_s)) {
        if (labelTexts(row).value(0) == label)
            return row;
    }
    qFatal("Section %d has no row \"%s\"", index, qPrintable(label));
}

QStringList SettingsProbe::outline(int index) const
{
    const QLayout *blocks = content(index)->layout();
    QStringList outline;
    for (int i = 0; i < blocks->count(); ++i)
        outline.append(describeBlock(blocks->itemAt(i)));
    return outline;
}

bool withUserMenu(const GuiProbe &probe, const std::function<void(QMenu *)> &use)
{
    const auto *footer = probe.the<QWidget>(u"sideFooter"_s);
    return withMenu([footer] { press(footer, {footer->width() - 5, 5}); }, use);
}

bool takeFromUserMenu(const GuiProbe &probe, int index)
{
    return withUserMenu(probe, [index](QMenu *menu) { clickEntry(menu, index); });
}

QStringList labelTexts(const QWidget *root)
{
    QStringList texts;
    for (const auto *label : root->findChildren<QLabel *>())
        texts.append(label->text());
    return texts;
}

QLabel *labelWith(const QWidget *root, const QString &text)
{
    return withText<QLabel>(root, text);
}

QPushButton *buttonWith(const QWidget *root, const QString &text)
{
    return withText<QPushButton>(root, text);
}

QString headerAbove(const QWidget *row)
{
    QWidget *card = row->parentWidget();
    QLayout *blocks = card->parentWidget()->layout();
    const QLayoutItem *above = blocks->itemAt(blocks->indexOf(card) - 1);
    if (!above || !above->widget() || above->widget()->objectName() != u"settingsSectionHeader")
        return u"(no header)"_s;
    return labelTexts(above->widget()).join(u'|');
}

} // namespace tideloft::tests
