// The toolkit's own words, in dialogs for files and in text menus, in the language of the window.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

#include <QLibraryInfo>
#include <QTranslator>

#include <atomic>

namespace tideloft::ui
{

/// Translates what the toolkit's widgets say, once it is installed. The texts of its network and of
/// everything else stay as they are: an error is shown in the toolkit's own wording.
class ToolkitTranslator : public QTranslator
{
    Q_OBJECT

public:
    /// FOLDER may hold the toolkit's own translations, for words that are not known here.
    explicit ToolkitTranslator(const QString &folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath));

    /// Swedish until another language is asked for. What is on the screen already stays as it is.
    void speak(Language language) { spoken = language; }

    QString translate(const char *context, const char *sourceText, const char *disambiguation = nullptr,
                      int n = -1) const override;

private:
    std::atomic<Language> spoken = Language::Swedish; ///< asked for in the threads of the network, too
    QTranslator others;
};

} // namespace tideloft::ui
