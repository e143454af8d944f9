// Comparison of uploads, and the files that are open.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/upload_wire.h"

#include "tests/support/net/wire.h"
#include "tests/support/patience.h"
#include "tests/support/waiting.h"

#include <QDir>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

// The one free word of an upload: the head names it, the body must use it.
QByteArray boundaryOf(const RecordedRequest &request)
{
    const QByteArray type = request.header("Content-Type");
    const QByteArray start = "multipart/form-data; boundary=\"";
    return type.startsWith(start) && type.endsWith('"') ? type.mid(start.size()).chopped(1) : QByteArray();
}

} // namespace

QByteArray wantedUpload(const RecordedRequest &request, const QByteArray &path, const QByteArray &part,
                        const QByteArray &suffix, const QByteArray &content)
{
    const QByteArray boundary = boundaryOf(request);
    if (boundary.isEmpty())
        return {};
    const QByteArray body = "--" + boundary + "\r\nContent-Disposition: form-data; name=\"" + part
                            + "\"; filename=\"" + part + '.' + suffix + "\"\r\nContent-Type: image/" + suffix
                            + "\r\n\r\n" + content + "\r\n--" + boundary + "--\r\n";
    return "POST " + path + " HTTP/1.1\r\nContent-Type: multipart/form-data; boundary=\"" + boundary
           + "\"\r\nMIME-Version: 1.0\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n"
           + body;
}

QByteArray sentUpload(const RecordedRequest &request)
{
    QByteArray body = request.body; // from 6.8 on the toolkit writes these names, too, in small letters
    body.replace("\r\ncontent-disposition: ", "\r\nContent-Disposition: ");
    body.replace("\r\ncontent-type: ", "\r\nContent-Type: ");
    return ownHead(request) + body;
}

bool isOpen(const QString &path)
{
    const QDir descriptors(u"/proc/self/fd"_s);
    const QFileInfoList open = descriptors.entryInfoList(QDir::Files | QDir::System);
    return std::any_of(open.begin(), open.end(), [&](const QFileInfo &entry) {
        const QString target = entry.symLinkTarget();
        return target == path || target == path + u" (deleted)"_s; // the kernel's words for a removed file
    });
}

bool uploadIsOver(const QString &path)
{
    return waitFor([&] { return !isOpen(path); }, patience());
}

} // namespace tideloft::tests
