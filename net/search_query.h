// How the text of a user search travels in a URL.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::net
{

/// Path and query that search for QUERY, whatever it holds: the value that the service decodes equals it.
QString userSearchPath(const QString &query);

} // namespace tideloft::net
