// Typing in the running client while a conversation of 2,000 messages is refreshed: how long does the event
// loop keep a key waiting?
//
//   bench_typing [--messages N]
//
// The client is the real one, from its first line on, before the real service. It is driven from inside: keys
// and clicks are sent to its widgets, and a timer without delay ticks at every turn of its event loop.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/start_up.h"
#include "bench/figures.h"
#include "bench/paired_times.h"
#include "bench/seeded_service.h"
#include "tests/support/test_home.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tideloft;

namespace
{

constexpr int stretches = 5;
constexpr int stretchTime = 9000; // three refreshes
constexpr int keyInterval = 90;   // a fast typist's
int messageCount = 2000;

class Typist : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *shown = event->type() == QEvent::Show ? qobject_cast<QMainWindow *>(watched) : nullptr;
        if (shown && !window) {
            window = shown;
            QTimer::singleShot(0, this, [this] { signIn(); });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    template <typename Widget> Widget *the(const QString &name) const
    {
        return window->findChild<Widget *>(name);
    }
    void signIn();
    void openConversation();
    void beginTyping();
    void turn();
    void endStretch();
    void tell();

    /// Calls NEXT once CONDITION holds.
    template <typename Condition> void when(Condition condition, void (Typist::*next)())
    {
        QTimer::singleShot(50, this, [this, condition, next] {
            if (condition())
                (this->*next)();
            else
                when(condition, next);
        });
    }

    QMainWindow *window = nullptr;
    QTimer turns;
    QTimer keys;
    QElapsedTimer sinceTurn;
    double longest = 0;
    QList<double> longestGaps;
};

void Typist::signIn()
{
    const auto fields = window->findChildren<QLineEdit *>(u"authInput"_s);
    QTest::keyClicks(fields.at(0), u"alice"_s);
    QTest::keyClicks(fields.at(1), bench::SeededService::password);
    QTest::mouseClick(the<QPushButton>(u"primaryButton"_s), Qt::LeftButton);
    const auto isListed = [this] {
        const auto *list = the<QListWidget>(u"dmList"_s);
        return list && list->isVisible() && list->count() == 1;
    };
    when(isListed, &Typist::openConversation);
}

void Typist::openConversation()
{
    auto *list = the<QListWidget>(u"dmList"_s);
    const QPoint centre = list->visualItemRect(list->item(0)).center();
    QWidget *target = list->viewport()->childAt(centre);
    QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(list->viewport(), centre));
    const auto *messages = the<QListWidget>(u"messageList"_s);
    when([messages] { return messages->count() >= messageCount; }, &Typist::beginTyping);
}

void Typist::beginTyping()
{
    auto *input = the<QLineEdit>(u"msgInput"_s);
    connect(&keys, &QTimer::timeout, input, [input] {
        if (input->text().size() < 200)
            QTest::keyClick(input, Qt::Key_A);
        else
            input->clear();
    });
    keys.start(keyInterval);
    connect(&turns, &QTimer::timeout, this, &Typist::turn);
    turns.start(0);
    sinceTurn.start();
    QTimer::singleShot(stretchTime, Qt::PreciseTimer, this, [this] { endStretch(); });
}

void Typist::turn()
{
    longest = std::max(longest, static_cast<double>(sinceTurn.nsecsElapsed()) / 1e6);
    sinceTurn.start();
}

void Typist::endStretch()
{
    longestGaps << std::exchange(longest, 0);
    if (longestGaps.size() < stretches)
        QTimer::singleShot(stretchTime, Qt::PreciseTimer, this, [this] { endStretch(); });
    else
        tell();
}

void Typist::tell()
{
    const double middle = bench::medianOf(longestGaps);
    const double most = *std::max_element(longestGaps.cbegin(), longestGaps.cend());
    bench::report("longest gap between two turns of the event loop, typing with "
                      + QByteArray::number(messageCount) + " messages open",
                  QByteArray::number(middle, 'f', 1) + " ms (median of 5 stretches of 9 s; longest of all "
                      + QByteArray::number(most, 'f', 1) + " ms)",
                  "under 20 ms", middle < 20);
    QCoreApplication::quit();
}

bool clientStarts = false;

void watch()
{
    if (clientStarts)
        QCoreApplication::instance()->installEventFilter(new Typist(QCoreApplication::instance()));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch)

int main(int argc, char **argv)
{
    const tests::TestHome home;
    std::optional<bench::SeededService> service;
    std::optional<QCoreApplication> preparation(std::in_place, argc, argv);
    QCoreApplication::setApplicationName(u"TideLoft"_s);
    QCoreApplication::setOrganizationName(u"TideLoft"_s);
    const QStringList arguments = QCoreApplication::arguments();
    if (const qsizetype place = arguments.indexOf(u"--messages"_s); place >= 0)
        messageCount = arguments.value(place + 1).toInt();
    QSettings().setValue(u"language"_s, u"en"_s);
    service.emplace();
    service->seed(messageCount);
    preparation.reset();
    clientStarts = true;
    return app::run(argc, argv);
}
