// One document measures every text: making one and laying it out is most of what a label costs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/text_height.h"

#include "ui/texts/emoji_sequences.h"
#include "ui/widgets/emoji_formats.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTextDocument>
#include <QtMath>

namespace tideloft::ui
{

namespace
{

QTextDocument &measuringDocument()
{
    static QPointer<QTextDocument> document;
    if (!document) {
        document = new QTextDocument(QCoreApplication::instance()); // ends before the fonts do
        document->setUndoRedoEnabled(false);
        document->setDocumentMargin(0);
    }
    return *document;
}

// Whatever is set lays the document out, even if nothing is new.
void prepare(QTextDocument &document, const QFont &font, int width, QTextOption::WrapMode wrapping)
{
    if (document.defaultFont() != font)
        document.setDefaultFont(font);
    QTextOption option = document.defaultTextOption();
    if (option.wrapMode() != wrapping) {
        option.setWrapMode(wrapping);
        document.setDefaultTextOption(option);
    }
    if (!qFuzzyCompare(document.textWidth(), width))
        document.setTextWidth(width);
}

QSize measured(const QString &text, const QFont &font, int width, QTextOption::WrapMode wrapping)
{
    QTextDocument &document = measuringDocument();
    prepare(document, font, width, wrapping);
    document.setPlainText(text);
    if (asksForEmoji(text))
        formatEmoji(&document);
    const QSize size(qCeil(document.idealWidth()), qCeil(document.size().height()));
    document.clear(); // nobody's words stay behind
    return size;
}

} // namespace

int textHeight(const QString &text, const QFont &font, int width, QTextOption::WrapMode wrapping)
{
    return measured(text, font, width, wrapping).height();
}

QSize textSize(const QString &text, const QFont &font, int width)
{
    return measured(text, font, width, QTextOption::WordWrap);
}

} // namespace tideloft::ui
