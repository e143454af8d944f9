// Reading a whole file with as few questions to the system as possible: it is done for every message.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tideloft::crypto
{

/// All bytes of the file at `path`. Nothing if it cannot be read or is no regular file: a pipe would be
/// waited for, and a device never ends. A link leads to its file.
std::optional<QByteArray> readRegularFile(const QString &path);

} // namespace tideloft::crypto
