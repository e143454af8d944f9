// Accounts, sessions and invitations, by hand. A service that runs meanwhile notices within a second.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/account_commands.h"

#include "service/control/call.h"
#include "service/control/opened_database.h"
#include "service/control/output.h"
#include "service/control/password_input.h"
#include "service/control/problem.h"
#include "service/secrets/password_hash.h"
#include "service/store/account_rules.h"
#include "service/store/accounts.h"
#include "service/store/invitations.h"

#include <QDateTime>

#include <chrono>
#include <thread>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

QString stateText(UserState state)
{
    if (state == UserState::Active)
        return u"active"_s;
    return state == UserState::Disabled ? u"disabled"_s : u"deleted"_s;
}

QString newName(const Call &call)
{
    const std::optional<QString> name = normalizedUserName(call.arguments.constFirst());
    if (!name)
        throw Problem(userNameRule().chopped(1)); // a problem has no full stop
    return *name;
}

User namedUser(Database &database, const Call &call)
{
    const QString &name = call.arguments.constFirst();
    if (const std::optional<User> user = findUser(database, name))
        return *user;
    if (findUserOrDeleted(database, name))
        throw Problem(u"The account %1 was deleted"_s.arg(name));
    throw Problem(u"There is no user %1"_s.arg(name));
}

void requireFree(Database &database, const QString &name)
{
    if (findUser(database, name))
        throw Problem(u"There is a user %1 already"_s.arg(name));
    if (findUserOrDeleted(database, name))
        throw Problem(u"The name %1 was that of a deleted account and is given to nobody else"_s.arg(name));
}

// A process that takes the database again and again at once leaves no turn to those who look for one now and
// then.
void letOthersWrite()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
}

} // namespace

void listUsers(const Call &call)
{
    OpenedDatabase database(call.database);
    QList<QStringList> rows{{u"NAME"_s, u"STATE"_s, u"MADE"_s, u"MESSAGES"_s, u"DEVICES"_s, u"SESSIONS"_s}};
    visitAccounts(*database, now(), [&rows](const Account &account) {
        rows.append({account.name, stateText(account.state), timeText(account.createdAt),
                     QString::number(account.messages), QString::number(account.devices),
                     QString::number(account.sessions)});
    });
    for (const QString &line : tableLines(rows))
        say(line);
}

void addUserByHand(const Call &call)
{
    const QString name = newName(call);
    OpenedDatabase database(call.database);
    requireFree(*database, name);
    const QByteArray hash = hashPassword(readNewPassword(), {});
    Transaction transaction(*database);
    if (!addUser(*database, name, hash, now()))
        requireFree(*database, name);
    removeInvitation(*database, name);
    transaction.commit();
    say(u"The account %1 is made."_s.arg(name));
}

void disableUserByHand(const Call &call)
{
    OpenedDatabase database(call.database);
    const User user = namedUser(*database, call);
    disableUser(*database, user);
    say(u"%1 is signed out and cannot sign in."_s.arg(user.name));
}

void enableUserByHand(const Call &call)
{
    OpenedDatabase database(call.database);
    const User user = namedUser(*database, call);
    enableUser(*database, user);
    say(u"%1 can sign in."_s.arg(user.name));
}

void changePassword(const Call &call)
{
    OpenedDatabase database(call.database);
    const User user = namedUser(*database, call);
    setPassword(*database, user, hashPassword(readNewPassword(), {}));
    say(u"%1 has another password and is signed out."_s.arg(user.name));
}

void deleteUserByHand(const Call &call)
{
    OpenedDatabase database(call.database);
    const User user = namedUser(*database, call);
    if (!call.confirmed)
        throw Problem(u"Deleting %1 cannot be undone. Repeat the command with --yes"_s.arg(user.name));
    deleteUser(*database, user, &letOthersWrite);
    say(u"The account %1 is deleted. What others got from it stays with them."_s.arg(user.name));
}

void endSessionsByHand(const Call &call)
{
    OpenedDatabase database(call.database);
    const User user = namedUser(*database, call);
    say(u"%1 is signed out of %2 sessions."_s.arg(user.name).arg(endSessions(*database, user)));
}

void createInvitation(const Call &call)
{
    const QString name = newName(call);
    OpenedDatabase database(call.database);
    Transaction transaction(*database);
    requireFree(*database, name);
    if (!addInvitation(*database, name, now()))
        throw Problem(u"%1 is invited already"_s.arg(name));
    transaction.commit();
    say(u"%1 is invited: whoever registers this name first has it."_s.arg(name));
}

void listInvitations(const Call &call)
{
    OpenedDatabase database(call.database);
    QList<QStringList> rows{{u"NAME"_s, u"INVITED"_s}};
    for (const Invitation &invitation : invitations(*database))
        rows.append({invitation.name, timeText(invitation.createdAt)});
    for (const QString &line : tableLines(rows))
        say(line);
}

void revokeInvitation(const Call &call)
{
    const QString name = newName(call);
    OpenedDatabase database(call.database);
    if (!removeInvitation(*database, name))
        throw Problem(u"%1 is not invited"_s.arg(name));
    say(u"%1 is invited no more."_s.arg(name));
}

} // namespace tideloft::service
