// The profile card in front of a test.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gui/tst_picture_probe.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace tideloft::tests
{

/// The signed-in window with the profile card in front.
class ProfileProbe : public SettingsProbe
{
public:
    explicit ProfileProbe(ui::Language language = ui::Language::English) : SettingsProbe(language)
    {
        openSettings();
        if (!fadedIn())
            qFatal("The settings do not appear");
        QWidget *card = the<QPushButton>(QStringLiteral("settingsAvatarBtn"))->parentWidget();
        displayName = card->findChild<QLineEdit *>();
        bio = card->findChild<QPlainTextEdit *>();
        save = buttonWith(card, language == ui::Language::English ? QStringLiteral("Save changes")
                                                                  : QStringLiteral("Spara ändringar"));
        status = the<QLabel>(QStringLiteral("myStatus"));
    }

    void type(QWidget *field, const QString &text) const
    {
        clickOnScreen(*field);
        typeInto(*window, text);
    }

    QLineEdit *displayName = nullptr;
    QPlainTextEdit *bio = nullptr;
    QPushButton *save = nullptr;
    QLabel *status = nullptr;
};

} // namespace tideloft::tests
