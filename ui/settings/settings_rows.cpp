// Building settings rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/settings/settings_rows.h"

#include "ui/style/settings_styles.h"
#include "ui/widgets/emoji_line_edit.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

// In a narrow window what a row is about takes several lines, and its switch or button stays in sight.
QLabel *makeWrapping(const QString &text, const QString &styleSheet, QWidget *row)
{
    auto *label = makeStyledLabel(text, styleSheet, row);
    label->setWordWrap(true);
    return label;
}

QPushButton *makeSwitch(const QString &label, const QString &hint, bool on, QWidget *row)
{
    auto *button = makeButton({}, row);
    button->setCheckable(true);
    button->setChecked(on);
    button->setFixedSize(44, 24);
    roundFocusRing(button, 12);
    button->setAccessibleName(label);
    button->setAccessibleDescription(hint);
    button->setStyleSheet(style::switchButton(on));
    QObject::connect(button, &QPushButton::toggled, button,
                     [button](bool nowOn) { button->setStyleSheet(style::switchButton(nowOn)); });
    return button;
}

} // namespace

QWidget *makeSectionHeader(const QString &caption, QWidget *parent)
{
    auto *header = makeBox(parent, u"settingsSectionHeader"_s);
    auto *rule = makeRule(header);
    rule->setStyleSheet(style::sectionRule);
    auto *column = makeColumnLayout(header, 6);
    column->addWidget(makeStyledLabel(caption, style::sectionHeader, header));
    column->addWidget(rule);
    return header;
}

QWidget *makeSettingsCard(QWidget *parent)
{
    auto *card = makeBox(parent, u"settingsCard"_s);
    // Rows must not cover the border of the light card.
    makeColumnLayout(card)->setContentsMargins(1, 1, 1, 1);
    return card;
}

QVBoxLayout *columnOf(QWidget *card)
{
    return static_cast<QVBoxLayout *>(card->layout());
}

QWidget *makeSwitchRow(const QString &label, const QString &hint, bool on, QWidget *parent)
{
    auto *row = makeBox(parent, u"settingsRow"_s);
    row->setMinimumHeight(56);
    auto *words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(makeWrapping(label, style::rowLabel, row));
    if (!hint.isEmpty())
        words->addWidget(makeWrapping(hint, style::rowHint, row));
    auto *layout = makeRowLayout(row, 12);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->addLayout(words, 1);
    layout->addWidget(makeSwitch(label, hint, on, row), 0, Qt::AlignVCenter);
    return row;
}

QWidget *makeActionRow(const QString &label, const QString &buttonText, const QString &styleSheet,
                       QWidget *parent, const std::function<void()> &action)
{
    auto *row = makeBox(parent, u"settingsRow"_s);
    row->setMinimumHeight(52);
    auto *button = makeButton(buttonText, row);
    button->setFixedHeight(32);
    button->setMinimumWidth(120);
    button->setStyleSheet(styleSheet.isEmpty() ? style::actionButton : styleSheet);
    button->setAccessibleDescription(label);
    auto *layout = makeRowLayout(row, 12);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->addWidget(makeWrapping(label, style::actionLabel, row), 1);
    layout->addWidget(button);
    QObject::connect(button, &QPushButton::clicked, button, [action] { action(); });
    return row;
}

QWidget *makeTextRow(const QString &label, const QString &placeholder, const QString &text, QWidget *parent)
{
    auto *row = makeBox(parent, u"settingsRow"_s);
    auto *field = new EmojiLineEdit(text, row);
    field->setPlaceholderText(placeholder);
    field->setStyleSheet(style::field);
    field->setAccessibleName(label);
    auto *column = makeColumnLayout(row, 6);
    column->setContentsMargins(16, 12, 16, 12);
    auto *caption = makeStyledLabel(label, style::fieldLabel, row);
    caption->setBuddy(field);
    column->addWidget(caption);
    column->addWidget(field);
    return row;
}

} // namespace tideloft::ui
