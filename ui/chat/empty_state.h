// What stands in the middle of the window while no conversation is open.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <QLabel>
#include <QPointer>
#include <QWidget>

class QPushButton;

namespace tideloft::ui
{

/// A welcome, three hints, and a button that begins a conversation.
class EmptyState : public QWidget
{
    Q_OBJECT

public:
    /// An empty page, which can join its stack at no cost; build() fills it.
    explicit EmptyState(QWidget *parent);
    void build(Language language);
    void retranslate(Language language);

signals:
    void startClicked();

private:
    QWidget *makeInner(Language language);
    QWidget *makeHints(Language language, QWidget *inner);

    QPointer<QLabel> emptyTitle;
    QPointer<QLabel> emptySubtitle;
    QPushButton *emptyActionBtn = nullptr;
};

} // namespace tideloft::ui
