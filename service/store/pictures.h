// Pictures of users and of groups, under random names.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/users.h"

namespace tideloft::service
{

struct Picture {
    QByteArray contentType;
    QByteArray content;
};

/// Puts the picture, under a NAME that no picture ever had, into the place of the user's or the group's
/// last one.
void replaceAvatar(Database &database, const User &user, const QString &name, const Picture &picture);
void replaceIcon(Database &database, qint64 groupRow, const QString &name, const Picture &picture);

/// What the user's picture and the icons of the user's groups take together.
qint64 pictureBytes(Database &database, const User &user);

std::optional<Picture> findPicture(Database &database, const QString &name);

} // namespace tideloft::service
