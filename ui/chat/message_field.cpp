// The key that sends, and what of the message field outlives the sending.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/message_field.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

namespace tideloft::ui
{

bool isSendKey(const QKeyEvent &press)
{
    return press.key() == Qt::Key_Return && !press.modifiers().testFlag(Qt::ShiftModifier);
}

QString textBehindSent(const QString &written, const QString &sent)
{
    const auto *const begin =
        std::ranges::find_if_not(written, [](QChar character) { return character.isSpace(); });
    const QStringView typed = QStringView(written).sliced(begin - written.begin());
    if (sent.isEmpty() || !typed.startsWith(sent))
        return {};
    const QStringView rest = typed.sliced(sent.size());
    return rest.trimmed().isEmpty() ? QString() : rest.toString();
}

void clearSentText(QLineEdit *field, const QString &sent)
{
    const QString rest = textBehindSent(field->text(), sent);
    if (rest.isEmpty()) {
        field->clear();
        return;
    }
    const qsizetype gone = field->text().size() - rest.size();
    const qsizetype cursor = field->cursorPosition() - gone;
    field->setSelection(0, static_cast<int>(gone));
    field->del();
    field->setCursorPosition(static_cast<int>(qMax(qsizetype{0}, cursor)));
}

} // namespace tideloft::ui
