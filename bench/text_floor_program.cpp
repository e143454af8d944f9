// What the floor would cost if it showed text in the client's fonts and could talk TLS: the least that a
// sign-in page needs of the toolkit.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QSslConfiguration>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    tideloft::app::substituteFonts();
    QSslConfiguration::setDefaultConfiguration(QSslConfiguration::defaultConfiguration());
    QMainWindow window;
    QFont font(u"Segoe UI"_s);
    auto *plain = new QLabel(u"Sign in 🔒"_s, &window);
    plain->setFont(font);
    font.setBold(true);
    auto *bold = new QLabel(u"Sign in"_s, &window);
    bold->setFont(font);
    bold->move(0, 40);
    window.show();
    return QApplication::exec();
}
