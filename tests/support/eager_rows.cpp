// Applying a plan to a list, with a widget for every entry.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/eager_rows.h"

#include <QApplication>
#include <QScrollBar>

#include <algorithm>
#include <optional>

namespace tideloft::tests
{

namespace
{

constexpr int shownModelRole = Qt::UserRole + 1;

/// Keeps what stands in a list's viewport out of sight while many rows come in: a row that is made visible
/// announces itself to the whole window, and so all of them together take a time that grows with the square
/// of their number. Nothing is painted before the event loop turns, so nobody sees the gap.
class Curtain
{
public:
    explicit Curtain(QListWidget *filled) : list(isNeeded(filled->viewport()) ? filled : nullptr)
    {
        if (!list)
            return;
        list->viewport()->hide();
        // So many rows need the bar: they are measured beside it, not without it first.
        policy = list->verticalScrollBarPolicy();
        list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    }
    ~Curtain()
    {
        if (!list)
            return;
        list->setVerticalScrollBarPolicy(policy);
        // Every widget that is shown searches all that is posted if anything is posted for itself.
        for (const QEvent::Type waiting : {QEvent::PolishRequest, QEvent::LayoutRequest})
            QCoreApplication::sendPostedEvents(nullptr, waiting);
        list->viewport()->show();
    }
    Q_DISABLE_COPY_MOVE(Curtain)

private:
    /// What has the keyboard would lose it, and with it the text that is selected there.
    static bool isNeeded(const QWidget *viewport)
    {
        const QWidget *focused = QApplication::focusWidget();
        return viewport->isVisible() && !(focused && viewport->isAncestorOf(focused));
    }

    QListWidget *list;
    Qt::ScrollBarPolicy policy = Qt::ScrollBarAsNeeded;
};

} // namespace

QList<QVariant> shownModels(const QListWidget *list)
{
    QList<QVariant> models;
    models.reserve(list->count());
    for (int i = 0; i < list->count(); ++i)
        models.append(list->item(i)->data(shownModelRole));
    return models;
}

void applyPlan(QListWidget *list, const QList<ui::RowPlace> &places,
               const std::function<std::pair<ui::ListRow, QVariant>(int)> &make)
{
    std::optional<Curtain> curtain;
    if (std::count_if(places.cbegin(), places.cend(), [](const ui::RowPlace &place) { return !place.isKept; })
        > 50)
        curtain.emplace(list);
    const int value = list->verticalScrollBar()->value();
    const auto insert = [list](int index, int count) { list->insertItems(index, QStringList(count)); };
    if (!ui::arrangeEntries(list, places, insert))
        return;
    for (int i = 0; i < places.size(); ++i) {
        if (places.at(i).isKept)
            continue;
        const auto [row, model] = make(i);
        ui::setRow(list, i, row);
        list->item(i)->setData(shownModelRole, model);
    }
    list->doItemsLayout();
    list->verticalScrollBar()->setValue(value); // entries were lower before they had rows
}

} // namespace tideloft::tests
