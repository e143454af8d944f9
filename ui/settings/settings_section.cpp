// Putting a settings page together.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/settings/settings_section.h"

#include "ui/settings/settings_rows.h"
#include "ui/style/settings_styles.h"
#include "ui/widgets/accessible_role.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QScrollArea>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

SettingsSection::SettingsSection(const LocalizedText &title, Language shownLanguage, QWidget *parent)
    : language(shownLanguage),
      area(new QScrollArea(parent)),
      page(new QWidget(area)),
      column(makeColumnLayout(page, 12))
{
    if (title.english.isEmpty())
        return;
    auto *label = makeStyledLabel(title.in(language), style::sectionTitle, page);
    column->addWidget(label);
}

void SettingsSection::add(QWidget *block)
{
    column->addWidget(block);
}

void SettingsSection::addHeader(const LocalizedText &caption)
{
    add(makeSectionHeader(caption.in(language), page));
}

QWidget *SettingsSection::addCard()
{
    QWidget *card = makeSettingsCard(page);
    add(card);
    return card;
}

QWidget *SettingsSection::addSwitches(const QList<SwitchGroup> &groups)
{
    QWidget *card = nullptr;
    for (const SwitchGroup &group : groups) {
        addHeader(group.header);
        card = addCard();
        for (const SwitchModel &model : group.switches)
            columnOf(card)->addWidget(
                makeSwitchRow(model.label.in(language), model.hint.in(language), model.on, card));
    }
    return card;
}

QWidget *SettingsSection::finish()
{
    column->addStretch();
    area->setWidgetResizable(true);
    area->setWidget(page);
    setAccessibleRole(area, QAccessible::Grouping); // the keyboard stops here to scroll
    ringFocus(area);
    // The style sheet paints the background: an opaque page would be left out of the fade that shows it.
    page->setAutoFillBackground(false);
    return area;
}

QWidget *makeShieldCard(Language language, QWidget *parent)
{
    QWidget *card = makeSettingsCard(parent);
    auto *icon = makeStyledLabel(u"🛡"_s, style::shieldIcon, card);
    auto *caption = makeStyledLabel(u"Trust & Safety"_s, style::shieldCaption, card);
    auto *state = makeStyledLabel(chooseText(language, u"Ditt konto är verifierat och säkert"_s,
                                             u"Your account is verified and secure"_s),
                                  style::shieldLine, card);
    state->setWordWrap(true);
    auto *mark = makeStyledLabel(u"✓ Verified"_s, style::shieldMark, card);
    auto *words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(caption);
    words->addWidget(state);
    auto *layout = new QHBoxLayout;
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(12);
    layout->addWidget(icon);
    layout->addLayout(words, 1);
    layout->addWidget(mark);
    columnOf(card)->addLayout(layout);
    return card;
}

} // namespace tideloft::ui
