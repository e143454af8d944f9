// The Appearance section, and the theme and accent that it chooses.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/settings/settings_rows.h"
#include "ui/settings/settings_section.h"
#include "ui/style/accent.h"
#include "ui/style/settings_styles.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QPushButton>
#include <QStackedWidget>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

constexpr char accentProperty[] = "accentColor";

QString swatchName(qsizetype index, Language language)
{
    static const QList<Words> names{{u"Blå"_s, u"Blue"_s},   {u"Violett"_s, u"Violet"_s},
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

QHBoxLayout *makeCardLine(int spacing)
{
    auto *line = new QHBoxLayout;
    line->setContentsMargins(16, 12, 16, 12);
    line->setSpacing(spacing);
    return line;
}

} // namespace

QWidget *MainWindow::buildSettingsAppearance()
{
    SettingsSection section({u"Utseende"_s, u"Appearance"_s}, language(), settingsStack);
    section.addHeader({u"TEMA"_s, u"THEME"_s});
    addThemeButtons(section.addCard());
    section.addHeader({u"ACCENTFÄRG"_s, u"ACCENT COLOR"_s});
    addSwatches(section.addCard());
    section.addSwitches(appearanceSwitches());
    return section.finish();
}

void MainWindow::addThemeButtons(QWidget *card)
{
    auto *line = makeCardLine(12);
    auto *group = new QButtonGroup(card);
    QList<QPushButton *> buttons;
    for (const QString &name : {text(u"Mörkt"_s, u"Dark"_s), text(u"Ljust"_s, u"Light"_s), u"System"_s}) {
        auto *button = makeButton(name, card);
        button->setCheckable(true);
        button->setChecked(buttons.isEmpty());
        button->setStyleSheet(buttons.isEmpty() ? style::themeSelected : style::themeUnselected);
        group->addButton(button);
        line->addWidget(button);
        buttons.append(button);
    }
    line->addStretch();
    columnOf(card)->addLayout(line);
    for (int i = 0; i < buttons.size(); ++i)
        connect(buttons.at(i), &QPushButton::clicked, this, [this, buttons, i] {
            chooseTheme(buttons, i, style::themeSelected, style::themeUnselected);
        });
}

// "System" means dark: the desktop is not asked.
void MainWindow::chooseTheme(const QList<QPushButton *> &buttons, int index, const QString &selected,
                             const QString &unselected)
{
    for (int i = 0; i < buttons.size(); ++i)
        buttons.at(i)->setStyleSheet(i == index ? selected : unselected);
    darkTheme = index != 1;
    applyTheme();
}

void MainWindow::addSwatches(QWidget *card)
{
    auto *line = makeCardLine(10);
    QList<QPushButton *> swatches;
    for (const QStringView colour : swatchColours) {
        const QString name = swatchName(swatches.size(), language());
        swatches.append(makeSwatch(colour.toString(), name, language(), card));
        line->addWidget(swatches.last());
    }
    line->addStretch();
    columnOf(card)->addLayout(line);
    // The page stays in the language that it was built in, and with it what is told of the swatches.
    for (QPushButton *swatch : swatches)
        connect(swatch, &QPushButton::clicked, this,
                [this, swatch, swatches, told = language()] { chooseSwatch(swatch, swatches, told); });
}

void MainWindow::chooseSwatch(const QPushButton *clicked, const QList<QPushButton *> &swatches, Language told)
{
    for (QPushButton *swatch : swatches)
        markSwatch(swatch, swatch == clicked, told);
    setAccentColor(clicked->property(accentProperty).toString());
}

void MainWindow::setAccentColor(const QString &colour)
{
    currentAccent = colour;
    applyTheme();
}

} // namespace tideloft::ui
