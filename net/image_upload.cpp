// Building of the multipart body of a picture.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/image_upload.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

QString headerSuffix(const QString &localPath)
{
    QString suffix = QFileInfo(localPath).suffix().toLower();
    suffix.removeIf([](QChar character) {
        return character == u'"' || character == u'\\' || character.category() == QChar::Other_Control;
    });
    return suffix;
}

std::unique_ptr<QHttpMultiPart> makeImageBody(const QString &partName, const QString &localPath)
{
    auto body = std::make_unique<QHttpMultiPart>(QHttpMultiPart::FormDataType);
    auto *file = new QFile(localPath, body.get());
    // Opening a pipe would wait for a writer, and a device may never end.
    if (!QFileInfo(localPath).isFile() || !file->open(QIODevice::ReadOnly))
        return nullptr;
    const QString suffix = headerSuffix(localPath);
    QHttpPart part;
    part.setHeader(QNetworkRequest::ContentDispositionHeader,
                   u"form-data; name=\"%1\"; filename=\"%1.%2\""_s.arg(partName, suffix));
    part.setHeader(QNetworkRequest::ContentTypeHeader, QString(u"image/"_s + suffix));
    part.setBodyDevice(file);
    body->append(part);
    return body;
}

} // namespace tideloft::net
