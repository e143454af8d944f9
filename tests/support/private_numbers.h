// The numbers of a private key that nobody else may know.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace tideloft::tests
{

/// Exponent, primes, and what follows from them, of the RSA key whose DER encoding is DER: the most
/// significant byte first, as encodings have them. The caller wipes them.
QByteArrayList privateNumbers(const QByteArray &der);

} // namespace tideloft::tests
