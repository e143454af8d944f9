// A text that is read from an item of the service when somebody first looks at it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QString>

#include <functional>
#include <memory>
#include <utility>

namespace tideloft::ui
{

/// What came of reading a message: the text to show, or an empty text and the reason.
struct OpenedText {
    OpenedText(QString plainText, QString failure = {})
        : text(std::move(plainText)),
          reason(std::move(failure))
    {
    }

    QString text;
    QString reason;
};

/// Reads one text of an item: that of its message, which an envelope has to be opened for, or its time.
using OpenMessage = std::function<OpenedText(const QJsonObject &item)>;

/// Reads what is shown of an item. One for all the messages of a reply.
using TextOpener = std::shared_ptr<const OpenMessage>;

/// Copies share what has been opened. Until then a text holds the service's item, which it needs no longer
/// afterwards.
class LazyText
{
public:
    /// An open text.
    LazyText(const QString &text = {}, const QString &reason = {});
    /// What OPENER reads in ITEM.
    LazyText(const QJsonObject &item, const TextOpener &opener);

    [[nodiscard]] bool isOpen() const { return !state || !state->opener; }
    /// Opens the text if it is not.
    [[nodiscard]] const QString &value() const { return opened().text; }
    /// Why the message could not be opened, in English; empty where it could.
    [[nodiscard]] const QString &reason() const { return opened().reason; }
    /// A text that was not opened reads TEXT from now on: nobody may open it any more.
    void close(const QString &text) const;

    /// Whether both are the same, or are open and read the same. Opens neither.
    bool operator==(const LazyText &other) const;
    [[nodiscard]] size_t hash(size_t seed) const;

private:
    struct State {
        OpenedText opened;
        QJsonObject item;
        TextOpener opener; ///< null once the text is open
    };

    const OpenedText &opened() const;

    std::shared_ptr<State> state; ///< null for an empty text
};

inline size_t qHash(const LazyText &text, size_t seed = 0)
{
    return text.hash(seed);
}

} // namespace tideloft::ui
