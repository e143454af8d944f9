// The dark style sheet. Colours apart, a change here belongs into the light sheet too.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/style/style_sheets.h"

namespace tideloft::ui
{

using namespace Qt::StringLiterals;

// QWidget gets no background: every child would paint it over its parent's.
// Among rules of equal weight the last one wins, so :hover stands before :focus, :checked and :selected.
const QString &darkStyleSheet() // NOLINT(readability-function-size): one text
{
    static const QString sheet = uR"(
QMainWindow, QWidget { font-family: "Segoe UI", system-ui, sans-serif; font-size: 13px; color: #e0e0ec; }
QMainWindow { background: #07070c; }

/* Sign-in page */
#authTopbar { background: #0a0a11; border-bottom: 1px solid rgba(255,255,255,0.042); }
#tbLogo { background: #5b5bd6; color: #fff; border-radius: 5px; font-size: 10px; font-weight: 700; }
#tbLogoName { color: #7070a0; font-size: 12px; font-weight: 600; }
#authCenter { background: transparent; }
#authCard { background: #0a0a11; border: 1px solid rgba(255,255,255,0.08); border-radius: 12px; }
#cardBrandIco {
    background: #5b5bd6; color: #fff; border-radius: 10px; font-size: 16px; font-weight: 700;
    min-width: 40px; max-width: 40px; min-height: 40px; max-height: 40px;
}
#authTitle { color: #e0e0ec; font-size: 15px; font-weight: 600; }
#authSubtitle { color: #50507a; font-size: 11px; }
#secBadge { background: rgba(37,168,104,0.08); border: 1px solid rgba(37,168,104,0.18); border-radius: 20px; }
/* A radius above half the height is dropped by Qt: this one keeps the low badge a pill */
QWidget#secBadge { border-radius: 10px; min-height: 18px; }
#secBadgeDot {
    background: #25a868; border-radius: 3px;
    min-width: 6px; max-width: 6px; min-height: 6px; max-height: 6px;
}
#secBadgeText { color: #25a868; font-size: 10px; font-weight: 600; }
#authInput {
    background: #11111c; border: 1px solid rgba(255,255,255,0.10); border-radius: 6px;
    padding: 8px 11px; font-size: 12px; selection-background-color: #5b5bd6;
}
#authInput:hover { border-color: rgba(255,255,255,0.10); }
#authInput:focus { background: #0d0d18; border-color: #5b5bd6; }
#authError {
    background: rgba(224,84,84,0.08); color: #e05454;
    border-radius: 6px; padding: 7px 10px; font-size: 11px;
}
#authDivider { border: none; border-top: 1px solid rgba(255,255,255,0.07); max-height: 1px; }
#authDividerText { color: #30304a; font-size: 11px; padding: 0 8px; }
#primaryButton {
    background: #3b8beb; color: #fff; border: none; border-radius: 7px; font-size: 12px; font-weight: 600;
}
#primaryButton:hover { background: #5aa0f5; }
#primaryButton:pressed { background: #1a6acc; }
#primaryButton:disabled { background: #1a1a2e; color: #3a3a5a; }
#ghostButton {
    background: transparent; color: #50508a; border: 1px solid rgba(255,255,255,0.07);
    border-radius: 7px; font-size: 12px;
}
#ghostButton:hover { background: rgba(255,255,255,0.04); }
#langCombo {
    background: #0a0a11; color: #50508a; border-radius: 6px; padding: 4px 10px; font-size: 11px;
    combobox-popup: 0;
}
#langCombo::drop-down { width: 18px; border: none; }
/* A triangle without a picture file: a sector that opens upwards from the middle of the lower edge */
#langCombo::down-arrow {
    width: 8px; height: 4px;
    background: qconicalgradient(cx:0.5,cy:1,angle:0,stop:0 transparent,
        stop:0.125 transparent,stop:0.126 #50508a,stop:0.374 #50508a,
        stop:0.375 transparent,stop:1 transparent);
}
#langCombo QAbstractItemView {
    background: #0e0e18; color: #c8d8e8; border: 1px solid rgba(255,255,255,0.08);
    selection-background-color: #1a1a30; selection-color: #fff;
}

/* Rail */
#rail { background: #080d12; border-right: 1px solid #141f2b; }
#railLogo {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);
    color: #fff; border-radius: 10px; font-size: 13px; font-weight: 800;
}
#railBtn {
    background: transparent; color: #3a5a7a; border: none; border-radius: 10px; font-size: 16px; padding: 0;
}
#railBtn:hover { background: #151f2a; color: #7ab0f5; }
#railBtn:checked { background: #1a2e45; color: #3b8beb; }

/* Sidebar */
#leftSidebar { background: #0c151e; border-right: 1px solid #141f2b; }
/* The three blocks lie over the right border of the sidebar and repeat it */
#sideHeader, #searchWrap {
    background: #0c151e; border-bottom: 1px solid #141f2b; border-right: 1px solid #141f2b;
}
#sidebarTitle { color: #e8f0f8; font-size: 15px; font-weight: 700; }
#addDmBtn { background: #1a2e40; color: #7ab0f5; border: none; border-radius: 8px; font-size: 18px; }
#addDmBtn:hover { background: #2a4060; color: #fff; }
#sideSearch {
    background: #080d12; color: #c8d8e8; border: 1px solid #1a2535;
    border-radius: 8px; padding: 6px 12px; font-size: 12px;
}
#sideSearch:focus { background: #0a1118; border-color: #3b8beb; }
#dmList { background: transparent; border: none; padding: 6px 0; outline: none; }
#dmList::item { border-radius: 8px; margin: 2px 8px; border-left: 3px solid transparent; }
#dmList::item:hover { background: #151f2a; }
#dmList::item:selected { background: #1a2e40; border-left: 3px solid #3b8beb; }
#searchResults {
    background: #0a1118; border: 1px solid #1a2d40; border-radius: 10px;
    margin: 0 8px 8px; padding: 6px 0; outline: none;
}
#searchResults::item { color: #8ab0d0; padding: 10px 14px; border-radius: 6px; margin: 2px 6px; }
#searchResults::item:hover { background: #162230; color: #c8d8e8; }
#searchResults::item:selected { background: #1a3050; color: #e8f0f8; }
#sideFooter { background: #080d12; border-top: 1px solid #141f2b; border-right: 1px solid #141f2b; }
#sideFooter:hover { background: #0c151e; }
/* #footerAvatar styled inline to allow pixmap override */
#myName { color: #e8f0f8; font-size: 13px; font-weight: 700; }
#myStatus { color: #3ba55d; font-size: 11px; }
#footerChevron { color: #3a5a7a; font-size: 18px; }

/* Open conversation */
#centerPanel { background: #0f1923; }
#chatHeader { background: #0c151e; border-bottom: 1px solid #141f2b; }
#headerLine { background: #141f2b; border: none; max-height: 1px; }
#peerAvatar {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55);
    color: #7ab0f5; border-radius: 18px; font-size: 12px; font-weight: 700;
}
#centerTitle { color: #fff; font-size: 15px; font-weight: 700; }
#centerSubtitle { color: #3ba55d; font-size: 11px; }
#messageList { background: #0f1923; border: none; padding: 8px 0; }
#messageList::item { background: transparent; border: none; padding: 0; margin: 0; }
#inputArea { background: #0a1018; border-top: 1px solid #1a2d40; }
#msgInput {
    background: #162535; color: #e8f0f8; border: 1px solid #2a4a6a;
    border-radius: 10px; padding: 0px 14px; font-size: 13px;
}
#msgInput:focus { background: #1a3050; border: 1px solid #3b8beb; }
#sendButton {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);
    color: #fff; border: none; border-radius: 10px; font-size: 16px;
}
#sendButton:hover { background: #5aa0f5; }
#sendButton:pressed { background: #1a6acc; }

/* No open conversation */
#emptyState { background: #0f1923; }
#emptyInner { background: #111e2a; border: 1px solid #1a2d40; border-radius: 16px; }
#emptyIconContainer {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1a3050,stop:1 #152540); border-radius: 40px;
}
#emptyIcon { background: transparent; font-size: 36px; }
#emptyTitle { background: #111e2a; color: #e8f0f8; font-size: 18px; font-weight: 700; }
#emptySubtitle { background: #111e2a; color: #5a7a9a; font-size: 13px; }
#emptyHints { background: #111e2a; }
#emptyActionBtn {
    background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb);
    color: #fff; border: none; border-radius: 10px; font-size: 13px; font-weight: 700; padding: 0 24px;
}
#emptyActionBtn:hover { background: #5aa0f5; }

/* Settings */
#settingsNav { background: #0c151e; border-right: 1px solid #141f2b; }
QScrollArea, QScrollArea > QWidget > QWidget { background: #0f1923; border: none; }
#settingsCard { background: #111e2a; border-radius: 10px; }
#settingsRow { background: #111e2a; border-radius: 8px; }
#settingsSectionHeader { background: transparent; }

/* Menus, tool tips, scroll bars */
QMenu { background: #0e0e18; border: 1px solid rgba(255,255,255,0.08); border-radius: 10px; padding: 6px 0; }
QMenu::item { color: #c8d8e8; padding: 10px 20px; }
QMenu::item:selected { background: #1a1a30; color: #fff; }
QMenu::separator { background: rgba(255,255,255,0.06); height: 1px; margin: 4px 10px; }
QToolTip {
    background: #0e0e18; color: #e0e0ec; border: 1px solid rgba(255,255,255,0.08);
    border-radius: 6px; padding: 5px 9px; font-size: 12px;
}
QScrollBar:vertical { background: transparent; width: 5px; border-radius: 3px; }
QScrollBar::handle:vertical { background: rgba(255,255,255,0.08); border-radius: 3px; min-height: 30px; }
QScrollBar::handle:vertical:hover { background: #3b8beb; }
QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }
QScrollBar:horizontal { height: 0; }

/* The toolkit's own boxes: without these the default text colour would stand on the system's background */
QMessageBox, QFileDialog { background: #0f1923; }
QMessageBox QPushButton, QFileDialog QPushButton {
    background: #1a2e40; color: #7ab0f5; border: 1px solid #2a4060; border-radius: 6px; padding: 6px 16px;
}
QMessageBox QPushButton:hover, QFileDialog QPushButton:hover { background: #2a4060; }
QFileDialog QLineEdit, QFileDialog QComboBox, QFileDialog QAbstractItemView {
    background: #0c151e; color: #e8f0f8; border: 1px solid #1a2d40;
}
QFileDialog QHeaderView::section { background: #0c151e; color: #e8f0f8; border: none; padding: 4px 8px; }
)"_s;
    return sheet;
}

} // namespace tideloft::ui
