// Reading of the text format, line by line.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/metrics_parser.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tideloft::tests
{

namespace
{

class MetricsParser
{
public:
    static ParsedMetrics parse(const QByteArray &text)
    {
        MetricsParser parser;
        QStringList lines = QString::fromUtf8(text).split(u'\n');
        if (!lines.takeLast().isEmpty())
            parser.result.problem = QStringLiteral("does not end with a line break");
        for (qsizetype i = 0; i < lines.size() && parser.result.problem.isEmpty(); ++i) {
            if (!parser.take(lines[i]))
                parser.result.problem = QStringLiteral("line %1: %2").arg(i + 1).arg(lines[i]);
        }
        if (parser.result.problem.isEmpty() && !parser.endMetric())
            parser.result.problem = QStringLiteral("an incomplete histogram: ") + parser.name;
        return parser.result;
    }

private:
    struct Buckets {
        double lastBound = -HUGE_VAL;
        double lastCount = 0;
        bool hasSum = false;
        bool isWhole = false; ///< the last bucket and the count are there, and are the same
    };

    bool take(const QString &line)
    {
        static const QRegularExpression help(QStringLiteral("^# HELP ([a-z_]+) (?:[^\\\\]|\\\\[\\\\n])+$"));
        static const QRegularExpression type(QStringLiteral("^# TYPE ([a-z_]+) (counter|gauge|histogram)$"));
        static const QRegularExpression sample(
            QStringLiteral("^([a-z_]+)(\\{(?:[a-z]+=\"(?:[^\"\\\\]|\\\\[\"\\\\n])*\"(?:,(?=[a-z])|(?=\\})))+"
                           "\\})? ([0-9.e+-]+)$"));
        if (const auto found = help.match(line); found.hasMatch())
            return endMetric() && begin(found.captured(1));
        if (const auto found = type.match(line); found.hasMatch())
            return takeType(found.captured(1), found.captured(2));
        const auto found = sample.match(line);
        return found.hasMatch() && takeSample(found.captured(1), found.captured(2), found.captured(3));
    }

    bool begin(const QString &next)
    {
        name = next;
        return !result.types.contains(name);
    }

    bool takeType(const QString &of, const QString &type)
    {
        const bool isNew = of == name && !result.types.contains(name);
        result.types.insert(name, type);
        return isNew && (type == u"counter") == name.endsWith(QStringLiteral("_total"));
    }

    bool takeSample(const QString &of, const QString &labels, const QString &text)
    {
        bool isNumber = false;
        const double value = text.toDouble(&isNumber);
        const bool isNew = !result.samples.contains(of + labels);
        result.samples.insert(of + labels, value);
        if (!isNumber || !isNew || !result.types.contains(name))
            return false;
        return result.types[name] == u"histogram" ? takePart(of, labels, value) : of == name;
    }

    // What a line of a histogram adds to its labels without the bound.
    bool takePart(const QString &of, QString labels, double value)
    {
        static const QRegularExpression bound(QStringLiteral("[{,]le=\"([^\"]+)\"\\}$"));
        const QString le = bound.match(labels).captured(1);
        labels.replace(bound, labels.startsWith(QStringLiteral("{le=")) ? QString() : QStringLiteral("}"));
        Buckets &buckets = histograms[labels];
        if (of == name + QStringLiteral("_sum"))
            return le.isEmpty() && !std::exchange(buckets.hasSum, true);
        if (of == name + QStringLiteral("_count")) {
            buckets.isWhole = std::isinf(buckets.lastBound) && buckets.lastCount == value;
            return le.isEmpty() && buckets.isWhole;
        }
        const double upper = le == u"+Inf" ? HUGE_VAL : le.toDouble();
        const bool rises = upper > buckets.lastBound && value >= buckets.lastCount;
        buckets.lastBound = upper;
        buckets.lastCount = value;
        return of == name + QStringLiteral("_bucket") && !le.isEmpty() && rises;
    }

    bool endMetric()
    {
        const auto parts = std::exchange(histograms, {});
        return std::all_of(parts.begin(), parts.end(),
                           [](const Buckets &buckets) { return buckets.hasSum && buckets.isWhole; });
    }

    ParsedMetrics result;
    QString name;
    QMap<QString, Buckets> histograms; ///< of the present metric, by their labels
};

} // namespace

ParsedMetrics parsedMetrics(const QByteArray &text)
{
    return MetricsParser::parse(text);
}

} // namespace tideloft::tests
