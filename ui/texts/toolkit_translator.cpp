// The Swedish words for the widgets that this client shows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/texts/toolkit_translator.h"

#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

struct Word {
    std::string_view context;
    std::string_view english;
    QStringView swedish;
};

// Debian 12 has a Swedish translation of an older toolkit only, which knows "Paste" but neither "Cancel" nor
// "Look in:". So the words of the dialog for files, of text menus and of buttons stand here.
constexpr std::array words{
    Word{"QLineEdit", "&Undo", u"&Ångra"},
    Word{"QLineEdit", "&Redo", u"&Gör om"},
    Word{"QLineEdit", "Cu&t", u"Klipp &ut"},
    Word{"QLineEdit", "&Copy", u"&Kopiera"},
    Word{"QLineEdit", "&Paste", u"Klistra &in"},
    Word{"QLineEdit", "Delete", u"Ta bort"},
    Word{"QLineEdit", "Select All", u"Markera allt"},
    Word{"QWidgetTextControl", "&Undo", u"&Ångra"},
    Word{"QWidgetTextControl", "&Redo", u"&Gör om"},
    Word{"QWidgetTextControl", "Cu&t", u"Klipp &ut"},
    Word{"QWidgetTextControl", "&Copy", u"&Kopiera"},
    Word{"QWidgetTextControl", "Copy &Link Location", u"Kopiera &länkadress"},
    Word{"QWidgetTextControl", "&Paste", u"Klistra &in"},
    Word{"QWidgetTextControl", "Delete", u"Ta bort"},
    Word{"QWidgetTextControl", "Select All", u"Markera allt"},
    Word{"QPlatformTheme", "Cancel", u"Avbryt"},
    Word{"QPlatformTheme", "Open", u"Öppna"},
    Word{"QPlatformTheme", "&Yes", u"&Ja"},
    Word{"QPlatformTheme", "&No", u"&Nej"},
    Word{"QGnomeTheme", "&Cancel", u"&Avbryt"},
    Word{"QFileDialog", "Look in:", u"Leta i:"},
    Word{"QFileDialog", "File &name:", u"Fil&namn:"},
    Word{"QFileDialog", "Files of type:", u"Filtyp:"},
    Word{"QFileDialog", "Directory:", u"Mapp:"},
    Word{"QFileDialog", "Directories", u"Mappar"},
    Word{"QFileDialog", "Files", u"Filer"},
    Word{"QFileDialog", "All Files (*)", u"Alla filer (*)"},
    Word{"QFileDialog", "Open", u"Öppna"},
    Word{"QFileDialog", "&Open", u"&Öppna"},
    Word{"QFileDialog", "&Choose", u"&Välj"},
    Word{"QFileDialog", "Back", u"Bakåt"},
    Word{"QFileDialog", "Go back", u"Gå bakåt"},
    Word{"QFileDialog", "Forward", u"Framåt"},
    Word{"QFileDialog", "Go forward", u"Gå framåt"},
    Word{"QFileDialog", "Parent Directory", u"Överordnad mapp"},
    Word{"QFileDialog", "Go to the parent directory", u"Gå till den överordnade mappen"},
    Word{"QFileDialog", "Create New Folder", u"Skapa ny mapp"},
    Word{"QFileDialog", "Create a New Folder", u"Skapa en ny mapp"},
    Word{"QFileDialog", "New Folder", u"Ny mapp"},
    Word{"QFileDialog", "&New Folder", u"&Ny mapp"},
    Word{"QFileDialog", "List View", u"Listvy"},
    Word{"QFileDialog", "Change to list view mode", u"Byt till listvy"},
    Word{"QFileDialog", "Detail View", u"Detaljvy"},
    Word{"QFileDialog", "Change to detail view mode", u"Byt till detaljvy"},
    Word{"QFileDialog", "Sidebar", u"Sidopanel"},
    Word{"QFileDialog", "List of places and bookmarks", u"Lista över platser och bokmärken"},
    Word{"QFileDialog", "Recent Places", u"Senaste platser"},
    Word{"QFileDialog", "Show &hidden files", u"Visa &dolda filer"},
    Word{"QFileDialog", "Show ", u"Visa "},
    Word{"QFileDialog", "&Rename", u"&Byt namn"},
    Word{"QFileDialog", "&Delete", u"&Ta bort"},
    Word{"QFileDialog", "Delete", u"Ta bort"},
    Word{"QFileDialog", "Remove", u"Ta bort"},
    Word{"QFileDialog", "Are you sure you want to delete '%1'?", u"Vill du verkligen ta bort '%1'?"},
    Word{"QFileDialog", "'%1' is write protected.\nDo you want to delete it anyway?",
         u"'%1' är skrivskyddad.\nVill du ta bort den ändå?"},
    Word{"QFileDialog", "Could not delete directory.", u"Mappen kunde inte tas bort."},
    Word{"QFileDialog", "%1\nFile not found.\nPlease verify the correct file name was given.",
         u"%1\nFilen hittades inte.\nKontrollera att namnet är rätt."},
    Word{"QFileDialog", "%1\nDirectory not found.\nPlease verify the correct directory name was given.",
         u"%1\nMappen hittades inte.\nKontrollera att namnet är rätt."},
    Word{"QFileSystemModel", "Name", u"Namn"},
    Word{"QFileSystemModel", "Size", u"Storlek"},
    Word{"QFileSystemModel", "Type", u"Typ"},
    Word{"QFileSystemModel", "Kind", u"Typ"},
    Word{"QFileSystemModel", "Date Modified", u"Ändrad"},
    Word{"QFileSystemModel", "Computer", u"Dator"},
    Word{"QAbstractFileIconProvider", "Drive", u"Enhet"},
    Word{"QAbstractFileIconProvider", "File", u"Fil"},
    Word{"QAbstractFileIconProvider", "Folder", u"Mapp"},
    Word{"QAbstractFileIconProvider", "Unknown", u"Okänd"},
};

// In the toolkit's own translation these are the widgets that this client shows.
constexpr std::array<std::string_view, 8> ownContexts{"QFileDialog", "QFileSystemModel",  "QGnomeTheme",
                                                      "QLineEdit",   "QMessageBox",       "QPlatformTheme",
                                                      "QScrollBar",  "QWidgetTextControl"};

} // namespace

// Nobody has to install those translations, so their absence is no error.
ToolkitTranslator::ToolkitTranslator(const QString &folder)
{
    if (!others.load(u"qtbase_sv"_s, folder))
        (void)others.load(u"qt_sv"_s, folder);
}

// A null text leaves the toolkit's word as it is.
QString ToolkitTranslator::translate(const char *context, const char *sourceText, const char *disambiguation,
                                     int n) const
{
    if (spoken != Language::Swedish || !context || !sourceText)
        return {};
    const std::string_view place = context;
    const std::string_view english = sourceText;
    const auto *known = std::find_if(words.begin(), words.end(), [&](const Word &word) {
        return word.context == place && word.english == english;
    });
    if (known != words.end())
        return known->swedish.toString();
    if (std::find(ownContexts.begin(), ownContexts.end(), place) == ownContexts.end())
        return {};
    const QString other = others.translate(context, sourceText, disambiguation, n);
    return other.isEmpty() ? QString() : other;
}

} // namespace tideloft::ui
