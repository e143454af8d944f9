// The key pair of this device: made when it is missing, and kept in its two files.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/keys/key_pair.h"

#include <QString>

namespace tideloft::crypto
{

/// Writes both halves to their files, replacing earlier ones.
bool writeKeyPair(const KeyPair &pair, QString *error = nullptr);

/// Generates an RSA-2048 pair and writes both halves to their files, replacing earlier ones: the private half
/// as Base64 of DER PKCS#1, the public half as Base64 of DER SubjectPublicKeyInfo. Takes up to a second or
/// so. Nothing is written unless both halves could be made.
bool generateKeyPair(QString *error = nullptr);

/// True when both files exist, whatever they hold, or a new pair could be written. One missing file replaces
/// the whole pair: messages wrapped for the old key can then no longer be opened on this device. Files that
/// others may read become their owner's alone. Waits for another copy of the program that is here at the same
/// moment, for two seconds at most.
bool ensureKeyPair(QString *error = nullptr);

} // namespace tideloft::crypto
