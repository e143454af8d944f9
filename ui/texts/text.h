// The two languages of the user interface, and the choice between a text's two versions.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui
{

/// The index of a language in the sign-in page's selector, and the form in which it travels in the program.
enum class Language { Swedish = 0, English = 1 };

/// Index 1 is English; every other index, "none" (-1) included, is Swedish.
Language languageFromIndex(int index);

/// A text in both languages.
struct LocalizedText {
    QString swedish;
    QString english;

    const QString &in(Language language) const { return language == Language::English ? english : swedish; }
};

/// The version of a text that LANGUAGE asks for.
QString chooseText(Language language, const QString &swedish, const QString &english);

} // namespace tideloft::ui
