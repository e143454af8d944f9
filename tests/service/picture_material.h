// Pictures of any size, as far as their first bytes go, and the forms that carry them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tideloft::tests
{

inline const QByteArray boundary = "boundary_.oOo._x/+=";
inline const QByteArray formType = "multipart/form-data; boundary=\"" + boundary + '"';
inline const QByteArray pngBegin = "\x89PNG\r\n\x1a\n";

inline QByteArray png(qsizetype size = 100, char filling = 'p')
{
    return pngBegin + QByteArray(size - pngBegin.size(), filling);
}

/// A part as the client writes it, from its delimiter on.
inline QByteArray filePart(const QByteArray &field, const QByteArray &content)
{
    return "--" + boundary + "\r\nContent-Type: image/png\r\nContent-Disposition: form-data; name=\"" + field
           + "\"; filename=\"" + field + ".png\"\r\n\r\n" + content + "\r\n";
}

inline QByteArray form(const QByteArray &parts)
{
    return parts + "--" + boundary + "--\r\n";
}

} // namespace tideloft::tests
