// The style sheet: one template, filled in with the colours of the dark or the light palette.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/style/style_sheets.h"

#include "ui/style/palettes.h"

#include <QMap>

#include <algorithm>

namespace tideloft::ui
{

using namespace Qt::StringLiterals;

namespace
{

// QWidget gets no background: every child would paint it over its parent's.
// Among rules of equal weight the last one wins, so :hover stands before :focus, :checked and :selected.
// A line that ends in a backslash goes on behind the indentation of the next one.
constexpr QStringView sheetTemplate = uR"(
QMainWindow, QWidget { font-family: "Segoe UI", system-ui, sans-serif; font-size: 13px; color: $text; }
QMainWindow { background: $window; }

/* Sign-in page */
#authTopbar { background: $sign-in-card; border-bottom: 1px solid $topbar-border; }
#tbLogo { background: #5b5bd6; color: #fff; border-radius: 5px; font-size: 10px; font-weight: 700; }
#tbLogoName { color: $logo-name; font-size: 12px; font-weight: 600; }
#authCenter { background: transparent; }
#authCard { background: $sign-in-card; border: 1px solid $sign-in-card-border; border-radius: 12px; }
#cardBrandIco {
    background: #5b5bd6; color: #fff; border-radius: 10px; font-size: 16px; font-weight: 700;
    min-width: 40px; max-width: 40px; min-height: 40px; max-height: 40px;
}
#authTitle { color: $text; font-size: 15px; font-weight: 600; }
#authSubtitle { color: $sign-in-subtitle; font-size: 11px; }
#secBadge { background: rgba(37,168,104,0.08); border: 1px solid $badge-border; border-radius: 20px; }
/* A radius above half the height is dropped by Qt: this one keeps the low badge a pill */
QWidget#secBadge { border-radius: 10px; min-height: 18px; }
#secBadgeDot {
    background: #25a868; border-radius: 3px;
    min-width: 6px; max-width: 6px; min-height: 6px; max-height: 6px;
}
#secBadgeText { color: $badge-text; font-size: 10px; font-weight: 600; }
#authInput {
    background: $field; border: 1px solid $field-border; border-radius: 6px;
    padding: 8px 11px; font-size: 12px; selection-background-color: #5b5bd6;
}
#authInput:hover { border-color: $field-border-hover; }
#authInput:focus { background: $field-focus; border-color: $field-border-focus; }
#authError {
    background: $error; color: $error-text;
    border-radius: 6px; padding: 7px 10px; font-size: 11px;
}
#authDivider { border: none; border-top: 1px solid $divider; max-height: 1px; }
#authDividerText { color: $divider-text; font-size: 11px; padding: 0 8px; }
#primaryButton {
    background: #3b8beb; color: #fff; border: none; border-radius: 7px; font-size: 12px; font-weight: 600;
}
#primaryButton:hover { background: #5aa0f5; }
#primaryButton:pressed { background: #1a6acc; }
#primaryButton:disabled { background: $button-disabled; color: $button-disabled-text; }
#ghostButton {
    background: transparent; color: $quiet-text; border: 1px solid $ghost-button-border;
    border-radius: 7px; font-size: 12px;
}
#ghostButton:hover { background: $ghost-button-hover; }
#langCombo {
    background: $sign-in-card; color: $quiet-text; border-radius: 6px; padding: 4px 10px; font-size: 11px;
    combobox-popup: 0;
}
#langCombo::drop-down { width: 18px; border: none; }
/* A triangle without a picture file: a sector that opens upwards from the middle of the lower edge */
#langCombo::down-arrow {
    width: 8px; height: 4px;
    background: qconicalgradient(cx:0.5,cy:1,angle:0,stop:0 transparent,
        stop:0.125 transparent,stop:0.126 $quiet-text,stop:0.374 $quiet-text,
        stop:0.375 transparent,stop:1 transparent);
}
#langCombo QAbstractItemView {
    background: $popup; color: $soft-text; border: 1px solid $popup-border;
    selection-background-color: $popup-selected; selection-color: $popup-selected-text;
}

/* Rail */
#rail { background: $rail; border-right: 1px solid $rail-border; }
#railLogo {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);
    color: #fff; border-radius: 10px; font-size: 13px; font-weight: 800;
}
#railBtn {
    background: transparent; color: $rail-button-text; border: none; border-radius: 10px; \
    font-size: 16px; padding: 0;
}
#railBtn:hover { background: $rail-button-hover; color: $lively-text; }
#railBtn:checked { background: $rail-button-checked; color: $rail-button-checked-text; }

/* Sidebar */
#leftSidebar { background: $panel; border-right: 1px solid $panel-border; }
/* The three blocks lie over the right border of the sidebar and repeat it */
#sideHeader, #searchWrap {
    background: $panel; border-bottom: 1px solid $panel-border; border-right: 1px solid $panel-border;
}
#sidebarTitle { color: $strong-text; font-size: 15px; font-weight: 700; }
#addDmBtn { background: $soft-button; color: $lively-text; border: none; \
    border-radius: 8px; font-size: 18px; }
#addDmBtn:hover { background: $soft-button-hover; color: $add-button-hover-text; }
#sideSearch {
    background: $search; color: $soft-text; border: 1px solid $search-border;
    border-radius: 8px; padding: 6px 12px; font-size: 12px;
}
#sideSearch:focus { background: $search-open; border-color: #3b8beb; }
#dmList { background: transparent; border: none; padding: 6px 0; outline: none; }
#dmList::item { border-radius: 8px; margin: 2px 8px; border-left: 3px solid transparent; }
#dmList::item:hover { background: $conversation-hover; }
#dmList::item:selected { background: $conversation-selected; border-left: 3px solid #3b8beb; }
#searchResults {
    background: $search-open; border: 1px solid $box-border; border-radius: 10px;
    margin: 0 8px 8px; padding: 6px 0; outline: none;
}
#searchResults::item { color: $result-text; padding: 10px 14px; border-radius: 6px; margin: 2px 6px; }
#searchResults::item:hover { background: $result-hover; color: $result-hover-text; }
#searchResults::item:selected { background: $result-selected; color: $result-selected-text; }
#sideFooter { background: $footer; \
    border-top: 1px solid $panel-border; border-right: 1px solid $panel-border; }
#sideFooter:hover { background: $footer-hover; }
/* #footerAvatar styled inline to allow pixmap override */
#myName { color: $strong-text; font-size: 13px; font-weight: 700; }
#myStatus { color: $online; font-size: 11px; }
#footerChevron { color: $footer-chevron; font-size: 18px; }

/* Open conversation */
#centerPanel { background: $chat; }
#chatHeader { background: $panel; border-bottom: 1px solid $panel-border; }
#headerLine { background: $panel-border; border: none; max-height: 1px; }
#peerAvatar {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 $peer-avatar,stop:1 $peer-avatar-end);
    color: $peer-avatar-text; border-radius: 18px; font-size: 12px; font-weight: 700;
}
#centerTitle { color: $peer-name; font-size: 15px; font-weight: 700; }
#centerSubtitle { color: $online; font-size: 11px; }
#messageList { background: $chat; border: none; padding: 8px 0; }
#messageList::item { background: transparent; border: none; padding: 0; margin: 0; }
#inputArea { background: $input-area; border-top: 1px solid $input-area-border; }
#msgInput {
    background: $message-field; color: $strong-text; border: 1px solid $message-field-border;
    border-radius: 10px; padding: 0px 14px; font-size: 13px;
}
#msgInput:focus { background: $message-field-focus; border: 1px solid #3b8beb; }
#sendButton {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);
    color: #fff; border: none; border-radius: 10px; font-size: 16px;
}
#sendButton:hover { background: #5aa0f5; }
#sendButton:pressed { background: #1a6acc; }

/* No open conversation */
#emptyState { background: $chat; }
#emptyInner { background: $empty-card; border: 1px solid $box-border; border-radius: 16px; }
#emptyIconContainer {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 $empty-icon,stop:1 $empty-icon-end); \
    border-radius: 40px;
}
#emptyIcon { background: transparent; font-size: 36px; }
#emptyTitle { background: $empty-card; color: $strong-text; font-size: 18px; font-weight: 700; }
#emptySubtitle { background: $empty-card; color: $empty-subtitle; font-size: 13px; }
#emptyHints { background: $empty-card; }$hint-rows
#emptyActionBtn {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);
    color: #fff; border: none; border-radius: 10px; font-size: 13px; font-weight: 700; padding: 0 24px;
}
#emptyActionBtn:hover { background: #5aa0f5; }

/* Settings */
#settingsNav { background: $settings-nav; border-right: 1px solid $settings-nav-border; }
QScrollArea, QScrollArea > QWidget > QWidget { background: $page; border: none; }
#settingsCard { background: $settings-card;$settings-card-border border-radius: 10px; }
#settingsRow { background: $settings-card; border-radius: 8px; }
#settingsSectionHeader { background: transparent; }

/* Menus, tool tips, scroll bars */
QMenu { background: $popup; border: 1px solid $popup-border; border-radius: 10px; padding: 6px 0; }
QMenu::item { color: $soft-text; padding: 10px 20px; }
QMenu::item:selected { background: $popup-selected; color: $popup-selected-text; }
QMenu::separator { background: $menu-separator; height: 1px; margin: 4px 10px; }
QToolTip {
    background: $popup; color: $text; border: 1px solid $popup-border;
    border-radius: 6px; padding: 5px 9px; font-size: 12px;
}
QScrollBar:vertical { background: transparent; width: 5px; border-radius: 3px; }
QScrollBar::handle:vertical { background: $scroll-handle; border-radius: 3px; min-height: 30px; }
QScrollBar::handle:vertical:hover { background: #3b8beb; }
QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }
QScrollBar:horizontal { height: 0; }

/* The toolkit's own boxes: without these the default text colour would stand on the system's background */
QMessageBox, QFileDialog { background: $page; }
QMessageBox QPushButton, QFileDialog QPushButton {
    background: $soft-button; color: $dialog-button-text; border: 1px solid $dialog-button-border; \
    border-radius: 6px; padding: 6px 16px;
}
QMessageBox QPushButton:hover, QFileDialog QPushButton:hover { background: $soft-button-hover; }
QFileDialog QLineEdit, QFileDialog QComboBox, QFileDialog QAbstractItemView {
    background: $dialog-field; color: $strong-text; border: 1px solid $box-border;
}
QFileDialog QHeaderView::section { \
    background: $dialog-field; color: $strong-text; border: none; padding: 4px 8px; }
)";

bool belongsToName(QChar character)
{
    return character.isLower() || character == u'-';
}

QString filledIn(QStringView PaletteRole::*palette)
{
    QMap<QStringView, QStringView> values;
    for (const PaletteRole &role : paletteRoles())
        values.insert(role.name, role.*palette);
    const QString text = sheetTemplate.toString().remove(u"\\\n    "_s);
    const auto parts = QStringView(text).split(u'$');
    QString sheet = parts.first().toString();
    for (const QStringView part : parts.sliced(1)) {
        const auto end = std::find_if_not(part.begin(), part.end(), belongsToName) - part.begin();
        sheet += values.value(part.first(end));
        sheet += part.sliced(end);
    }
    return sheet;
}

} // namespace

QStringView styleSheetTemplate()
{
    return sheetTemplate;
}

const QString &darkStyleSheet()
{
    static const QString sheet = filledIn(&PaletteRole::dark);
    return sheet;
}

const QString &lightStyleSheet()
{
    static const QString sheet = filledIn(&PaletteRole::light);
    return sheet;
}

QFont sheetFont(QFont font)
{
    font.setFamilies({u"Segoe UI"_s, u"system-ui"_s, u"sans-serif"_s});
    font.setPixelSize(13);
    return font;
}

} // namespace tideloft::ui
