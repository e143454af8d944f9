// Drawing symbols.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/style/symbol_font.h"

#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui::style
{

namespace
{

/// The font families of the style sheets, with that of symbols in front.
QStringList symbolFamilies()
{
    return {symbolFamily(), u"Segoe UI"_s, u"system-ui"_s, u"sans-serif"_s};
}

/// Changes only the families: the style sheet has set size and colour before a text is drawn.
class SymbolStyle : public QProxyStyle
{
public:
    void drawItemText(QPainter *painter, const QRect &place, int flags, const QPalette &colours, bool enabled,
                      const QString &text, QPalette::ColorRole role) const override
    {
        const QFont usual = painter->font();
        QFont font = usual;
        font.setFamilies(symbolFamilies());
        painter->setFont(font);
        QProxyStyle::drawItemText(painter, place, flags, colours, enabled, text, role);
        painter->setFont(usual);
    }
};

} // namespace

QString symbolFamily()
{
    return u"TideLoft Symbols"_s;
}

QFont symbolFont()
{
    QFont font;
    font.setFamilies(symbolFamilies());
    return font;
}

void drawAsSymbol(QPushButton *button)
{
    auto *look = new SymbolStyle;
    look->setParent(button);
    button->setStyle(look);
}

} // namespace tideloft::ui::style
