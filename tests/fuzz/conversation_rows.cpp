// Fuzzing of the side: conversations, found users and servers from a reply to what is shown of them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/conversation_rows.h"
#include "tests/fuzz/row_checks.h"
#include "tests/fuzz/two_replies.h"
#include "ui/rail/server_models.h"
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

QList<ConversationRowModel> checkedRows(const QJsonArray &items, Language language)
{
    const auto rows = conversationRows(items, openedText, shownAt(), language);
    require(rows.size() <= items.size(), "an item is one row at most");
    for (const ConversationRowModel &row : rows) {
        checkName(row.peer);
        require(row.time.size() <= 7, "a time is HH:mm or a day of a month");
        require(spokenText(row).startsWith(row.peer), "a row is spoken from its name on");
    }
    return rows;
}

void checkFoundUsers(const QJsonArray &items)
{
    const QStringList names = foundUsers(items);
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
    const QList<ConversationRowModel> shown = checkedRows(replies.before, replies.language);
    checkPlans(shown, checkedRows(replies.after, replies.language));
    checkFoundUsers(replies.after);
    checkServers(replies.after);
    return 0;
}
