// Reading of tables in pieces, so that no more of them is held than a piece.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/copy.h"

#include <QCryptographicHash>

#include <functional>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

struct Table {
    QString name;
    QStringList keys; ///< columns that tell a row from the others; they come first in COLUMNS
    QStringList columns;
};

// What refers to rows of others comes behind them.
QList<Table> tables()
{
    const QString user = u"user_id"_s;
    const auto table = [](const QString &name, const QStringList &keys, const QString &others) {
        return Table{name, keys, keys + others.split(u' ')};
    };
    return {
        table(u"users"_s, {u"id"_s},
              u"name password bio created_at state message_count message_bytes conversations_version "
              u"groups_version"
              " last_position"_s),
        {u"name_ends"_s, {u"ending"_s, user}, {u"ending"_s, user}},
        table(u"sessions"_s, {u"token_hash"_s}, u"user_id expires_at"_s),
        table(u"device_keys"_s, {user, u"device_id"_s}, u"device_name public_key updated_at"_s),
        table(u"chat_groups"_s, {u"id"_s}, u"public_id name description created_at"_s),
        {u"group_members"_s, {user, u"group_id"_s}, {user, u"group_id"_s}},
        table(u"pictures"_s, {u"id"_s}, u"name user_id group_id content_type content"_s),
        table(u"messages"_s, {u"id"_s},
              u"sender_id recipient_id text iv recipient_keys sender_keys encrypted created_at position"_s),
        table(u"conversations"_s, {user, u"peer_id"_s}, u"last_message_id version begun"_s),
        table(u"invitations"_s, {u"name"_s}, u"created_at"_s),
        table(u"facts"_s, {u"name"_s}, u"value"_s),
    };
}

QString marks(qsizetype count)
{
    return QStringList(count, u"?"_s).join(u", "_s);
}

using Visitor = std::function<void(const QVariantList &row)>;

// One piece after the row with the keys AFTER; from the beginning when there are none. Returns the last
// row's.
QVariantList visitPiece(Database &database, const Table &table, const QVariantList &after,
                        const Visitor &visit)
{
    constexpr int pieceSize = 200;
    const QString keys = table.keys.join(u", "_s);
    const QString behind =
        after.isEmpty() ? QString() : u" WHERE (%1) > (%2)"_s.arg(keys, marks(table.keys.size()));
    Rows rows = database.run(u"SELECT %1 FROM %2%3 ORDER BY %4 LIMIT ?"_s.arg(table.columns.join(u", "_s),
                                                                              table.name, behind, keys),
                             after + QVariantList{pieceSize});
    QVariantList last;
    while (rows.next()) {
        QVariantList row;
        for (int i = 0; i < table.columns.size(); ++i)
            row << (rows.value(i).isNull() ? QVariant() : rows.value(i));
        visit(row);
        last = row.first(table.keys.size());
    }
    return last;
}

void visitTable(Database &database, const Table &table, const Visitor &visit)
{
    QVariantList last;
    do {
        last = visitPiece(database, table, last, visit);
    } while (!last.isEmpty());
}

void addTo(QCryptographicHash &hash, const QVariant &value)
{
    const QByteArray bytes = value.toByteArray();
    hash.addData(value.isNull() ? QByteArray("null;") : QByteArray::number(bytes.size()) + ':');
    hash.addData(bytes);
}

/// How many rows there are, and a number that no other content has.
struct Content {
    qint64 rows = 0;
    QByteArray digest;
    bool operator==(const Content &other) const = default;
};

Content contentOf(Database &database, const Table &table)
{
    Content content;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    visitTable(database, table, [&](const QVariantList &row) {
        ++content.rows;
        for (const QVariant &value : row)
            addTo(hash, value);
    });
    content.digest = hash.result();
    return content;
}

void copyTable(Database &source, Database &target, const Table &table)
{
    const QString insert = u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table.name, table.columns.join(u", "_s),
                                                                    marks(table.columns.size()));
    visitTable(source, table, [&](const QVariantList &row) { target.run(insert, row); });
    if (table.keys == QStringList{u"id"_s})
        target.engine().numberFrom(target, table.name,
                                   target.number(u"SELECT max(id) FROM %1"_s.arg(table.name)) + 1);
}

} // namespace

bool holdsSomething(Database &database)
{
    return database.run(u"SELECT 1 FROM users LIMIT 1"_s).next();
}

QList<CopiedTable> copyEverything(Database &source, Database &target)
{
    QList<CopiedTable> copied;
    const QList<Table> all = tables();
    for (Database *database : {&source, &target})
        database->engine().allowLongWork(*database);
    Transaction transaction(target);
    for (auto table = all.crbegin(); table != all.crend(); ++table)
        target.run(u"DELETE FROM %1"_s.arg(table->name));
    for (const Table &table : all)
        copyTable(source, target, table);
    for (const Table &table : all) {
        const Content content = contentOf(source, table);
        if (content != contentOf(target, table))
            throw StorageError((u"The two databases differ in the table "_s + table.name).toStdString());
        copied.append({table.name, content.rows});
    }
    transaction.commit();
    return copied;
}

} // namespace tideloft::service
