// What a person types whose traces are looked for, and in which order the person's service sees it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace tideloft::tests
{

inline const QString typedPassword = QStringLiteral("Saltmarsh-9f3c1b-Lantern");
inline const QString wrongPassword = QStringLiteral("Saltmarsh-000000-Lantern");
/// Written by bob, and read.
inline const QStringList receivedTexts{QStringLiteral("The first one from bob: quay seventeen"),
                                       QStringLiteral("Ännu ett från bob: två båtar, ⚓ fyra åror"),
                                       QStringLiteral("The third one from bob: bring a lantern")};
/// Written by this person, and sent.
inline const QStringList sentTexts{QStringLiteral("My answer to bob is a quiet yes"),
                                   QStringLiteral("My second answer names the harbour"),
                                   QStringLiteral("My third answer is for bob alone")};
/// The service takes no copy of it.
inline const QString refusedText = QStringLiteral("A refused message, kept in the line");
/// Written for a key that is none.
inline const QString unsealedText = QStringLiteral("A message that cannot be sealed at all");
/// Typed into the search while all of that is open. The service holds its answer.
inline const QString lookingAround = QStringLiteral("looking-around");

} // namespace tideloft::tests
