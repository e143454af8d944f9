// Entries of found users.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/sidebar/found_user_list.h"

#include "ui/lists/row_list.h"
#include "ui/texts/bounded_text.h"

#include <QListWidget>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

/// Whether the client's font of letters has all of TEXT: other fonts may be higher.
bool hasPlainLetters(const QString &text)
{
    return std::ranges::all_of(text, [](QChar character) { return character >= u' ' && character <= u'~'; });
}

QListWidgetItem *makeEntry(const QString &username)
{
    auto *entry = new QListWidgetItem(u"👤  "_s + inOneLine(username));
    entry->setData(Qt::UserRole, username);
    return entry;
}

/// Gives every entry of LIST its own height, and no width, so that none is wider than the list. Names in
/// plain letters are all as high as the first.
void fixSizes(QListWidget *list, const QStringList &usernames)
{
    const QSignalBlocker unheard(list->model());
    int plainHeight = 0;
    for (int i = 0; i < list->count(); ++i) {
        const bool isPlain = hasPlainLetters(usernames.at(i));
        const int height = isPlain && plainHeight > 0 ? plainHeight : list->sizeHintForRow(i);
        list->item(i)->setSizeHint({0, height});
        if (isPlain)
            plainHeight = height;
    }
}

} // namespace

void showFoundUsers(QListWidget *list, const QStringList &usernames)
{
    list->clear();
    insertEntries(list, 0, int(usernames.size()),
                  [&](int number) { return makeEntry(usernames.at(number)); });
    fixSizes(list, usernames);
    list->doItemsLayout();
}

} // namespace tideloft::ui
