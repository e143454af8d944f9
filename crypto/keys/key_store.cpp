// Reading and writing of the two key files.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"

#include "crypto/cipher/failure.h"
#include "crypto/cipher/secret_bytes.h"
#include "local_files/permissions.h"
#include "local_files/regular_file.h"

#include <QDir>
#include <QStandardPaths>

#include <utility>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

namespace
{

const QString privateKeyFile = u"chat_private_key.b64"_s;
const QString publicKeyFile = u"chat_public_key.b64"_s;

QString dataLocation()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

// In the data directory. Empty if there is no data directory; the reason is not reported.
QString pathOf(const QString &fileName)
{
    const QString directory = appDataDir();
    return directory.isEmpty() ? QString() : QDir(directory).filePath(fileName);
}

bool exists(const QString &path)
{
    return !path.isEmpty() && local_files::somethingIsAt(path);
}

QString withoutPath(const QString &half)
{
    return u"%1 key path is empty."_s.arg(half);
}

// The texts for one half differ only in its name: "Private" or "Public". An empty text fails before the path
// is asked for, because asking makes the data directory.
bool writeKeyFile(const QString &half, const QString &base64, const QString &fileName, QString *error)
{
    const SecretBytes text(QStringView(base64).trimmed().toUtf8());
    if (text.isEmpty())
        return fail(error, u"%1 key is empty."_s.arg(half));
    const QString path = pathOf(fileName);
    if (path.isEmpty())
        return failUnlessExplained(error, withoutPath(half));
    if (!local_files::writeRegularFile(path, text.view()))
        return fail(error, u"Could not write %1 key file: %2"_s.arg(half.toLower(), path));
    return true;
}

// A file that opens is in a directory that exists. The directory is looked for only if no file opens.
QByteArray readKeyFile(const QString &half, const QString &fileName, QString *error)
{
    const QString location = dataLocation();
    if (auto bytes =
            location.isEmpty() ? std::nullopt : local_files::readRegularFile(location + u'/' + fileName))
        return std::move(*bytes).trimmed();
    const QString path = pathOf(fileName);
    if (path.isEmpty())
        return failUnlessExplained(error, withoutPath(half));
    return readTrimmedFile(path, error);
}

} // namespace

QString makeDataDir(const QString &location, QString *error)
{
    if (location.isEmpty())
        return fail(error, u"AppData path is empty."_s);
    const QDir directory(location);
    if (!directory.exists() && !local_files::makeForOwner(location))
        return fail(error, u"Could not create app data directory: %1"_s.arg(location));
    local_files::keepDirectoryForOwner(location);
    return directory.absolutePath();
}

QString appDataDir(QString *error)
{
    return makeDataDir(dataLocation(), error);
}

KeyFiles keyFilesIn(const QString &directory)
{
    return {QDir(directory).filePath(privateKeyFile), QDir(directory).filePath(publicKeyFile)};
}

QString privateKeyPath()
{
    return pathOf(privateKeyFile);
}

QString publicKeyPath()
{
    return pathOf(publicKeyFile);
}

bool privateKeyExists()
{
    return exists(privateKeyPath());
}

bool publicKeyExists()
{
    return exists(publicKeyPath());
}

bool writePrivateKeyFile(const QString &base64, QString *error)
{
    return writeKeyFile(u"Private"_s, base64, privateKeyFile, error);
}

bool writePublicKeyFile(const QString &base64, QString *error)
{
    return writeKeyFile(u"Public"_s, base64, publicKeyFile, error);
}

QByteArray readTrimmedFile(const QString &path, QString *error)
{
    auto bytes = local_files::readRegularFile(path);
    if (!bytes)
        return fail(error, u"Could not open file: %1"_s.arg(path));
    return std::move(*bytes).trimmed();
}

QString readPrivateKeyFile(QString *error)
{
    const SecretBytes text(readPrivateKeyBytes(error));
    return QString::fromUtf8(text.view());
}

QByteArray readPrivateKeyBytes(QString *error)
{
    return readKeyFile(u"Private"_s, privateKeyFile, error);
}

QString readPublicKeyFile(QString *error)
{
    return QString::fromUtf8(readKeyFile(u"Public"_s, publicKeyFile, error));
}

} // namespace tideloft::crypto
