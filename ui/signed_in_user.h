// Who is signed in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QString>

namespace tideloft::ui
{

/// The signed-in user, and who was signed in before: what one user leaves in the window is none of the next.
class SignedInUser
{
public:
    /// Takes the user of the profile reply ME. True if it is the user who was here before.
    bool signIn(const QJsonObject &me);
    void signOut() { myUsername.clear(); }

    /// In small letters; empty while nobody is signed in.
    [[nodiscard]] const QString &username() const { return myUsername; }
    /// Who is signed in, or was last.
    [[nodiscard]] const QString &lastUsername() const { return latest; }

    /// The user has chosen a picture, which is uploaded now.
    void beginPicture() { pictureOwner = myUsername; }
    /// Whether the picture that was uploaded last may be shown: who chose it may have logged out since.
    [[nodiscard]] bool ownsPicture() const { return pictureOwner.isEmpty() || pictureOwner == myUsername; }

private:
    QString myUsername;
    QString latest;
    QString pictureOwner;
};

} // namespace tideloft::ui
