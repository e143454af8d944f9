// Somebody who uses the window without sense: clicks, keys, texts, sign-ins and log-outs at random.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gui/tst_random_driver_service.h"
#include "tests/support/gui_probe.h"

#include <QTemporaryDir>

namespace tideloft::tests
{

/// Acts on whatever is in front, as the screen would let a person: a popup, a modal dialog, or the window.
class RandomHands
{
public:
    RandomHands(GuiProbe &used, RandomService &service, RandomChoice &random)
        : probe(used),
          answers(service),
          choose(random)
    {
    }

    QString act();            ///< one action; says which
    static bool closeFront(); ///< closes a popup or modal dialog. False: there is none

private:
    QString actOnService();
    QString actOnWindow();
    QString useFront(QWidget *front);
    QString clickSomewhere(QWidget *front);
    QString pressSomeKey(QWidget *front);
    QString typeSomething();
    QString signIn();
    QString writeMessage();
    QString openSomebody();
    QString scroll(const QString &name);
    QString changeLook();
    QString chooseSettings();

    QString picture(); ///< the path of one

    QTemporaryDir folder;
    GuiProbe &probe;
    RandomService &answers;
    RandomChoice &choose;
};

} // namespace tideloft::tests
