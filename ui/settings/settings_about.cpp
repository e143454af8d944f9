// The About section.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/settings/settings_rows.h"
#include "ui/settings/settings_section.h"
#include "ui/settings/settings_sections.h"
#include "ui/style/settings_styles.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QLabel *makeCentred(const QString &text, const QString &styleSheet, QWidget *page)
{
    auto *label = makeStyledLabel(text, styleSheet, page);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

QHBoxLayout *makeFact(const QString &name, const QString &value, QWidget *card)
{
    auto *label = makeStyledLabel(name, style::aboutLabel, card);
    auto *shown = new ElidedLabel(value, card); // the name of a host may be longer than the page is wide
    shown->setStyleSheet(style::aboutValue);
    auto *layout = new QHBoxLayout;
    layout->setContentsMargins(16, 10, 16, 10);
    layout->addWidget(label);
    layout->addStretch();
    layout->addWidget(shown);
    return layout;
}

} // namespace

QWidget *buildSettingsAbout(const SectionContext &context, const QString &service)
{
    SettingsSection section({}, context.language, context.parent);
    auto *badge = makeCentred(u"TL"_s, style::aboutBadge, section.content());
    badge->setFixedSize(72, 72);
    auto *place = new QWidget(section.content());
    auto *layout = makeRowLayout(place);
    layout->addStretch();
    layout->addWidget(badge);
    layout->addStretch();
    section.add(place);
    section.add(makeCentred(u"TideLoft"_s, style::aboutName, section.content()));
    section.add(
        makeCentred(QStringLiteral("Version " TIDELOFT_VERSION), style::aboutVersion, section.content()));
    section.add(
        makeCentred(chooseText(context.language, u"Privat. Säker. Snabb."_s, u"Private. Secure. Fast."_s),
                    style::aboutMotto, section.content()));
    QWidget *card = section.addCard();
    QVBoxLayout *facts = columnOf(card);
    facts->addLayout(makeFact(chooseText(context.language, u"Kryptering"_s, u"Encryption"_s),
                              u"RSA-2048 + AES-256-GCM"_s, card));
    facts->addLayout(
        makeFact(chooseText(context.language, u"Protokoll"_s, u"Protocol"_s), u"TLS 1.3"_s, card));
    facts->addLayout(makeFact(u"Backend"_s, u"TideLoft service (%1)"_s.arg(service), card));
    facts->addLayout(makeFact(chooseText(context.language, u"Klient"_s, u"Client"_s),
                              u"Qt "_s + QString::fromLatin1(qVersion()), card));
    facts->addLayout(makeFact(chooseText(context.language, u"Licens"_s, u"License"_s), u"MIT"_s, card));
    return section.finish();
}

} // namespace tideloft::ui
