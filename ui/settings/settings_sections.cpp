// The sections of the settings view that are made of rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/settings/settings_sections.h"

#include "ui/settings/settings_rows.h"
#include "ui/settings/settings_section.h"
#include "ui/settings/settings_switches.h"
#include "ui/style/settings_styles.h"
#include "ui/texts/bounded_text.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

// The button shows its message and does nothing else. What would end or undo something looks dangerous. The
// page keeps the language that it was made in, the message is in that of the moment.
void addAction(const SectionContext &context, QWidget *card, const LocalizedText &label,
               const LocalizedText &button, Severity severity, const LocalizedText &message)
{
    const QString styleSheet = severity == Severity::Warning ? style::dangerButton : QString();
    columnOf(card)->addWidget(makeActionRow(label.in(context.language), button.in(context.language),
                                            styleSheet, card,
                                            [window = context.window, now = context.currentLanguage, severity,
                                             message] { showMessage(window, severity, message.in(now())); }));
}

} // namespace

QWidget *buildSettingsKonto(const SectionContext &context, const QString &username,
                            const CardBuilder &makeProfileCard)
{
    SettingsSection section({u"Konto"_s, u"Account"_s}, context.language, context.parent);
    section.add(makeProfileCard(section.content()));
    section.addHeader({u"KONTOINFORMATION"_s, u"ACCOUNT INFO"_s});
    QWidget *card = section.addCard();
    columnOf(card)->addWidget(makeTextRow(chooseText(context.language, u"Användarnamn"_s, u"Username"_s), {},
                                          firstPart(username, nameLimits), card));
    columnOf(card)->addWidget(makeTextRow(u"Bio"_s,
                                          chooseText(context.language, u"Skriv något om dig själv..."_s,
                                                     u"Write something about yourself..."_s),
                                          {}, card));
    section.addHeader({u"LÖSENORD"_s, u"PASSWORD"_s});
    addAction(context, section.addCard(), {u"Ändra lösenord"_s, u"Change password"_s},
              {u"Ändra"_s, u"Change"_s}, Severity::Information,
              {u"Öppnar lösenordsändring..."_s, u"Opening password change..."_s});
    section.addHeader({u"KONTO"_s, u"ACCOUNT"_s});
    addAction(context, section.addCard(), {u"Logga ut från alla enheter"_s, u"Log out from all devices"_s},
              {u"Logga ut alla"_s, u"Log out all"_s}, Severity::Warning,
              {u"Loggar ut alla sessioner..."_s, u"Logging out all sessions..."_s});
    return section.finish();
}

QWidget *buildSettingsPrivacy(const SectionContext &context)
{
    SettingsSection section({u"Privacy"_s, u"Privacy"_s}, context.language, context.parent);
    section.addSwitches(privacySwitches());
    return section.finish();
}

QWidget *buildSettingsSecurity(const SectionContext &context)
{
    SettingsSection section({u"Säkerhet"_s, u"Security"_s}, context.language, context.parent);
    section.add(makeShieldCard(context.language, section.content()));
    section.addSwitches(securitySwitches());
    section.addHeader({u"ENHETER"_s, u"DEVICES"_s});
    QWidget *devices = section.addCard();
    addAction(context, devices, {u"Aktiva enheter"_s, u"Active devices"_s}, {u"Visa alla"_s, u"View all"_s},
              Severity::Information, {u"Visar aktiva enheter..."_s, u"Showing active devices..."_s});
    addAction(context, devices, {u"Logga ut alla andra sessioner"_s, u"Log out all other sessions"_s},
              {u"Logga ut"_s, u"Log out"_s}, Severity::Warning,
              {u"Logging out all sessions..."_s, u"Logging out all sessions..."_s});
    section.addHeader({u"SENASTE AKTIVITET"_s, u"RECENT ACTIVITY"_s});
    QWidget *activity = section.addCard();
    auto *line = makeStyledLabel(chooseText(context.language, u"Senaste inloggningar visas här"_s,
                                            u"Recent logins will appear here"_s),
                                 style::quietLine, activity);
    columnOf(activity)->setContentsMargins(16, 12, 16, 12);
    columnOf(activity)->addWidget(line);
    return section.finish();
}

QWidget *buildSettingsNotifications(const SectionContext &context)
{
    SettingsSection section({u"Notiser"_s, u"Notifications"_s}, context.language, context.parent);
    section.addSwitches(notificationSwitches());
    return section.finish();
}

QWidget *buildSettingsChat(const SectionContext &context)
{
    SettingsSection section({u"Chatt"_s, u"Chat"_s}, context.language, context.parent);
    section.addSwitches(chatSwitches());
    return section.finish();
}

QWidget *buildSettingsAdvanced(const SectionContext &context)
{
    SettingsSection section({u"Avancerat"_s, u"Advanced"_s}, context.language, context.parent);
    QWidget *developer = section.addSwitches(advancedSwitches());
    addAction(context, developer, {u"Rensa lokal cache"_s, u"Clear local cache"_s}, {u"Rensa"_s, u"Clear"_s},
              Severity::Information, {u"Cache rensad."_s, u"Cache cleared."_s});
    addAction(context, developer, {u"Återställ inställningar"_s, u"Reset settings"_s},
              {u"Återställ"_s, u"Reset"_s}, Severity::Warning, {u"Återställer..."_s, u"Resetting..."_s});
    return section.finish();
}

} // namespace tideloft::ui
