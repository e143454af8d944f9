// Texts about a message that does not open.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/unreadable_message.h"

#include "ui/texts/bounded_text.h"

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

// The reason holds a device identifier, which the service may know at any length.
constexpr TextLimits reasonLimits{.characters = 240, .lines = 1, .emoji = 20, .effort = 10'000};

// A key file that cannot be read, or is none.
bool isAboutKeyFile(const QString &reason)
{
    return reason.contains(u"private key"_s, Qt::CaseInsensitive)
           || reason.startsWith(u"Could not open file"_s);
}

// The same words stand for another key than the message was sealed for, and for a damaged message.
bool isAboutKeyOrMessage(const QString &reason)
{
    return reason.startsWith(u"RSA"_s) || reason == u"Invalid base64 data."_s;
}

QString advice(const QString &reason, Language language)
{
    if (reason.startsWith(u"No encrypted key found"_s))
        return chooseText(language, u"Läs det på enheten som det skrevs för."_s,
                          u"Read it on the device that it was written for."_s);
    if (isAboutKeyOrMessage(reason))
        return chooseText(language, u"Lägg tillbaka nyckelfilerna, eller be avsändaren skicka det igen."_s,
                          u"Put the key files back, or ask the sender to send it again."_s);
    if (isAboutKeyFile(reason))
        return chooseText(language, u"Lägg tillbaka nyckelfilerna, eller logga in igen."_s,
                          u"Put the key files back, or sign in again."_s);
    return chooseText(language, u"Be avsändaren skicka det igen."_s, u"Ask the sender to send it again."_s);
}

} // namespace

QString unreadableText(Language language)
{
    return chooseText(language, u"🔒 Meddelandet kunde inte visas"_s, u"🔒 Message could not be displayed"_s);
}

QString unreadablePreview(Language language)
{
    return chooseText(language, u"🔒 Krypterat meddelande"_s, u"🔒 Encrypted message"_s);
}

QString messageTrouble(const QString &reason, Language language)
{
    return firstPart(inOneLine(reason), reasonLimits) + u' ' + advice(reason, language);
}

} // namespace tideloft::ui
