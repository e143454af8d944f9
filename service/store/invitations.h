// Names that may be registered although registration is not open to everybody.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"

namespace tideloft::service
{

struct Invitation {
    QString name;         ///< the user name that it is for
    qint64 createdAt = 0; ///< ms since 1970
};

/// False when there is one for the name already. The name must be normalised, as for the others.
bool addInvitation(Database &database, const QString &name, qint64 now);

bool isInvited(Database &database, const QString &name);

/// False when there is none.
bool removeInvitation(Database &database, const QString &name);

/// By their names.
QList<Invitation> invitations(Database &database);

} // namespace tideloft::service
