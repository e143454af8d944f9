// Lists whose rows all have their widgets at once: what a list looks like that makes them where somebody
// looks.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/lists/row_list.h"
#include "ui/lists/row_reconciler.h"

#include <QListWidget>

#include <functional>

namespace tideloft::tests
{

/// The models that the entries of LIST show, in order; invalid for what showRows() did not make.
QList<QVariant> shownModels(const QListWidget *list);

/// Makes the entries of LIST follow PLACES, and gives those that are not kept the row that MAKE builds for
/// their index, and its model. Lays the list out at once.
void applyPlan(QListWidget *list, const QList<ui::RowPlace> &places,
               const std::function<std::pair<ui::ListRow, QVariant>(int)> &make);

/// Makes LIST show ROWS, as if it were cleared and filled with what MAKE builds for each under the list's
/// viewport; but rows that it shows already stay as they are, with all that the user has done to them.
/// A selection of entries is not kept.
template <typename Model>
void showRows(QListWidget *list, const QList<Model> &rows,
              const std::function<ui::ListRow(const Model &, QWidget *viewport)> &make)
{
    const QList<QVariant> shown = shownModels(list); // holds what the pointers point to
    QList<const Model *> models;
    models.reserve(shown.size());
    for (const QVariant &model : shown)
        models.append(model.metaType() == QMetaType::fromType<Model>()
                          ? static_cast<const Model *>(model.constData())
                          : nullptr);
    applyPlan(list, ui::planRows(shown.size(), ui::equalRows(models, rows)), [&](int index) {
        return std::pair(make(rows.at(index), list->viewport()), QVariant::fromValue(rows.at(index)));
    });
}

} // namespace tideloft::tests
