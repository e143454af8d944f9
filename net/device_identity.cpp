// Reading and making of the device identifier.
#include "net/device_identity.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

namespace
{

constexpr qint64 longestFile = qint64{64} * 1024;

QString readDeviceId(const QString &path)
{
    QFile file(path);
    // Opening a pipe would wait for a writer that never comes, and a device may never end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.read(longestFile)).trimmed();
}

void writeDeviceId(const QString &path, const QString &deviceId)
{
    const QFileInfo place(path);
    if (place.exists() && !place.isFile())
        return;
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate, QFile::ReadOwner | QFile::WriteOwner))
        file.write(deviceId.toUtf8());
}

} // namespace

QString loadOrCreateDeviceId(const QString &directory)
{
    QDir().mkpath(directory);
    const QString path = QDir(directory).filePath(u"device_id.txt"_s);
    if (const QString known = readDeviceId(path); !known.isEmpty())
        return known;
    const QString fresh = QUuid::createUuid().toString(QUuid::WithoutBraces);
    writeDeviceId(path, fresh);
    return fresh;
}

} // namespace tideloft::net
