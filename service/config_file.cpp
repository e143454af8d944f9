// Reading of the configuration file. All mistakes are reported at once, so that they can be mended together.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/config_file.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qint64 mostBytes = qint64{1024} * 1024;

// A sign in front of which nothing or a blank stands begins a comment, so the name of a file may hold one.
QString withoutComment(const QString &line)
{
    static const QRegularExpression comment(u"(^|\\s)#.*$"_s);
    return QString(line).remove(comment).trimmed();
}

// Up to 1.0.0 the file held variables for the unit. Who upgrades finds the service running.
QString currentKey(const QString &key)
{
    if (key == u"TIDELOFTD_LISTEN")
        return u"listen"_s;
    return key == u"TIDELOFTD_PORT" ? u"port"_s : key;
}

// What is wrong with a line that is no comment; empty when nothing is.
QString problemOf(const QString &line, QSet<QString> &seen, Options &options)
{
    const qsizetype sign = line.indexOf(u'=');
    if (sign < 0)
        return u"this is not of the form 'key = value'"_s;
    const QString written = line.left(sign).trimmed();
    const QString key = currentKey(written);
    const QString value = line.mid(sign + 1).trimmed();
    const OptionEntry *entry = findOption(key);
    if (!entry)
        return u"unknown key '%1'"_s.arg(written.left(100));
    if (seen.contains(key))
        return u"'%1' stands here a second time"_s.arg(key);
    seen.insert(key);
    if (value.isEmpty())
        return u"'%1' has no value"_s.arg(key);
    const QString wanted = entry->set(options, value);
    return wanted.isEmpty() ? QString() : u"'%1' %2"_s.arg(key, wanted);
}

} // namespace

QStringList readConfigFile(const QString &file, Options &options)
{
    QFile opened(file);
    if (!opened.open(QIODevice::ReadOnly))
        return {u"Could not read the configuration file %1: %2"_s.arg(file, opened.errorString())};
    const QByteArray content = opened.read(mostBytes + 1);
    if (content.size() > mostBytes)
        return {u"%1 is too large for a configuration file"_s.arg(file)};
    const QStringList lines = QString::fromUtf8(content).split(u'\n');
    QStringList problems;
    QSet<QString> seen;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString line = withoutComment(lines[i]);
        const QString problem = line.isEmpty() ? QString() : problemOf(line, seen, options);
        if (!problem.isEmpty())
            problems << u"%1:%2: %3"_s.arg(file).arg(i + 1).arg(problem);
    }
    return problems;
}

} // namespace tideloft::service
