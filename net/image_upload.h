// The multipart body in which a picture travels.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QHttpMultiPart>
#include <QString>

#include <memory>

namespace tideloft::net
{

/// The suffix of LOCALPATH in lower case, for a header's quoted text: without control characters, quotes and
/// backslashes, which could end the header or its value.
QString headerSuffix(const QString &localPath);

/// Form data (RFC 7578) with one part PARTNAME that streams the file at LOCALPATH, which the body owns. Null
/// when that is no regular file or cannot be opened.
std::unique_ptr<QHttpMultiPart> makeImageBody(const QString &partName, const QString &localPath);

} // namespace tideloft::net
