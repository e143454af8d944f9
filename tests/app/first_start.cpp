// The client's own start in a process of its own. The first argument answers the language question: "escape",
// or the index of a button. What comes up on screen is printed, a line each; the main window is closed again.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/start_up.h"
#include "ui/main_window.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QEvent>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{

void print(const QString &line)
{
    std::puts(line.toUtf8().constData());
}

class Player : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Show)
            return false;
        if (auto *dialog = qobject_cast<QDialog *>(watched))
            QTimer::singleShot(0, dialog, [dialog] { answer(dialog); });
        if (auto *window = qobject_cast<QMainWindow *>(watched))
            QTimer::singleShot(0, window, [window] { look(window); });
        return false;
    }

private:
    static void answer(QDialog *dialog)
    {
        print(u"dialog"_s);
        const QString choice = QCoreApplication::arguments().value(1);
        if (choice == u"escape"_s)
            QTest::keyClick(dialog, Qt::Key_Escape);
        else
            QTest::mouseClick(dialog->findChildren<QPushButton *>(u"langBtn"_s).at(choice.toInt()),
                              Qt::LeftButton);
    }

    // The icon comes after the first frame.
    static void look(QMainWindow *window)
    {
        if (window->windowIcon().isNull()) {
            QTimer::singleShot(1, window, [window] { look(window); });
            return;
        }
        const auto *language = window->findChild<QComboBox *>(u"langCombo"_s);
        print(u"window, language %1"_s.arg(language->currentIndex()));
        print(u"plainly shown: %1"_s.arg(window->windowState() == Qt::WindowNoState));
        print(QCoreApplication::applicationName() + u'|' + QGuiApplication::applicationDisplayName() + u'|'
              + QCoreApplication::organizationName() + u'|' + QCoreApplication::organizationDomain() + u'|'
              + QCoreApplication::applicationVersion());
        print(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
        print(QGuiApplication::desktopFileName());
        print(u"icon of %1 pixels"_s.arg(window->windowIcon().pixmap(256).width()));
        if (QCoreApplication::arguments().value(2) == u"switch"_s)
            window->findChild<QComboBox *>(u"langCombo"_s)->setCurrentIndex(1 - language->currentIndex());
        window->close();
    }
};

void watch()
{
    qApp->installEventFilter(new Player(qApp));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch)

int main(int argc, char **argv)
{
    return tideloft::app::run(argc, argv);
}
