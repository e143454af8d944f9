// Encoding of a user search.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/search_query.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

QString userSearchPath(const QString &query)
{
    // A query item set on a URL keeps "+", which a form decoder reads as a blank, and takes "%41" for "A".
    // Encoded in full first, nothing is left that the URL could understand differently.
    return u"/api/users/search?q="_s + QString::fromLatin1(QUrl::toPercentEncoding(query));
}

} // namespace tideloft::net
