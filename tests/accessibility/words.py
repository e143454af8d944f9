"""What the client calls things, in either of its languages."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

MESSAGE, SERVER = "Hello Bob", "Harbour"  # what people write

SWEDISH = {
    "🇬🇧   English": "🇸🇪   Svenska",
    # The sign-in page.
    "Language": "Språk",
    "Language: English": "Språk: Svenska",
    "Username": "Användarnamn",
    "Password": "Lösenord",
    "Sign in": "Logga in",
    "Create account": "Skapa konto",
    "Please enter your username and password.": "Fyll i användarnamn och lösenord.",
    # The main page.
    "Messages": "Meddelanden",
    "Create server": "Skapa server",
    "Settings": "Inställningar",
    "New conversation": "Ny konversation",
    "➕  Start new conversation": "➕  Starta ny konversation",
    "Search or start conversation": "Sök eller starta konversation",
    "Search results": "Sökresultat",
    "Conversations": "Konversationer",
    "History": "Historik",
    "Message": "Meddelande",
    "Send": "Skicka",
    "You": "Du",
    "Recipient has no registered keys.": "Mottagaren har inga registrerade nycklar.",
    # Menus and servers.
    "Account menu": "Kontomeny",
    "Profile": "Profil",
    "Log out": "Logga ut",
    "Server menu": "Servermeny",
    "Upload server icon": "Ladda upp server-ikon",
    "Open server": "Öppna server",
    "Server chat coming soon. Select a channel from the web client.":
        "Server-chatt kommer snart. Välj en kanal från webklienten.",
    # Dialogs.
    "Server name": "Servernamn",
    "Description (optional)": "Beskrivning (valfritt)",
    "Cancel": "Avbryt",
    "Quillory — Privacy": "Quillory — Integritet",
    "Public profile": "Offentlig profil",
    "Save": "Spara",
    "Choose profile picture": "Välj profilbild",
    "File name:": "Filnamn:",
    "Parent Directory": "Överordnad mapp",
    "Files": "Filer",
    # The settings.
    "←  Back to chat": "←  Tillbaka till chatten",
    "Account": "Konto",
    "Profile picture": "Profilbild",
    "✓ Picture updated": "✓ Bild uppdaterad",
    "Display name": "Visningsnamn",
    "Save changes": "Spara ändringar",
    "Read receipts": "Läskvitton",
    "Typing indicator": "Skrivindikator",
    "Security": "Säkerhet",
    "2FA enabled": "2FA aktiverad",
    "View all": "Visa alla",
    "Notifications": "Notiser",
    "Sound": "Ljud",
    "Mentions": "Omnämnanden",
    "Chat": "Chatt",
    "Compact mode": "Kompakt läge",
    "Save drafts": "Spara utkast",
    "Appearance": "Utseende",
    "Light": "Ljust",
    "Green": "Grön",
    "Animations": "Animeringar",
    "Advanced": "Avancerat",
    "Clear": "Rensa",
    "Cache cleared.": "Cache rensad.",
    "Developer mode": "Utvecklarläge",
    "About TideLoft": "Om TideLoft",
}
# What both languages have the same word for, and names.
SHARED = ("TideLoft", "Quillory", "Bio", "Privacy", "🔒  Privacy", "System", "OK", "Svenska", "English",
          "👤  bob", "👤  carol", SERVER,
          "Kom ihåg mig i 30 dagar")  # made before the language is known, and left as it is
# Pages of both languages at once, and of the toolkit's.
MIXED = ("language question", "file dialog")


def words_of(language):
    """The words of LANGUAGE by the English ones."""
    own = SWEDISH if language == "Swedish" else {word: word for word in SWEDISH}
    return {**own, **{word: word for word in SHARED}}


def untranslated(heard):
    """The controls that were HEARD, as (page, role, name), in every language with the same name."""
    common = set.intersection(*heard)
    return sorted({(role, name) for page, role, name in common
                   if page not in MIXED and name not in SHARED and MESSAGE not in name})
