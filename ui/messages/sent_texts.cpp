// Following the texts while their replies come.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/sent_texts.h"

namespace tideloft::ui
{

QString SentTexts::takeArrived()
{
    if (texts.isEmpty())
        return {};
    const QString arrived = texts.takeFirst();
    for (QString &later : texts) {
        if (later.startsWith(arrived))
            later = later.sliced(arrived.size()).trimmed();
    }
    return arrived;
}

void SentTexts::dropFailed()
{
    if (!texts.isEmpty())
        texts.removeFirst();
}

} // namespace tideloft::ui
