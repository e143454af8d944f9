// Finding the parts of the settings page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/settings_parts.h"

#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTest>

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

SettingsParts::~SettingsParts() = default;

QListWidget *SettingsParts::nav() const
{
    return only<QWidget>(*settingsPage(), u"settingsNav"_s)->findChild<QListWidget *>();
}

QPushButton *SettingsParts::backButton() const
{
    return only<QWidget>(*settingsPage(), u"settingsNav"_s)->findChild<QPushButton *>();
}

QStackedWidget *SettingsParts::sections() const
{
    return settingsPage()->findChild<QStackedWidget *>();
}

QScrollArea *SettingsParts::section(int index) const
{
    auto *area = qobject_cast<QScrollArea *>(sections()->widget(index));
    if (!area)
        qFatal("Section %d has no scroll area", index);
    return area;
}

QWidget *SettingsParts::content(int index) const
{
    return section(index)->widget();
}

void SettingsParts::clickRow(int index) const
{
    const QRect spot = nav()->visualItemRect(nav()->item(index));
    QTest::mouseClick(nav()->viewport(), Qt::LeftButton, {}, spot.center());
}

QWidget *SettingsParts::row(int index, const QString &label) const
{
    for (auto *row : content(index)->findChildren<QWidget *>(u"settingsRow"_s)) {
        if (labelTexts(row).value(0) == label)
            return row;
    }
    qFatal("Section %d has no row \"%s\"", index, qPrintable(label));
}

QStringList SettingsParts::outline(int index) const
{
    const QLayout *blocks = content(index)->layout();
    QStringList outline;
    for (int i = 0; i < blocks->count(); ++i)
        outline.append(describeBlock(blocks->itemAt(i)));
    return outline;
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
