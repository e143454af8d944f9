// A fresh database with three users, and short ways to put messages into it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/history.h"
#include "service/store/messages.h"
#include "service/store/schema.h"
#include "tests/service/chosen_storage.h"

#include <QTemporaryDir>

#include <limits>

namespace tideloft::tests
{

class StoreFixture
{
public:
    StoreFixture() : database(place())
    {
        alice = add(QStringLiteral("alice"));
        bob = add(QStringLiteral("bob"));
        carol = add(QStringLiteral("carol"));
    }

    QString file() const { return path(QStringLiteral("test.sqlite")); }
    QString place() const { return chosen.place(file()); }
    QString path(const QString &name) const { return folder.filePath(name); }

    service::User add(const QString &name)
    {
        service::addUser(database, name, "hash", 1);
        return service::findUser(database, name).value();
    }

    void send(const service::User &from, const service::User &to, const QString &text, qint64 at)
    {
        constexpr qint64 any = std::numeric_limits<qint64>::max();
        const QString none = QStringLiteral("[]");
        service::storeMessage(database, from, to, {text, {}, none, none, false, at}, {any, any, any});
    }

    /// The texts of a history, oldest first, as one word each.
    QByteArray history(const service::User &user, const service::User &peer)
    {
        QByteArrayList texts;
        service::visitHistory(database, user, peer, 1000, [&texts](const service::MessageRow &row) {
            texts.prepend(row.text);
            return true;
        });
        return texts.join(' ');
    }

    /// "peer:text" of each conversation.
    QByteArray conversations(const service::User &user)
    {
        QByteArrayList items;
        service::visitConversations(database, user, 1000, [&items](const service::MessageRow &row) {
            items << row.peer.toUtf8() + ':' + row.text;
            return true;
        });
        return items.join(' ');
    }

private:
    QTemporaryDir folder;
    const ChosenStorage chosen;

public:
    service::Store database;
    service::User alice;
    service::User bob;
    service::User carol;
};

} // namespace tideloft::tests
