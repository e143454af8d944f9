// The table of commands, one line each.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/command_table.h"

#include "service/control/account_commands.h"
#include "service/control/database_commands.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

const QList<ControlCommand> &commandTable()
{
    static const QList<ControlCommand> table{
        {u"user list"_s, {}, u"List the accounts."_s, &listUsers},
        {u"user add"_s, u"NAME"_s, u"Make an account, whatever registration is."_s, &addUserByHand},
        {u"user disable"_s, u"NAME"_s, u"Sign a user out and refuse further sign-ins."_s, &disableUserByHand},
        {u"user enable"_s, u"NAME"_s, u"Let a disabled user sign in again."_s, &enableUserByHand},
        {u"user password"_s, u"NAME"_s, u"Give a user a new password and sign the user out."_s,
         &changePassword},
        {u"user delete"_s, u"NAME"_s, u"Delete an account for good; needs --yes."_s, &deleteUserByHand},
        {u"sessions end"_s, u"NAME"_s, u"Sign a user out everywhere."_s, &endSessionsByHand},
        {u"invite create"_s, u"NAME"_s, u"Invite somebody by the name of the coming account."_s,
         &createInvitation},
        {u"invite list"_s, {}, u"List the invitations that nobody has used."_s, &listInvitations},
        {u"invite revoke"_s, u"NAME"_s, u"Take an invitation back."_s, &revokeInvitation},
        {u"backup"_s, u"FILE"_s, u"Write a copy of the database to a new file."_s, &backUpDatabase},
        {u"restore"_s, u"FILE"_s, u"Put a copy in the place of the database; the service must be stopped."_s,
         &restoreDatabase},
        {u"copy"_s, u"FROM TO"_s,
         u"Copy everything to another database, or from one; no service may run. Needs --yes where TO holds accounts."_s,
         &copyDatabase},
        {u"check"_s, {}, u"Look through the whole database for damage."_s, &checkDatabase},
        {u"stats"_s, {}, u"Say how much the database holds."_s, &tellStatistics},
    };
    return table;
}

} // namespace tideloft::service
