// The checks of a picture file.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/picture_file.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

constexpr qint64 largestPicture = 5242880;

// Opening a pipe would wait for its other end, and a device never ends: only a regular file is opened.
bool opens(const QString &path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly);
}

} // namespace

QString pictureFilter(Language language)
{
    return chooseText(language, u"Bilder (*.png *.jpg *.jpeg *.gif *.webp)"_s,
                      u"Images (*.png *.jpg *.jpeg *.gif *.webp)"_s);
}

std::optional<LocalizedText> problemWithPicture(const QString &path)
{
    static const QStringList suffixes{u"png"_s, u"jpg"_s, u"jpeg"_s, u"gif"_s, u"webp"_s};
    if (!opens(path))
        return LocalizedText{u"Kunde inte öppna filen."_s, u"Could not open file."_s};
    const QFileInfo file(path);
    if (file.size() > largestPicture)
        return LocalizedText{u"Filen är för stor (max 5 MB)."_s, u"File too large (max 5 MB)."_s};
    if (!suffixes.contains(file.suffix().toLower()))
        return LocalizedText{u"Ogiltigt format."_s, u"Invalid format."_s};
    return std::nullopt;
}

} // namespace tideloft::ui
