// What of the message line outlives the sending.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/message_line.h"

#include <QLineEdit>

#include <algorithm>

namespace tideloft::ui
{

QString restOfLine(const QString &line, const QString &sent)
{
    const auto begin = std::ranges::find_if_not(line, [](QChar character) { return character.isSpace(); });
    const QStringView typed = QStringView(line).sliced(begin - line.begin());
    if (sent.isEmpty() || !typed.startsWith(sent))
        return {};
    const QStringView rest = typed.sliced(sent.size());
    return rest.trimmed().isEmpty() ? QString() : rest.toString();
}

void clearSentText(QLineEdit *line, const QString &sent)
{
    const QString rest = restOfLine(line->text(), sent);
    if (rest.isEmpty()) {
        line->clear();
        return;
    }
    const qsizetype gone = line->text().size() - rest.size();
    const qsizetype cursor = line->cursorPosition() - gone;
    line->setSelection(0, static_cast<int>(gone));
    line->del();
    line->setCursorPosition(static_cast<int>(qMax(qsizetype{0}, cursor)));
}

} // namespace tideloft::ui
