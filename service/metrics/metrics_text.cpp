// Writing of the text format.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/metrics/metrics_text.h"

namespace tideloft::service
{

namespace
{

QByteArray escapedHelp(QByteArray text)
{
    return text.replace('\\', "\\\\").replace('\n', "\\n");
}

QByteArray escapedValue(const QByteArray &text)
{
    return escapedHelp(text).replace('"', "\\\"");
}

// So many digits tell every whole number that is counted here from its neighbours.
QByteArray numberText(double value)
{
    return QByteArray::number(value, 'g', 15);
}

} // namespace

void MetricsText::begin(const QByteArray &name, const QByteArray &type, const QByteArray &help)
{
    metric = name;
    written += "# HELP " + name + ' ' + escapedHelp(help) + "\n# TYPE " + name + ' ' + type + '\n';
}

void MetricsText::line(const QByteArray &name, const Labels &labels, const QByteArray &value)
{
    QByteArray all;
    for (const auto &[label, text] : labels)
        all += (all.isEmpty() ? "" : ",") + label + "=\"" + escapedValue(text) + '"';
    written += name + (all.isEmpty() ? QByteArray() : '{' + all + '}') + ' ' + value + '\n';
}

void MetricsText::sample(const Labels &labels, double value)
{
    line(metric, labels, numberText(value));
}

void MetricsText::sample(const Labels &labels, const Histogram &histogram)
{
    const auto &bounds = histogram.bounds();
    for (std::size_t i = 0; i < bounds.size(); ++i)
        line(metric + "_bucket", labels + Labels{{"le", numberText(bounds[i])}},
             QByteArray::number(quint64(histogram.atMost(i))));
    const QByteArray count = QByteArray::number(quint64(histogram.count()));
    line(metric + "_bucket", labels + Labels{{"le", "+Inf"}}, count);
    line(metric + "_sum", labels, numberText(histogram.sum()));
    line(metric + "_count", labels, count);
}

} // namespace tideloft::service
