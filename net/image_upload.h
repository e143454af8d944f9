// The multipart body in which a picture travels.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QHttpMultiPart>
#include <QString>

#include <memory>

namespace tideloft::net
{

/// The suffix of LOCALPATH in lower case, fit to stand between a header's quotes: control characters,
/// quotes and backslashes, which would end the header or its value or hide its end, are left out.
QString headerSuffix(const QString &localPath);

/// Form data (RFC 7578) with one part PARTNAME that streams the file at LOCALPATH, which the body owns. Null
/// when that is no regular file or cannot be opened.
std::unique_ptr<QHttpMultiPart> makeImageBody(const QString &partName, const QString &localPath);

} // namespace tideloft::net
