// Following the width of the settings page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/settings/settings_width.h"

#include <QEvent>
#include <QLayout>
#include <QScrollArea>
#include <QStackedWidget>

namespace tideloft::ui
{

namespace
{

// At this width the wide form leaves a row as much room as the narrow one has in the smallest window.
constexpr int wideFrom = 580;

class WidthFollower : public QObject
{
public:
    WidthFollower(QWidget *settingsPage, QWidget *navigation, QStackedWidget *sectionStack)
        : QObject(settingsPage),
          page(settingsPage),
          nav(navigation),
          sections(sectionStack)
    {
        page->installEventFilter(this);
        share();
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            share();
        return false;
    }

private:
    void share()
    {
        const bool wide = page->width() >= wideFrom;
        const int navMargin = wide ? 12 : 6;
        const int sectionMargin = wide ? 32 : 8;
        nav->setFixedWidth(wide ? 220 : 180);
        nav->layout()->setContentsMargins(navMargin, 20, navMargin, 16);
        for (int i = 0; i < sections->count(); ++i) {
            const auto *area = static_cast<QScrollArea *>(sections->widget(i));
            area->widget()->layout()->setContentsMargins(sectionMargin, 28, sectionMargin, 28);
        }
        page->layout()->activate(); // at once: the page has just been laid out with the old widths
    }

    QWidget *page;
    QWidget *nav;
    QStackedWidget *sections;
};

} // namespace

void fitSectionsToWidth(QWidget *page, QWidget *nav, QStackedWidget *sections)
{
    new WidthFollower(page, nav, sections);
}

} // namespace tideloft::ui
