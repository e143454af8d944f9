// The text format, version 0.0.4, in which Prometheus and others read figures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/metrics/histogram.h"

#include <QByteArray>
#include <QList>
#include <QPair>

namespace tideloft::service
{

class MetricsText
{
public:
    using Labels = QList<QPair<QByteArray, QByteArray>>;
    static constexpr const char *contentType = "text/plain; version=0.0.4; charset=utf-8";

    /// Begins a metric; its samples follow. TYPE is "counter", "gauge" or "histogram".
    void begin(const QByteArray &name, const QByteArray &type, const QByteArray &help);

    void sample(const Labels &labels, double value);
    void sample(const Labels &labels, const Histogram &histogram);

    const QByteArray &text() const { return written; }

private:
    void line(const QByteArray &name, const Labels &labels, const QByteArray &value);

    QByteArray metric; ///< the name of the present one
    QByteArray written;
};

} // namespace tideloft::service
