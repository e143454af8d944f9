// Finding the parts of the settings view.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_settings_probe.h"

#include "tests/support/patience.h"
#include "tests/support/popups.h"
#include "tests/support/waiting.h"

#include <QAbstractAnimation>
#include <QApplication>
#include <QComboBox>
#include <QGraphicsEffect>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

SettingsProbe::SettingsProbe(ui::Language language)
{
    choose(language);
    const bool signedIn = signIn();
    refreshTimer()->stop(); // from here on every request has its reason in the test
    // The keys are asked for again once the own one is registered.
    if (!signedIn || !service.waitForRequests("GET /api/chat/device-keys/me", 2) || !settle())
        qFatal("The sign-in does not come to its end");
}

void SettingsProbe::choose(ui::Language language) const
{
    the<QComboBox>(u"langCombo"_s)->setCurrentIndex(static_cast<int>(language));
}

QPushButton *SettingsProbe::messagesButton() const
{
    return static_cast<QPushButton *>(named(*window, u"railBtn=💬"_s));
}

QPushButton *SettingsProbe::settingsButton() const
{
    return static_cast<QPushButton *>(named(*window, u"railBtn=⚙"_s));
}

void SettingsProbe::openSettings() const
{
    QTest::mouseClick(settingsButton(), Qt::LeftButton);
}

bool SettingsProbe::fadedIn() const
{
    return waitFor(
        [this] {
            const QGraphicsEffect *effect = settingsPage()->graphicsEffect();
            return effect && !effect->isEnabled();
        },
        patience());
}

QWidget *SettingsProbe::settingsPage() const
{
    for (int i = 0; i < center()->count(); ++i) {
        if (center()->widget(i)->findChild<QWidget *>(u"settingsNav"_s))
            return center()->widget(i);
    }
    return nullptr;
}

bool withUserMenu(const GuiProbe &probe, const std::function<void(QMenu *)> &use)
{
    const auto *footer = probe.the<QWidget>(u"sideFooter"_s);
    return withMenu([footer] { press(footer, {footer->width() - 5, 5}); }, use);
}

bool takeFromUserMenu(const GuiProbe &probe, int index)
{
    return withUserMenu(probe, [index](QMenu *menu) { clickEntry(menu, index); });
}

} // namespace tideloft::tests
