// The signatures that pictures begin with.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/picture_type.h"

namespace tideloft::service
{

namespace
{

// A RIFF file (RFC 9649, section 2.1): its size stands between the two names.
bool isWebP(QByteArrayView content)
{
    return content.startsWith("RIFF") && content.size() >= 12 && content.sliced(8).startsWith("WEBP");
}

} // namespace

QByteArray pictureType(QByteArrayView content)
{
    if (content.startsWith("\x89PNG\r\n\x1a\n"))
        return "image/png";
    if (content.startsWith("\xff\xd8\xff"))
        return "image/jpeg";
    if (content.startsWith("GIF87a") || content.startsWith("GIF89a"))
        return "image/gif";
    return isWebP(content) ? "image/webp" : QByteArray();
}

} // namespace tideloft::service
