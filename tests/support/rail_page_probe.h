// The rail alone, in a window that is dressed as the program's is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/page_window.h"
#include "tests/support/widget_parts.h"
#include "ui/rail/rail.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QJsonObject>
#include <QScrollArea>

namespace tideloft::tests
{

/// Marks the server that is chosen, as the window does.
class RailPageProbe
{
public:
    explicit RailPageProbe(ui::Language language = ui::Language::English)
        : window(QSize(56, 720)),
          rail(new ui::Rail(language, &window))
    {
        rail->retranslate(language);
        window.showPage(rail);
        QObject::connect(rail, &ui::Rail::serverChosen, rail, &ui::Rail::selectServer);
    }

    /// The column in which the servers' buttons stand.
    QWidget *column() const { return rail->findChild<QScrollArea *>()->widget(); }
    QList<QAbstractButton *> buttons() const
    {
        QList<QAbstractButton *> found;
        for (int i = 0; i < column()->layout()->count(); ++i)
            found.append(qobject_cast<QAbstractButton *>(column()->layout()->itemAt(i)->widget()));
        return found;
    }

    PageWindow window;
    ui::Rail *rail;
};

} // namespace tideloft::tests
