// The timer of the refresh: how often the client asks for the conversations and the open history.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>

namespace tideloft::ui
{

class RefreshTimer : public QTimer
{
    Q_OBJECT

public:
    static constexpr int refreshInterval = 3'000; ///< ms

    explicit RefreshTimer(QObject *parent) : QTimer(parent) { setInterval(refreshInterval); }
    /// Starts the timer unless it runs: one that runs keeps its beat.
    void startUnlessActive()
    {
        if (!isActive())
            start();
    }
};

} // namespace tideloft::ui
