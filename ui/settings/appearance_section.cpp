// The Appearance section: the buttons of the theme and the swatches of the accent.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/settings/appearance_section.h"

#include "ui/settings/settings_rows.h"
#include "ui/settings/settings_section.h"
#include "ui/style/accent.h"
#include "ui/style/settings_styles.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QPushButton>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

constexpr char accentProperty[] = "accentColor";

QString swatchName(qsizetype index, Language language)
{
    static const QList<LocalizedText> names{{u"Blå"_s, u"Blue"_s},   {u"Violett"_s, u"Violet"_s},
                                            {u"Grön"_s, u"Green"_s}, {u"Röd"_s, u"Red"_s},
                                            {u"Gul"_s, u"Amber"_s},  {u"Rosa"_s, u"Pink"_s}};
    return names.at(index).in(language);
}

// The border that marks the chosen swatch tells nothing to those who cannot see it.
void markSwatch(QPushButton *swatch, bool chosen, Language language)
{
    swatch->setStyleSheet(style::swatch(swatch->property(accentProperty).toString(), chosen));
    swatch->setAccessibleDescription(
        chosen ? chooseText(language, u"Accentfärg, vald"_s, u"Accent color, chosen"_s)
               : chooseText(language, u"Accentfärg"_s, u"Accent color"_s));
}

QPushButton *makeSwatch(const QString &colour, const QString &name, Language language, QWidget *card)
{
    auto *swatch = makeButton({}, card);
    swatch->setFixedSize(28, 28);
    roundFocusRing(swatch, 14);
    swatch->setProperty(accentProperty, colour);
    swatch->setAccessibleName(name);
    markSwatch(swatch, colour == defaultAccent, language);
    return swatch;
}

QHBoxLayout *makeCardRow(int spacing)
{
    auto *layout = new QHBoxLayout;
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(spacing);
    return layout;
}

QPushButton *makeThemeButton(const QString &name, bool chosen, QWidget *card)
{
    auto *button = makeButton(name, card);
    button->setCheckable(true);
    button->setChecked(chosen);
    button->setStyleSheet(chosen ? style::themeSelected : style::themeUnselected);
    return button;
}

void addThemeButtons(const SectionContext &context, const LookChoices &choices, QWidget *card)
{
    auto *layout = makeCardRow(12);
    auto *group = new QButtonGroup(card);
    const Language language = context.language;
    for (const QString &name : {chooseText(language, u"Mörkt"_s, u"Dark"_s),
                                chooseText(language, u"Ljust"_s, u"Light"_s), u"System"_s}) {
        QPushButton *button = makeThemeButton(name, group->buttons().isEmpty(), card);
        group->addButton(button);
        layout->addWidget(button);
    }
    layout->addStretch();
    columnOf(card)->addLayout(layout);
    QObject::connect(group, &QButtonGroup::buttonClicked, card,
                     [group, chosen = choices.theme](const QAbstractButton *clicked) {
                         for (QAbstractButton *button : group->buttons())
                             button->setStyleSheet(button == clicked ? style::themeSelected
                                                                     : style::themeUnselected);
                         chosen(clicked != group->buttons().at(1));
                     });
}

// The page stays in the language that it was built in, and so do the names and descriptions of the swatches.
void addSwatches(const SectionContext &context, const LookChoices &choices, QWidget *card)
{
    auto *layout = makeCardRow(10);
    QList<QPushButton *> swatches;
    for (const QStringView colour : swatchColours) {
        const QString name = swatchName(swatches.size(), context.language);
        swatches.append(makeSwatch(colour.toString(), name, context.language, card));
        layout->addWidget(swatches.last());
    }
    layout->addStretch();
    columnOf(card)->addLayout(layout);
    for (QPushButton *clicked : swatches)
        QObject::connect(clicked, &QPushButton::clicked, card,
                         [clicked, swatches, language = context.language, chosen = choices.accent] {
                             for (QPushButton *swatch : swatches)
                                 markSwatch(swatch, swatch == clicked, language);
                             chosen(clicked->property(accentProperty).toString());
                         });
}

} // namespace

QWidget *buildSettingsAppearance(const SectionContext &context, const LookChoices &choices)
{
    SettingsSection section({u"Utseende"_s, u"Appearance"_s}, context.language, context.parent);
    section.addHeader({u"TEMA"_s, u"THEME"_s});
    addThemeButtons(context, choices, section.addCard());
    section.addHeader({u"ACCENTFÄRG"_s, u"ACCENT COLOR"_s});
    addSwatches(context, choices, section.addCard());
    section.addSwitches(appearanceSwitches());
    return section.finish();
}

} // namespace tideloft::ui
