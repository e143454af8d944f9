// The shapes in which the service lists device keys, made into the one that the window reads.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>

namespace tideloft::net
{

/// Keeps the objects of SOURCE, in order, and moves a key that stands under `publicKey` to `publicKeyBase64`.
/// An object that has `publicKeyBase64` already, or neither, stays as it is.
QJsonArray normaliseDeviceKeys(const QJsonArray &source);

} // namespace tideloft::net
