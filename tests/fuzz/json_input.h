// The bytes of a fuzz target as the JSON that a reply would be.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstddef>
#include <cstdint>

namespace tideloft::tests
{

/// The bytes themselves, not a copy: good as long as DATA is.
inline QByteArray rawInput(const uint8_t *data, size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
}

/// Empty when the bytes are no JSON, as for a reply.
inline QJsonDocument jsonInput(const uint8_t *data, size_t size)
{
    return QJsonDocument::fromJson(rawInput(data, size));
}

} // namespace tideloft::tests
