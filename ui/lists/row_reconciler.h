// Turning the rows that a list shows into others: what stays the same is not touched.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/lists/row_list.h"
#include "ui/lists/row_plan.h"

#include <QListWidget>

#include <functional>

namespace tideloft::ui
{

/// The models that the entries of LIST show, in order; invalid for what is no row made from a model.
QList<QVariant> shownModels(const QListWidget *list);

/// Inserts COUNT new entries at INDEX.
using InsertEntries = std::function<void(int index, int count)>;

/// Makes the entries of LIST follow PLACES. False if they do so already, and all are kept.
bool arrangeEntries(QListWidget *list, const QList<RowPlace> &places, const InsertEntries &insert);

/// Makes the entries of LIST follow PLACES, and gives those that are not kept the row that MAKE builds for
/// their index. Lays the list out at once.
void applyPlan(QListWidget *list, const QList<RowPlace> &places, const std::function<ListRow(int)> &make);

/// Makes LIST show ROWS, as if it were cleared and filled with what MAKE builds for each under the list's
/// viewport; but rows that it shows already stay as they are, with all that the user has done to them.
/// A selection of entries is not kept.
template <typename Model>
void showRows(QListWidget *list, const QList<Model> &rows,
              const std::function<ListRow(const Model &, QWidget *viewport)> &make)
{
    const QList<QVariant> shown = shownModels(list); // holds what the pointers point to
    QList<const Model *> models;
    models.reserve(shown.size());
    for (const QVariant &model : shown)
        models.append(model.metaType() == QMetaType::fromType<Model>()
                          ? static_cast<const Model *>(model.constData())
                          : nullptr);
    applyPlan(list, planRows(shown.size(), equalRows(models, rows)), [&](int index) {
        ListRow row = make(rows.at(index), list->viewport());
        row.model = QVariant::fromValue(rows.at(index));
        return row;
    });
}

} // namespace tideloft::ui
