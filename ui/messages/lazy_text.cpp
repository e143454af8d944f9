// Opening and comparing texts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/lazy_text.h"

#include "ui/texts/bounded_text.h"

#include <QHash>

namespace tideloft::ui
{

namespace
{

const OpenedText &emptyText()
{
    static const OpenedText empty{{}};
    return empty;
}

} // namespace

LazyText::LazyText(const QString &text, const QString &reason)
{
    if (!text.isEmpty() || !reason.isEmpty())
        state = std::make_shared<State>(State{{firstPart(text, messageLimits), reason}, {}, {}});
}

LazyText::LazyText(const QJsonObject &item, const TextOpener &opener)
    : state(std::make_shared<State>(State{emptyText(), item, opener}))
{
}

const OpenedText &LazyText::opened() const
{
    if (!state)
        return emptyText();
    if (const TextOpener opener = std::exchange(state->opener, {})) {
        const QJsonObject item = std::exchange(state->item, {});
        state->opened = (*opener)(item);
        state->opened.text = firstPart(state->opened.text, messageLimits);
    }
    return state->opened;
}

void LazyText::close(const QString &text) const
{
    if (isOpen())
        return;
    *state = {text, {}, {}};
}

bool LazyText::operator==(const LazyText &other) const
{
    if (state == other.state)
        return true;
    return isOpen() && other.isOpen() && value() == other.value() && reason() == other.reason();
}

// Two texts are equal only if they are one and the same or both open: either way their hashes agree.
size_t LazyText::hash(size_t seed) const
{
    return isOpen() ? ::qHash(value(), seed) : ::qHash(state.get(), seed);
}

} // namespace tideloft::ui
