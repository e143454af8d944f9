// Building and answering the language question.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/language_select_dialog.h"

#include "app/settings_store.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::app
{

namespace
{

const QString question = u"Choose your language / Välj ditt språk"_s;

const QString dialogStyle = uR"(
QDialog { background: transparent; }
#card { background: #111e2a; border: 1px solid #1a2d40; border-radius: 16px; }
#logo { background: #2e82e6; border-radius: 10px; color: #ffffff; font-size: 13px; font-weight: 800; }
#brandName { font-size: 20px; font-weight: 800; color: #dce9f5;
    font-family: "Segoe UI", system-ui, sans-serif; letter-spacing: 0.5px; }
#subtitle { font-size: 12px; color: #4a6e8a; font-family: "Segoe UI", system-ui, sans-serif; }
QPushButton#langBtn { background: #0f1923; border: 1px solid #1a2d40; border-radius: 10px; color: #c8d8e8;
    font-size: 14px; font-family: "Segoe UI", system-ui, sans-serif; text-align: left; padding-left: 16px; }
QPushButton#langBtn:hover { background: #162230; border-color: #2e82e6; color: #ffffff; }
QPushButton#langBtn:pressed { background: #2e82e6; color: #ffffff; }
)"_s;

QPushButton *makeLanguageButton(const QString &text, QWidget *card)
{
    auto *button = ui::makeButton(text, card, u"langBtn"_s);
    button->setFixedHeight(50);
    return button;
}

QHBoxLayout *makeBrandRow(QWidget *card)
{
    auto *logo = ui::makeLabel(u"TL"_s, card, u"logo"_s);
    logo->setFixedSize(36, 36);
    logo->setAlignment(Qt::AlignCenter);
    auto *line = new QHBoxLayout;
    line->setSpacing(10);
    line->addWidget(logo);
    line->addWidget(ui::makeLabel(u"TideLoft"_s, card, u"brandName"_s));
    line->addStretch();
    return line;
}

} // namespace

LanguageSelectDialog::LanguageSelectDialog(QWidget *parent) : QDialog(parent)
{
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setFixedSize(420, 300);
    setAttribute(Qt::WA_TranslucentBackground);
    setStyleSheet(dialogStyle);
    ui::makeColumnLayout(this)->addWidget(buildCard());
    setAccessibleName(question); // the window has no title to be called by
}

QWidget *LanguageSelectDialog::buildCard()
{
    auto *card = ui::makeBox(this, u"card"_s);
    auto *swedish = makeLanguageButton(u"🇸🇪   Svenska"_s, card);
    auto *english = makeLanguageButton(u"🇬🇧   English"_s, card);
    auto *column = ui::makeColumnLayout(card);
    column->setContentsMargins(36, 32, 36, 32);
    column->addLayout(makeBrandRow(card));
    column->addSpacing(6);
    column->addWidget(ui::makeLabel(question, card, u"subtitle"_s));
    column->addSpacing(24);
    column->addWidget(swedish);
    column->addSpacing(8);
    column->addWidget(english);
    connect(swedish, &QPushButton::clicked, this, [this] { choose(0, u"sv"_s); });
    connect(english, &QPushButton::clicked, this, [this] { choose(1, u"en"_s); });
    return card;
}

void LanguageSelectDialog::choose(qint32 index, const QString &language)
{
    chosenIndex = index;
    if (const auto settings = openSettings()) {
        settings->setValue(u"language"_s, language);
        settings->sync(); // on disk before anything else can end the program
    }
    accept();
}

} // namespace tideloft::app
