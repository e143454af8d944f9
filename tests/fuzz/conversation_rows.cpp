// Fuzzing of the side: conversations, found users and servers from a reply to what is shown of them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/fuzz/row_checks.h"
#include "tests/fuzz/two_replies.h"
#include "ui/messages/conversation_cache.h"
#include "ui/messages/found_user_names.h"
#include "ui/messages/spoken_text.h"
#include "ui/rail/server_models.h"
#include "ui/texts/bounded_text.h"
#include "ui/texts/initials.h"

using namespace tideloft::tests;
using namespace tideloft::ui;
using namespace Qt::StringLiterals;

namespace
{

bool isWellFormed(const QString &text)
{
    return QString::fromUtf8(text.toUtf8()) == text;
}

void checkName(const QString &name)
{
    require(!name.isEmpty() && name == name.trimmed(), "a name is not blank and has no outer white space");
    for (const int count : {1, 2}) {
        const QString letters = initials(name, count);
        require(!letters.isEmpty(), "a name has an initial");
        require(!isWellFormed(name) || isWellFormed(letters), "initials cut no character in two");
    }
}

/// Reads ITEMS as the client does, which remembers the reply before, and afresh.
QList<ConversationRowModel> checkedRows(const QJsonArray &items, Language language, ConversationCache &cache)
{
    const Reading reading{u"alice"_s, openedText, shownAt(), language};
    const auto rows = cache.rows(items, reading, 1);
    const auto afresh = conversationRows(items, reading);
    require(rows.size() == afresh.size(), "a known reply has as many rows");
    for (qsizetype i = 0; i < rows.size(); ++i)
        require(spokenText(rows.at(i)) == spokenText(afresh.at(i)), "a known row reads as afresh");
    require(rows == afresh, "what is open and reads the same is equal");
    require(rows.size() <= items.size(), "an item is one row at most");
    for (const ConversationRowModel &row : rows) {
        checkName(row.peer);
        require(row.time.value().size() <= 7, "a time is HH:mm or a day of a month");
        require(spokenText(row).startsWith(inOneLine(row.peer)), "a row is spoken from its name on");
    }
    return rows;
}

void checkFoundUsers(const QJsonArray &items)
{
    const QStringList names = foundUserNames(items);
    require(names.size() <= items.size(), "an item is one user at most");
    for (const QString &name : names)
        checkName(name);
}

void checkServers(const QJsonArray &items)
{
    QSet<QString> seen;
    for (const ServerModel &server : serverModels(items)) {
        require(!server.groupId.isEmpty(), "a server has an identifier");
        if (seen.contains(server.groupId))
            continue;
        seen.insert(server.groupId);
        if (seen.size() <= 3)
            require(serverName(items, server.groupId) == server.name, "the first of an identifier names it");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const TwoReplies replies = twoReplies(data, size);
    ConversationCache cache;
    const QList<ConversationRowModel> shown = checkedRows(replies.before, replies.language, cache);
    checkPlans(shown, checkedRows(replies.after, replies.language, cache));
    checkFoundUsers(replies.after);
    checkServers(replies.after);
    return 0;
}
