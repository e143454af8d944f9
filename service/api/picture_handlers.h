// Taking pictures in, and giving them out.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"
#include "service/api/router.h"
#include "service/store/pictures.h"

namespace tideloft::service
{

/// Largest picture, in bytes.
constexpr qsizetype maximumPictureBytes = qsizetype{5} * 1024 * 1024;

/// The picture that the form of the request carries in the field NAME. Throws a Refusal: 400 when the form
/// is broken, the field is missing or empty, 403 when a page of another origin sent it, 413 when the picture
/// is too large, 415 when it is none.
Picture uploadedPicture(const Request &request, QByteArrayView name);

/// To be called in the change that has stored a picture: throws a Refusal with 409, which undoes the change,
/// when the user's pictures take too much room now.
void requireRoomForPictures(const ApiContext &context, Database &database, const User &user);

/// A random name that no picture has had.
QString newPictureName();

/// POST /api/profile/avatar/upload and GET /pictures/{name}. CONTEXT must outlive the router.
void addPictureRoutes(Router &router, ApiContext &context);

} // namespace tideloft::service
