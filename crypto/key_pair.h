// Making of this device's RSA key pair.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::crypto
{

/// Generates an RSA-2048 pair and writes both halves to their files, replacing earlier ones: the private half
/// as Base64 of DER PKCS#1, the public half as Base64 of DER SubjectPublicKeyInfo. Takes up to a second or
/// so. Nothing is written unless both halves could be made.
bool generateKeyPair(QString *error = nullptr);

} // namespace tideloft::crypto
