// Uploads as the wire and the file system show them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/loopback_service.h"

namespace tideloft::tests
{

/// How an upload to PATH must look: the head without the toolkit's own headers, and the body, which holds
/// CONTENT as the form's PART, named after it and SUFFIX. The boundary is the one that REQUEST chose; empty
/// where it chose none.
QByteArray wantedUpload(const RecordedRequest &request, const QByteArray &path, const QByteArray &part,
                        const QByteArray &suffix, const QByteArray &content);
/// The same parts of REQUEST.
QByteArray sentUpload(const RecordedRequest &request);

/// Whether this program holds the file open that is, or was until it was removed, at PATH.
bool isOpen(const QString &path);
/// Waits until the client has handled the answer to its upload of PATH: the file stays open until then.
bool uploadIsOver(const QString &path);

} // namespace tideloft::tests
