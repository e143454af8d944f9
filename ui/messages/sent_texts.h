// The texts of messages that are on their way to the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace tideloft::ui
{

/// Replies do not say which message they are for. They come in the order of the messages, or nearly so.
class SentTexts
{
public:
    void append(const QString &text) { texts.append(text); }
    void clear() { texts.clear(); }

    /// The text of the message that has arrived; empty if none was on its way. This text is removed from the
    /// beginning of the field, so it is also removed from the beginning of the later texts, which were read
    /// from the same field.
    QString takeArrived();
    /// A message has failed: its text stays in the field.
    void dropFailed();

private:
    QStringList texts;
};

} // namespace tideloft::ui
