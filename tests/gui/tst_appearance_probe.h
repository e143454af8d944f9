// What tests of theme and accent share: the Appearance section, and the styles that are expected there.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gui/tst_appearance_styles.h"
#include "tests/gui/tst_settings_probe.h"
#include "ui/style/style_sheets.h"

#include <QLayout>
#include <QPushButton>
#include <QTest>

namespace tideloft::tests
{

using namespace Qt::StringLiterals;

/// The sheet that must be installed; what a reader would do by hand.
inline QString expectedSheet(bool dark, const QString &accent)
{
    QString sheet = dark ? ui::darkStyleSheet() : ui::lightStyleSheet();
    if (accent == colours.first())
        return sheet;
    return sheet.replace(u"#3b8beb"_s, accent).replace(u"#2563eb"_s, accent);
}

/// The signed-in window that shows the Appearance section.
class AppearanceProbe : public SettingsProbe
{
public:
    explicit AppearanceProbe(ui::Language language = ui::Language::English) : SettingsProbe(language)
    {
        openSettings();
        clickRow(Appearance);
    }

    /// The buttons of the first card (0: themes) or the second (1: swatches).
    QList<QPushButton *> buttons(int card) const
    {
        const QWidget *owner = content(Appearance)->layout()->itemAt(2 + 2 * card)->widget();
        QList<QPushButton *> found;
        const QLayout *line = owner->layout()->itemAt(0)->layout();
        for (int i = 0; i < line->count(); ++i) {
            if (auto *button = qobject_cast<QPushButton *>(line->itemAt(i)->widget()))
                found.append(button);
        }
        return found;
    }

    void chooseTheme(int index) const { QTest::mouseClick(buttons(0).at(index), Qt::LeftButton); }
    void chooseAccent(const QString &colour) const
    {
        QTest::mouseClick(buttons(1).at(colours.indexOf(colour)), Qt::LeftButton);
    }
    QString sheet() const { return window->styleSheet(); }

    /// The indexes of the buttons or swatches that carry the mark; -1 for one that has another style.
    QList<int> markedThemes() const
    {
        return marked(
            buttons(0), [](int) { return themeStyle(true); }, [](int) { return themeStyle(false); });
    }
    QList<int> markedSwatches() const
    {
        return marked(
            buttons(1), [](int i) { return swatchStyle(colours.at(i), true); },
            [](int i) { return swatchStyle(colours.at(i), false); });
    }

private:
    template <typename Marked, typename Plain>
    static QList<int> marked(const QList<QPushButton *> &buttons, Marked markedStyle, Plain plainStyle)
    {
        QList<int> found;
        for (int i = 0; i < buttons.size(); ++i) {
            const QString style = buttons.at(i)->styleSheet();
            if (style == markedStyle(i))
                found.append(i);
            else if (style != plainStyle(i))
                found.append(-1);
        }
        return found;
    }
};

} // namespace tideloft::tests
