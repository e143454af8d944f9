// Forms of lines and tables.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/output.h"

#include <QDateTime>

#include <algorithm>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

QString withoutControls(QString text)
{
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control || c.category() == QChar::Other_Format)
            c = u'?';
    }
    return text;
}

bool isNumber(const QString &text)
{
    return !text.isEmpty()
           && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

void say(const QString &line, FILE *stream)
{
    std::fputs((withoutControls(line) + u'\n').toUtf8().constData(), stream);
}

QStringList tableLines(const QList<QStringList> &rows)
{
    QList<qsizetype> widths;
    for (const QStringList &row : rows) {
        widths.resize(qMax(widths.size(), row.size()));
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[i] = qMax(widths[i], row[i].size());
    }
    QStringList lines;
    for (const QStringList &row : rows) {
        QStringList cells;
        for (qsizetype i = 0; i < row.size(); ++i)
            cells << (isNumber(row[i]) ? row[i].rightJustified(widths[i]) : row[i].leftJustified(widths[i]));
        QString line = cells.join(u"  "_s);
        while (line.endsWith(u' '))
            line.chop(1);
        lines << line;
    }
    return lines;
}

QString timeText(qint64 milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds).toUTC().toString(u"yyyy-MM-dd hh:mm"_s);
}

} // namespace tideloft::service
