// The table of pictures: at most one of every user and one of every group, each under a random name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"

#include <optional>

namespace tideloft::service
{

struct Picture {
    QByteArray contentType;
    QByteArray content;
};

/// Puts the picture into the place of the user's or the group's last one, and returns its address.
QString replaceAvatar(Database &database, const User &user, const Picture &picture);
QString replaceIcon(Database &database, qint64 groupRow, const Picture &picture);

/// The address of the user's picture; empty when there is none.
QString avatarUrl(Database &database, const User &user);

/// The address of the picture with this name; empty for an empty name. It is a path on this service.
QString pictureUrl(const QString &name);

std::optional<Picture> findPicture(Database &database, const QString &name);

} // namespace tideloft::service
