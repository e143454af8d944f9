// Reading of the address. A list of hosts is nothing that an ordinary URL may hold.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/postgresql_url.h"

#include "service/store/storage_error.h"

#include <QMap>
#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

using Settings = QMap<QString, QString>;

[[noreturn]] void fail(const QString &why)
{
    throw StorageError((u"The address of the database cannot be used: "_s + why).toStdString());
}

QString decoded(const QString &text)
{
    return QUrl::fromPercentEncoding(text.toUtf8());
}

// The driver takes a semicolon for the end of a setting, and there is no other way to write one.
QString quoted(const QString &value)
{
    if (value.contains(u';') || value.contains(QChar(0)))
        fail(u"it must not hold a semicolon"_s);
    QString escaped = value;
    escaped.replace(u'\\', u"\\\\"_s).replace(u'\'', u"\\'"_s);
    return u'\'' + escaped + u'\'';
}

void readHosts(const QString &list, Settings &settings)
{
    static const QRegularExpression form(u"^(\\[[^\\]]*\\]|[^:\\[\\]]*)(?::(\\d*))?$"_s);
    QStringList hosts;
    QStringList ports;
    for (const QString &entry : list.split(u',')) {
        const QRegularExpressionMatch match = form.match(entry);
        if (!match.hasMatch())
            fail(u"'%1' is no host"_s.arg(entry));
        QString host = decoded(match.captured(1));
        hosts << host.remove(u'[').remove(u']');
        ports << match.captured(2);
    }
    if (!list.isEmpty())
        settings[u"host"_s] = hosts.join(u',');
    if (!ports.join(QString()).isEmpty())
        settings[u"port"_s] = ports.join(u',');
}

void readUser(const QString &part, Settings &settings)
{
    settings[u"user"_s] = decoded(part.section(u':', 0, 0));
    if (part.contains(u':'))
        settings[u"password"_s] = decoded(part.section(u':', 1));
}

void readQuery(const QString &query, Settings &settings)
{
    static const QRegularExpression word(u"^[a-z_]+$"_s);
    for (const QString &item : query.split(u'&', Qt::SkipEmptyParts)) {
        const QString key = item.section(u'=', 0, 0);
        if (!item.contains(u'=') || !word.match(key).hasMatch())
            fail(u"'%1' is not of the form key=value"_s.arg(key));
        settings[key] = decoded(item.section(u'=', 1));
    }
}

Settings usual()
{
    return {{u"connect_timeout"_s, u"2"_s},
            {u"tcp_user_timeout"_s, u"5000"_s},
            {u"target_session_attrs"_s, u"read-write"_s},
            {u"application_name"_s, u"tideloft"_s}};
}

QString withoutPassword(QString text)
{
    static const QRegularExpression user(u"^([a-z]+://[^:/@]*):[^@/]*@"_s);
    static const QRegularExpression setting(u"([?&])password=[^&]*"_s);
    return text.replace(user, u"\\1@"_s).replace(setting, u"\\1password=…"_s);
}

} // namespace

bool isPostgresqlUrl(const QString &text)
{
    return text.startsWith(u"postgresql://"_s) || text.startsWith(u"postgres://"_s);
}

PostgresqlUrl parsePostgresqlUrl(const QString &text)
{
    static const QRegularExpression form(u"^[a-z]+://(?:([^@/?]*)@)?([^/?]*)(?:/([^?]*))?(?:\\?(.*))?$"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (!isPostgresqlUrl(text) || !match.hasMatch())
        fail(u"it is not of the form postgresql://USER@HOST/NAME"_s);
    Settings settings = usual();
    if (!match.captured(1).isEmpty())
        readUser(match.captured(1), settings);
    readHosts(match.captured(2), settings);
    if (!match.captured(3).isEmpty())
        settings[u"dbname"_s] = decoded(match.captured(3));
    readQuery(match.captured(4), settings);
    QStringList options;
    for (auto setting = settings.cbegin(); setting != settings.cend(); ++setting)
        options << setting.key() + u'=' + quoted(setting.value());
    return {options.join(u' '), withoutPassword(text)};
}

} // namespace tideloft::service
