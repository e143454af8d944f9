// Forms with files in them, as browsers and this system's client send them (RFC 7578).
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/exchange.h"

namespace tideloft::service
{

/// Most parts of a form, and the most bytes that the header of one may have.
constexpr int maximumFormParts = 16;
constexpr qsizetype maximumPartHeader = 4096;

/// The content of the field NAME. Throws a Refusal: 415 when the request declares that its body is no form,
/// 400 when the form is broken anywhere or the field is not in it exactly once. File names and declared types
/// are not looked at.
QByteArray formField(const Request &request, QByteArrayView name);

} // namespace tideloft::service
