// The light style sheet. Colours apart, a change here belongs into the dark sheet too.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/style/style_sheets.h"

namespace tideloft::ui
{

using namespace Qt::StringLiterals;

// For the order of the rules see the dark sheet. Only this sheet colours the hint rows: in the dark one
// they take the default text colour.
const QString &lightStyleSheet() // NOLINT(readability-function-size): one text
{
    static const QString sheet = uR"(
QMainWindow, QWidget { font-family: "Segoe UI", system-ui, sans-serif; font-size: 13px; color: #1a1a2e; }
QMainWindow { background: #f0f2f5; }

/* Sign-in page */
#authTopbar { background: #ffffff; border-bottom: 1px solid #e0e4ea; }
#tbLogo { background: #5b5bd6; color: #fff; border-radius: 5px; font-size: 10px; font-weight: 700; }
#tbLogoName { color: #6060a0; font-size: 12px; font-weight: 600; }
#authCenter { background: transparent; }
#authCard { background: #ffffff; border: 1px solid #e0e4ea; border-radius: 12px; }
#cardBrandIco {
    background: #5b5bd6; color: #fff; border-radius: 10px; font-size: 16px; font-weight: 700;
    min-width: 40px; max-width: 40px; min-height: 40px; max-height: 40px;
}
#authTitle { color: #1a1a2e; font-size: 15px; font-weight: 600; }
#authSubtitle { color: #8080a0; font-size: 11px; }
#secBadge { background: rgba(37,168,104,0.08); border: 1px solid rgba(37,168,104,0.30); border-radius: 20px; }
/* A radius above half the height is dropped by Qt: this one keeps the low badge a pill */
QWidget#secBadge { border-radius: 10px; min-height: 18px; }
#secBadgeDot {
    background: #25a868; border-radius: 3px;
    min-width: 6px; max-width: 6px; min-height: 6px; max-height: 6px;
}
#secBadgeText { color: #1a8a50; font-size: 10px; font-weight: 600; }
#authInput {
    background: #f5f7fa; border: 1px solid #d0d4dc; border-radius: 6px;
    padding: 8px 11px; font-size: 12px; selection-background-color: #5b5bd6;
}
#authInput:hover { border-color: #b0b8c8; }
#authInput:focus { background: #ffffff; border-color: #3b8beb; }
#authError {
    background: rgba(200,50,50,0.08); color: #c03030;
    border-radius: 6px; padding: 7px 10px; font-size: 11px;
}
#authDivider { border: none; border-top: 1px solid #e0e4ea; max-height: 1px; }
#authDividerText { color: #a0a8b8; font-size: 11px; padding: 0 8px; }
#primaryButton {
    background: #3b8beb; color: #fff; border: none; border-radius: 7px; font-size: 12px; font-weight: 600;
}
#primaryButton:hover { background: #5aa0f5; }
#primaryButton:pressed { background: #1a6acc; }
#primaryButton:disabled { background: #c0cce0; color: #8090a0; }
#ghostButton {
    background: transparent; color: #6070a0; border: 1px solid #d0d8e8;
    border-radius: 7px; font-size: 12px;
}
#ghostButton:hover { background: #f0f4fa; }
#langCombo {
    background: #ffffff; color: #6070a0; border-radius: 6px; padding: 4px 10px; font-size: 11px;
    combobox-popup: 0;
}
#langCombo::drop-down { width: 18px; border: none; }
/* A triangle without a picture file: a sector that opens upwards from the middle of the lower edge */
#langCombo::down-arrow {
    width: 8px; height: 4px;
    background: qconicalgradient(cx:0.5,cy:1,angle:0,stop:0 transparent,
        stop:0.125 transparent,stop:0.126 #6070a0,stop:0.374 #6070a0,
        stop:0.375 transparent,stop:1 transparent);
}
#langCombo QAbstractItemView {
    background: #ffffff; color: #1a1a2e; border: 1px solid #d0d8e8;
    selection-background-color: #e8f0fc; selection-color: #0a2060;
}

/* Rail */
#rail { background: #e8ecf2; border-right: 1px solid #d0d8e4; }
#railLogo {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);
    color: #fff; border-radius: 10px; font-size: 13px; font-weight: 800;
}
#railBtn {
    background: transparent; color: #7090b0; border: none; border-radius: 10px; font-size: 16px; padding: 0;
}
#railBtn:hover { background: #d8e4f0; color: #3b8beb; }
#railBtn:checked { background: #c8d8f0; color: #2563eb; }

/* Sidebar */
#leftSidebar { background: #f5f7fa; border-right: 1px solid #d8dce8; }
/* The three blocks lie over the right border of the sidebar and repeat it */
#sideHeader, #searchWrap {
    background: #f5f7fa; border-bottom: 1px solid #d8dce8; border-right: 1px solid #d8dce8;
}
#sidebarTitle { color: #1a1a2e; font-size: 15px; font-weight: 700; }
#addDmBtn { background: #dce8f8; color: #3b8beb; border: none; border-radius: 8px; font-size: 18px; }
#addDmBtn:hover { background: #c0d8f5; color: #1a6acc; }
#sideSearch {
    background: #ffffff; color: #1a1a2e; border: 1px solid #d0d8e8;
    border-radius: 8px; padding: 6px 12px; font-size: 12px;
}
#sideSearch:focus { background: #ffffff; border-color: #3b8beb; }
#dmList { background: transparent; border: none; padding: 6px 0; outline: none; }
#dmList::item { border-radius: 8px; margin: 2px 8px; border-left: 3px solid transparent; }
#dmList::item:hover { background: #e8eef8; }
#dmList::item:selected { background: #d0e4f8; border-left: 3px solid #3b8beb; }
#searchResults {
    background: #ffffff; border: 1px solid #d0d8e8; border-radius: 10px;
    margin: 0 8px 8px; padding: 6px 0; outline: none;
}
#searchResults::item { color: #3060a0; padding: 10px 14px; border-radius: 6px; margin: 2px 6px; }
#searchResults::item:hover { background: #e8f0fc; color: #1a3a80; }
#searchResults::item:selected { background: #d0e4f8; color: #0a2060; }
#sideFooter { background: #edf0f7; border-top: 1px solid #d8dce8; border-right: 1px solid #d8dce8; }
#sideFooter:hover { background: #e4e8f2; }
/* #footerAvatar styled inline to allow pixmap override */
#myName { color: #1a1a2e; font-size: 13px; font-weight: 700; }
#myStatus { color: #25a868; font-size: 11px; }
#footerChevron { color: #8090b0; font-size: 18px; }

/* Open conversation */
#centerPanel { background: #ffffff; }
#chatHeader { background: #f5f7fa; border-bottom: 1px solid #d8dce8; }
#headerLine { background: #d8dce8; border: none; max-height: 1px; }
#peerAvatar {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);
    color: #fff; border-radius: 18px; font-size: 12px; font-weight: 700;
}
#centerTitle { color: #1a1a2e; font-size: 15px; font-weight: 700; }
#centerSubtitle { color: #25a868; font-size: 11px; }
#messageList { background: #ffffff; border: none; padding: 8px 0; }
#messageList::item { background: transparent; border: none; padding: 0; margin: 0; }
#inputArea { background: #f5f7fa; border-top: 1px solid #d8dce8; }
#msgInput {
    background: #ffffff; color: #1a1a2e; border: 1px solid #c8d4e8;
    border-radius: 10px; padding: 0px 14px; font-size: 13px;
}
#msgInput:focus { background: #ffffff; border: 1px solid #3b8beb; }
#sendButton {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);
    color: #fff; border: none; border-radius: 10px; font-size: 16px;
}
#sendButton:hover { background: #5aa0f5; }
#sendButton:pressed { background: #1a6acc; }

/* No open conversation */
#emptyState { background: #ffffff; }
#emptyInner { background: #f0f4fa; border: 1px solid #d0d8e8; border-radius: 16px; }
#emptyIconContainer {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #dce8f8,stop:1 #c8d8f5); border-radius: 40px;
}
#emptyIcon { background: transparent; font-size: 36px; }
#emptyTitle { background: #f0f4fa; color: #1a1a2e; font-size: 18px; font-weight: 700; }
#emptySubtitle { background: #f0f4fa; color: #6080a0; font-size: 13px; }
#emptyHints { background: #f0f4fa; }
#hintRow { background: #f0f4fa; }
#hintIcon { color: #6080a0; font-size: 14px; }
#hintText { color: #4060a0; font-size: 12px; }
#emptyActionBtn {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);
    color: #fff; border: none; border-radius: 10px; font-size: 13px; font-weight: 700; padding: 0 24px;
}
#emptyActionBtn:hover { background: #5aa0f5; }

/* Settings */
#settingsNav { background: #edf0f7; border-right: 1px solid #d0d8e8; }
QScrollArea, QScrollArea > QWidget > QWidget { background: #f5f7fa; border: none; }
#settingsCard { background: #edf2fb; border: 1px solid #d0daf0; border-radius: 10px; }
#settingsRow { background: #edf2fb; border-radius: 8px; }
#settingsSectionHeader { background: transparent; }

/* Menus, tool tips, scroll bars */
QMenu { background: #ffffff; border: 1px solid #d0d8e8; border-radius: 10px; padding: 6px 0; }
QMenu::item { color: #1a1a2e; padding: 10px 20px; }
QMenu::item:selected { background: #e8f0fc; color: #0a2060; }
QMenu::separator { background: #e0e4ea; height: 1px; margin: 4px 10px; }
QToolTip {
    background: #ffffff; color: #1a1a2e; border: 1px solid #d0d8e8;
    border-radius: 6px; padding: 5px 9px; font-size: 12px;
}
QScrollBar:vertical { background: transparent; width: 5px; border-radius: 3px; }
QScrollBar::handle:vertical { background: rgba(0,0,0,0.12); border-radius: 3px; min-height: 30px; }
QScrollBar::handle:vertical:hover { background: #3b8beb; }
QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }
QScrollBar:horizontal { height: 0; }

/* The toolkit's own boxes: without these the default text colour would stand on the system's background */
QMessageBox, QFileDialog { background: #f5f7fa; }
QMessageBox QPushButton, QFileDialog QPushButton {
    background: #dce8f8; color: #3060a0; border: 1px solid #d0d8e8; border-radius: 6px; padding: 6px 16px;
}
QMessageBox QPushButton:hover, QFileDialog QPushButton:hover { background: #c0d8f5; }
QFileDialog QLineEdit, QFileDialog QComboBox, QFileDialog QAbstractItemView {
    background: #ffffff; color: #1a1a2e; border: 1px solid #d0d8e8;
}
QFileDialog QHeaderView::section { background: #ffffff; color: #1a1a2e; border: none; padding: 4px 8px; }
)"_s;
    return sheet;
}

} // namespace tideloft::ui
