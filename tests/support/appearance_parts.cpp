// Finding the buttons of the Appearance section and reading their marks.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/appearance_parts.h"

#include "ui/style/style_sheets.h"

#include <QLayout>
#include <QPushButton>
#include <QTest>

namespace tideloft::tests
{

namespace
{

template <typename Marked, typename Plain>
QList<int> marked(const QList<QPushButton *> &buttons, Marked markedStyle, Plain plainStyle)
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

} // namespace

QString expectedSheet(bool dark, const QString &accent)
{
    QString sheet = dark ? ui::darkStyleSheet() : ui::lightStyleSheet();
    if (accent == colours.first())
        return sheet;
    return sheet.replace(u"#3b8beb"_s, accent).replace(u"#2563eb"_s, accent);
}

AppearanceParts::AppearanceParts(const SettingsParts &settings) : section(settings.content(Appearance))
{
    settings.clickRow(Appearance);
}

QWidget *AppearanceParts::card(int index) const
{
    return section->layout()->itemAt(2 + 2 * index)->widget();
}

QList<QPushButton *> AppearanceParts::buttons(int index) const
{
    QList<QPushButton *> found;
    const QLayout *line = card(index)->layout()->itemAt(0)->layout();
    for (int i = 0; i < line->count(); ++i) {
        if (auto *button = qobject_cast<QPushButton *>(line->itemAt(i)->widget()))
            found.append(button);
    }
    return found;
}

void AppearanceParts::chooseTheme(int index) const
{
    QTest::mouseClick(buttons(0).at(index), Qt::LeftButton);
}

void AppearanceParts::chooseAccent(const QString &colour) const
{
    QTest::mouseClick(buttons(1).at(colours.indexOf(colour)), Qt::LeftButton);
}

QList<int> AppearanceParts::markedThemes() const
{
    return marked(
        buttons(0), [](int) { return themeStyle(true); }, [](int) { return themeStyle(false); });
}

QList<int> AppearanceParts::markedSwatches() const
{
    return marked(
        buttons(1), [](int i) { return swatchStyle(colours.at(i), true); },
        [](int i) { return swatchStyle(colours.at(i), false); });
}

} // namespace tideloft::tests
