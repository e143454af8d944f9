// Fuzzing of the chat history: from a reply to display records, to rows, to the plan that brings them on
// screen.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/open_message.h"
#include "tests/fuzz/row_checks.h"
#include "tests/fuzz/two_replies.h"
#include "ui/messages/history_cache.h"
#include "ui/messages/history_row_models.h"
#include "ui/messages/spoken_text.h"
#include "ui/messages/unreadable_message.h"

using namespace tideloft::tests;
using namespace tideloft::ui;
using namespace Qt::StringLiterals;

namespace
{

qsizetype objectCount(const QJsonArray &items)
{
    return std::count_if(items.begin(), items.end(), [](const QJsonValue &item) { return item.isObject(); });
}

// A text beyond all measure may be shown by its first part, but a few characters are never too much.
bool isFirstPart(const QString &shown, const QString &text)
{
    return text.size() > 6 && shown.size() > 1 && shown.size() <= 100'001 && shown.endsWith(u'…')
           && text.startsWith(QStringView(shown).chopped(1));
}

bool isShown(const QString &shown, const QString &text)
{
    return shown == text || isFirstPart(shown, text);
}

void checkText(const QJsonObject &item, const QString &shown)
{
    if (!tideloft::crypto::isEncrypted(item))
        require(isShown(shown, item.value(u"text"_s).toString()), "a plain message is shown as it came");
    else if (const QString opened = openedText(item); !opened.isEmpty())
        require(isShown(shown, opened), "an envelope is shown as it was opened");
    else
        require(shown.startsWith(u"🔒 "_s), "an envelope that does not open says so");
}

// KNOWN saw what came before: what it makes of ITEMS is what somebody would make who sees them first.
QList<DisplayRecord> checkedRecords(const QJsonArray &items, Language language, HistoryCache &known)
{
    const Reading reading{u"Alice"_s, openedText, shownAt(), language};
    const auto records = displayRecords(items, reading);
    require(records.size() == objectCount(items), "every object is a message");
    const auto again = known.records(items, reading, 0);
    for (qsizetype i = records.size(); i-- > 0;) { // the newest are opened first
        (void)records.at(i).text.value();
        (void)again.value(i).text.value();
    }
    require(again == records, "what is remembered changes nothing");
    auto record = records.begin();
    for (const QJsonValue &item : items) {
        if (!item.isObject())
            continue;
        checkText(item.toObject(), record->text.value());
        require(record->isMine == (record->from.toLower() == u"alice"_s), "own messages are known by name");
        ++record;
    }
    return records;
}

void checkMessage(const MessageRowModel &row, const DisplayRecord &record)
{
    require(row.text == record.text, "texts stay in order");
    require(row.sender.isEmpty() || (row.sender == record.from && !row.isMine), "a row names its sender");
    require(row.time.isEmpty() || row.time.size() == 5, "a time is HH:mm");
}

void checkRows(const QList<HistoryRow> &rows, const QList<DisplayRecord> &records)
{
    auto record = records.begin();
    bool afterSeparator = false;
    for (const HistoryRow &row : rows) {
        const auto *message = std::get_if<MessageRowModel>(&row);
        require(message || !afterSeparator, "a separator is followed by a message");
        afterSeparator = !message;
        (void)spokenText(row);
        if (!message)
            continue;
        require(record != records.end(), "no message is shown twice");
        checkMessage(*message, *record++);
    }
    require(!afterSeparator && record == records.end(), "every message is shown");
}

QList<HistoryRow> checkedRows(const QJsonArray &items, Language language, HistoryCache &known)
{
    const QList<DisplayRecord> records = checkedRecords(items, language, known);
    const QList<HistoryRow> rows = historyRows(records, shownAt().date(), language);
    checkRows(rows, records);
    return rows;
}

// Every other text is looked at before the next reply comes. Then the history is left.
void checkLeaving(const TwoReplies &replies)
{
    int opened = 0;
    const auto open = [&opened](const QJsonObject &item) {
        ++opened;
        return OpenedText(openedText(item));
    };
    const Reading reading{u"Alice"_s, open, shownAt(), replies.language};
    HistoryCache known;
    const auto before = known.records(replies.before, reading, 0);
    for (qsizetype i = 0; i < before.size(); i += 2)
        (void)before.at(i).text.value();
    const auto after = known.records(replies.after, reading, 0);
    QList<bool> areOpen;
    for (const DisplayRecord &record : after)
        areOpen.append(record.text.isOpen());
    known.forget();
    const int openedBefore = opened;
    for (qsizetype i = 0; i < after.size(); ++i)
        require(areOpen.at(i) || after.at(i).text.value() == unreadableText(replies.language),
                "what nobody has looked at stays closed");
    require(opened == openedBefore, "nothing is opened for who has left");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const TwoReplies replies = twoReplies(data, size);
    HistoryCache known;
    const QList<HistoryRow> shown = checkedRows(replies.before, replies.language, known);
    checkPlans(shown, checkedRows(replies.after, replies.language, known));
    checkLeaving(replies);
    return 0;
}
