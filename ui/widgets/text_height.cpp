// One document measures every text: making one and laying it out is most of what a label costs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/text_height.h"

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

} // namespace

int textHeight(const QString &text, const QFont &font, int width, QTextOption::WrapMode wrapping)
{
    QTextDocument &document = measuringDocument();
    document.setDefaultFont(font);
    QTextOption option = document.defaultTextOption();
    option.setWrapMode(wrapping);
    document.setDefaultTextOption(option);
    document.setTextWidth(width);
    document.setPlainText(text);
    const int height = qCeil(document.size().height());
    document.clear(); // nobody's words stay behind
    return height;
}

} // namespace tideloft::ui
