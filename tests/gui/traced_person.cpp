// The client's own start and a whole evening with it in a process of its own: an account, keys, messages,
// settings, every kind of failure, the end. Whoever starts it looks for what it has left behind.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/traced_person.h"

#include "tests/support/patience.h"
#include "tests/support/waiting.h"
#include "ui/main_window.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::MainWindow;

namespace
{

void wait(const char *forWhat, const std::function<bool()> &isThere)
{
    if (!waitFor(isThere, 6 * patience()))
        qFatal("There is no %s", forWhat);
}

class Evening
{
public:
    explicit Evening(MainWindow *used) : window(used) {}

    void spend()
    {
        openAnAccount();
        readAndWrite();
        changeSettings();
        lookAround();
        leave();
    }

private:
    template <typename Widget> Widget *the(const char *name) const
    {
        return window->findChild<Widget *>(QString::fromLatin1(name));
    }
    QPushButton *button(const QString &text) const
    {
        for (auto *each : window->findChildren<QPushButton *>()) {
            if (each->text() == text)
                return each;
        }
        qFatal("No button says %s", qPrintable(text));
    }
    void click(QWidget *widget) const { QTest::mouseClick(widget, Qt::LeftButton); }
    void fillIn(const QString &password) const
    {
        const auto fields = window->findChildren<QLineEdit *>(u"authInput"_s);
        fields.at(0)->clear();
        fields.at(1)->clear();
        QTest::keyClicks(fields.at(0), u"alice"_s);
        QTest::keyClicks(fields.at(1), password);
    }
    void beRefused(const char *buttonName) const
    {
        click(the<QPushButton>(buttonName));
        wait("refusal", [this] { return the<QLabel>("authError")->isVisible(); });
    }
    void closeBox() const
    {
        wait("box", [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()) != nullptr; });
        qobject_cast<QMessageBox *>(QApplication::activeModalWidget())->accept();
    }

    void openAnAccount() const
    {
        fillIn(wrongPassword);
        beRefused("primaryButton");
        fillIn(typedPassword);
        beRefused("ghostButton"); // the name is taken, for once
        click(the<QPushButton>("ghostButton"));
        wait("conversation", [this] { return the<QListWidget>("dmList")->count() == 1; });
    }

    void write(const QString &text) const
    {
        auto *line = the<QLineEdit>("msgInput");
        line->clear();
        QTest::keyClicks(line, text);
        QTest::keyClick(line, Qt::Key_Return);
    }

    void readAndWrite() const
    {
        auto *list = the<QListWidget>("dmList");
        emit list->itemClicked(list->item(0));
        wait("history", [this] { return the<QListWidget>("messageList")->count() > receivedTexts.size(); });
        for (const QString &text : sentTexts) {
            write(text);
            wait("end of a send", [this] { return the<QLineEdit>("msgInput")->text().isEmpty(); });
        }
        for (const QString &text : {refusedText, unsealedText}) {
            write(text);
            closeBox();
        }
    }

    void changeSettings() const
    {
        click(button(u"⚙"_s));
        auto *nav = the<QWidget>("settingsNav")->findChild<QListWidget *>();
        for (int i = nav->count() - 1; i >= 0; --i) {
            nav->setCurrentRow(i);
            QCoreApplication::processEvents();
            for (auto *each : window->findChildren<QAbstractButton *>()) {
                if (each->isCheckable() && each->isVisible() && each->objectName() != u"railBtn")
                    each->click();
            }
        }
        click(button(u"Save changes"_s));
        click(button(u"💬"_s));
    }

    void lookAround() const
    {
        the<QLineEdit>("sideSearch")->setText(lookingAround);
        wait("answer to the search", [this] { return the<QListWidget>("searchResults")->isVisible(); });
    }

    void leave() const
    {
        window->logOut();
        fillIn(wrongPassword);
        beRefused("primaryButton");
        fillIn(typedPassword); // and nothing is done with it
        window->close();
    }

    MainWindow *window;
};

/// Waits for the language question and for the window.
class Player : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Show)
            return false;
        if (auto *window = qobject_cast<MainWindow *>(watched); window && !hasBegun) {
            hasBegun = true;
            QTimer::singleShot(0, window, [window] { Evening(window).spend(); });
        }
        if (auto *dialog = qobject_cast<QDialog *>(watched)) {
            if (auto *english = dialog->findChildren<QPushButton *>(u"langBtn"_s).value(1))
                QTimer::singleShot(0, english, &QPushButton::click);
        }
        return false;
    }

private:
    bool hasBegun = false;
};

void watch()
{
    qApp->installEventFilter(new Player(qApp));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch)
