// Rows of invitations.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/invitations.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

bool addInvitation(Database &database, const QString &name, qint64 now)
{
    const Rows added = database.run(u"INSERT INTO invitations (name, created_at) VALUES (?, ?)"
                                    " ON CONFLICT (name) DO NOTHING"_s,
                                    {name, now});
    return added.numRowsAffected() == 1;
}

bool isInvited(Database &database, const QString &name)
{
    return database.run(u"SELECT 1 FROM invitations WHERE name = ?"_s, {name}).next();
}

bool removeInvitation(Database &database, const QString &name)
{
    return database.run(u"DELETE FROM invitations WHERE name = ?"_s, {name}).numRowsAffected() == 1;
}

QList<Invitation> invitations(Database &database)
{
    Rows rows = database.run(u"SELECT name, created_at FROM invitations ORDER BY name"_s);
    QList<Invitation> all;
    while (rows.next())
        all.append({rows.value(0).toString(), rows.value(1).toLongLong()});
    return all;
}

} // namespace tideloft::service
