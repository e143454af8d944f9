// Starting the client: identity, language, one window.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/start_up.h"

#include "app/command_line.h"
#include "app/fonts.h"
#include "app/identity.h"
#include "app/language_select_dialog.h"
#include "app/resting_cursor.h"
#include "app/settings_store.h"
#include "app/window_icon.h"
#include "net/tls_policy.h"
#include "ui/main_window.h"
#include "ui/widgets/first_frame.h"

#include <QApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace tideloft::app
{

namespace
{

// Reading the desktop's theme and its pictures takes a sixth of the time until the first frame.
void giveIconLater(QWidget *window)
{
    ui::afterFirstFrame(window, [] { QGuiApplication::setWindowIcon(windowIcon()); });
}

std::optional<int> askForLanguage()
{
    LanguageSelectDialog dialog;
    giveIconLater(&dialog);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.chosenLanguageIndex();
}

} // namespace

std::optional<int> settleLanguage(const QSettings &settings)
{
    if (settings.contains(u"language"_s))
        return settings.value(u"language"_s).toString() == u"en"_s ? 1 : 0;
    return askForLanguage();
}

int run(int argc, char **argv)
{
    if (const auto answer = answerTo({argv, static_cast<size_t>(argc)})) {
        std::fputs(answer->toUtf8().constData(), stdout);
        return 0;
    }
    const QApplication application(argc, argv);
    if (!hasFonts()) {
        std::fputs("tideloft: no font is installed; install one, such as the package fonts-open-sans\n",
                   stderr);
        return 1;
    }
    QApplication::setApplicationName(applicationName);
    QApplication::setApplicationDisplayName(applicationName);
    QApplication::setOrganizationName(organisationName);
    QApplication::setApplicationVersion(applicationVersion());
    QGuiApplication::setDesktopFileName(desktopFileName);
    substituteFonts();
    net::applyTlsPolicy();
    const std::unique_ptr<const QSettings> settings = openSettings();
    const std::optional<int> language = settings ? settleLanguage(*settings) : askForLanguage();
    if (!language)
        return 0;
    useSheetFont();
    ui::MainWindow window;
    window.setLanguageIndex(*language);
    giveIconLater(&window);
    window.show();
    const RestingCursor cursor;
    return QApplication::exec();
}

} // namespace tideloft::app
