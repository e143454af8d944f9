// Commands about accounts, sessions and invitations.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::service
{

struct Call;

// Each does what the table of commands says, and throws Problem or StorageError when it cannot.
void listUsers(const Call &call);
void addUserByHand(const Call &call);
void disableUserByHand(const Call &call);
void enableUserByHand(const Call &call);
void changePassword(const Call &call);
void deleteUserByHand(const Call &call);
void endSessionsByHand(const Call &call);

void createInvitation(const Call &call);
void listInvitations(const Call &call);
void revokeInvitation(const Call &call);

} // namespace tideloft::service
