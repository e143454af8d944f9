// What tests of pictures share: files to choose, a person at the file dialog, and what is on the screen then.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gui/tst_pending_timers.h"
#include "tests/gui/tst_settings_probe.h"
#include "tests/support/net/upload_wire.h"
#include "tests/support/person.h"
#include "tests/support/popups.h"

#include <QTemporaryDir>

class QFileDialog;
class QMessageBox;

namespace tideloft::tests
{

/// Before the first window of a test program: the toolkit's own file dialog, whatever the desktop has, and
/// the key pair.
void prepareForFileDialogs();

/// Files to choose, in a folder of their own.
class PictureFolder
{
public:
    PictureFolder(); ///< written out, so that a folder may be const
    QString path(const QString &name = {}) const { return folder.filePath(name); }
    QString write(const QString &name, const QByteArray &content) const;
    QString writeOfSize(const QString &name, qint64 size) const; ///< zeros
    QString
    writeWidePicture(const QString &name) const; ///< 200 x 100: a quarter red, half green, a quarter blue

private:
    QTemporaryDir folder;
};

QByteArray contentOf(const QString &path); ///< empty where it cannot be read

/// Presses the keys of TEXT with the keyboard's way through WINDOW: a popup in front of it gets them first.
void typeInto(const QWidget &window, const QString &text);
void press(const QWidget &window, Qt::Key key);
/// Types PATH over the name that DIALOG shows, and presses Return. False: the dialog itself refused it in a
/// box, which is closed by then.
bool choosePath(const QFileDialog &dialog, const QString &path);

/// Clicks on the footer's picture and chooses PATH. False: no dialog came up, or it did not close.
bool chooseAvatar(const SettingsProbe &probe, const QString &path);

/// The message box in front, waited for; null if none came.
QMessageBox *waitForMessage();
/// The message boxes on screen.
qsizetype messageCount();

} // namespace tideloft::tests
