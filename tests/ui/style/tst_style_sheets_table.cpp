// What both style sheets have to say, written down apart from them, place by place.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/ui/style/tst_style_sheets_table.h"

namespace tideloft::tests
{

using namespace Qt::StringLiterals;

static const QString accentGradient =
    u"background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #3b8beb,stop:1 #2563eb); color: #fff"_s;
static const QString menuDark = u"background: #0e0e18; border: 1px solid rgba(255,255,255,0.08)"_s;
static const QString menuLight = u"background: #ffffff; border: 1px solid #d0d8e8"_s;

static ExpectedRule same(const QString &selector, const QString &shape, const QString &colours)
{
    return {selector, shape, colours, colours};
}

static QString arrow(const QString &colour)
{
    return u"background: qconicalgradient(cx:0.5,cy:1,angle:0,stop:0 transparent, stop:0.125 transparent,"
           "stop:0.126 %1,stop:0.374 %1, stop:0.375 transparent,stop:1 transparent)"_s.arg(colour);
}

static QList<ExpectedRule> windowAndCard()
{
    const QString font = u"font-family: \"Segoe UI\", system-ui, sans-serif; font-size: 13px"_s;
    return {
        {u"QMainWindow"_s, font, u"background: #07070c; color: #e0e0ec"_s,
         u"background: #f0f2f5; color: #1a1a2e"_s},
        {u"QWidget"_s, font, u"color: #e0e0ec"_s, u"color: #1a1a2e"_s},
        {u"#authTopbar"_s,
         {},
         u"background: #0a0a11; border-bottom: 1px solid rgba(255,255,255,0.042)"_s,
         u"background: #ffffff; border-bottom: 1px solid #e0e4ea"_s},
        same(u"#tbLogo"_s, u"border-radius: 5px; font-size: 10px; font-weight: 700"_s,
             u"background: #5b5bd6; color: #fff"_s),
        {u"#tbLogoName"_s, u"font-size: 12px; font-weight: 600"_s, u"color: #7070a0"_s, u"color: #6060a0"_s},
        same(u"#authCenter"_s, {}, u"background: transparent"_s),
        {u"#authCard"_s, u"border-radius: 12px"_s,
         u"background: #0a0a11; border: 1px solid rgba(255,255,255,0.08)"_s,
         u"background: #ffffff; border: 1px solid #e0e4ea"_s},
        same(u"#cardBrandIco"_s,
             u"border-radius: 10px; font-size: 16px; font-weight: 700; min-width: 40px; max-width: 40px; "
             "min-height: 40px; max-height: 40px"_s,
             u"background: #5b5bd6; color: #fff"_s),
        {u"#authTitle"_s, u"font-size: 15px; font-weight: 600"_s, u"color: #e0e0ec"_s, u"color: #1a1a2e"_s},
        {u"#authSubtitle"_s, u"font-size: 11px"_s, u"color: #50507a"_s, u"color: #8080a0"_s},
        {u"#secBadge"_s, u"border-radius: 20px; background: rgba(37,168,104,0.08)"_s,
         u"border: 1px solid rgba(37,168,104,0.18)"_s, u"border: 1px solid rgba(37,168,104,0.30)"_s},
        same(u"QWidget#secBadge"_s, u"border-radius: 10px; min-height: 18px"_s, {}),
        same(u"#secBadgeDot"_s,
             u"border-radius: 3px; min-width: 6px; max-width: 6px; min-height: 6px; max-height: 6px"_s,
             u"background: #25a868"_s),
        {u"#secBadgeText"_s, u"font-size: 10px; font-weight: 600"_s, u"color: #25a868"_s,
         u"color: #1a8a50"_s},
    };
}

static QList<ExpectedRule> signInFields()
{
    return {
        {u"#authInput"_s,
         u"border-radius: 6px; padding: 8px 11px; font-size: 12px; selection-background-color: #5b5bd6"_s,
         u"background: #11111c; border: 1px solid rgba(255,255,255,0.10)"_s,
         u"background: #f5f7fa; border: 1px solid #d0d4dc"_s},
        {u"#authInput:hover"_s, {}, u"border-color: rgba(255,255,255,0.10)"_s, u"border-color: #b0b8c8"_s},
        {u"#authInput:focus"_s,
         {},
         u"background: #0d0d18; border-color: #5b5bd6"_s,
         u"background: #ffffff; border-color: #3b8beb"_s},
        {u"#authError"_s, u"border-radius: 6px; padding: 7px 10px; font-size: 11px"_s,
         u"background: rgba(224,84,84,0.08); color: #e05454"_s,
         u"background: rgba(200,50,50,0.08); color: #c03030"_s},
        {u"#authDivider"_s, u"border: none; max-height: 1px"_s,
         u"border-top: 1px solid rgba(255,255,255,0.07)"_s, u"border-top: 1px solid #e0e4ea"_s},
        {u"#authDividerText"_s, u"font-size: 11px; padding: 0 8px"_s, u"color: #30304a"_s,
         u"color: #a0a8b8"_s},
    };
}

static QList<ExpectedRule> signInButtons()
{
    return {
        same(u"#primaryButton"_s, u"border: none; border-radius: 7px; font-size: 12px; font-weight: 600"_s,
             u"background: #3b8beb; color: #fff"_s),
        same(u"#primaryButton:hover"_s, {}, u"background: #5aa0f5"_s),
        same(u"#primaryButton:pressed"_s, {}, u"background: #1a6acc"_s),
        {u"#primaryButton:disabled"_s,
         {},
         u"background: #1a1a2e; color: #3a3a5a"_s,
         u"background: #c0cce0; color: #8090a0"_s},
        {u"#ghostButton"_s, u"background: transparent; border-radius: 7px; font-size: 12px"_s,
         u"color: #50508a; border: 1px solid rgba(255,255,255,0.07)"_s,
         u"color: #6070a0; border: 1px solid #d0d8e8"_s},
        {u"#ghostButton:hover"_s, {}, u"background: rgba(255,255,255,0.04)"_s, u"background: #f0f4fa"_s},
        {u"#langCombo"_s, u"border-radius: 6px; padding: 4px 10px; font-size: 11px; combobox-popup: 0"_s,
         u"background: #0a0a11; color: #50508a"_s, u"background: #ffffff; color: #6070a0"_s},
        same(u"#langCombo::drop-down"_s, u"width: 18px; border: none"_s, {}),
        {u"#langCombo::down-arrow"_s, u"width: 8px; height: 4px"_s, arrow(u"#50508a"_s), arrow(u"#6070a0"_s)},
        {u"#langCombo QAbstractItemView"_s,
         {},
         menuDark + u"; color: #c8d8e8; selection-background-color: #1a1a30; selection-color: #fff"_s,
         menuLight + u"; color: #1a1a2e; selection-background-color: #e8f0fc; selection-color: #0a2060"_s},
    };
}

static QList<ExpectedRule> railAndSearch()
{
    const QString edgeDark = u"background: #0c151e; border-right: 1px solid #141f2b"_s;
    const QString edgeLight = u"background: #f5f7fa; border-right: 1px solid #d8dce8"_s;
    const QString blockDark = edgeDark + u"; border-bottom: 1px solid #141f2b"_s;
    const QString blockLight = edgeLight + u"; border-bottom: 1px solid #d8dce8"_s;
    return {
        {u"#rail"_s,
         {},
         u"background: #080d12; border-right: 1px solid #141f2b"_s,
         u"background: #e8ecf2; border-right: 1px solid #d0d8e4"_s},
        same(u"#railLogo"_s, u"border-radius: 10px; font-size: 13px; font-weight: 800"_s, accentGradient),
        {u"#railBtn"_s,
         u"background: transparent; border: none; border-radius: 10px; font-size: 16px; padding: 0"_s,
         u"color: #3a5a7a"_s, u"color: #7090b0"_s},
        {u"#railBtn:hover"_s,
         {},
         u"background: #151f2a; color: #7ab0f5"_s,
         u"background: #d8e4f0; color: #3b8beb"_s},
        {u"#railBtn:checked"_s,
         {},
         u"background: #1a2e45; color: #3b8beb"_s,
         u"background: #c8d8f0; color: #2563eb"_s},
        {u"#leftSidebar"_s, {}, edgeDark, edgeLight},
        {u"#sideHeader"_s, {}, blockDark, blockLight},
        {u"#searchWrap"_s, {}, blockDark, blockLight},
        {u"#sidebarTitle"_s, u"font-size: 15px; font-weight: 700"_s, u"color: #e8f0f8"_s,
         u"color: #1a1a2e"_s},
        {u"#addDmBtn"_s, u"border: none; border-radius: 8px; font-size: 18px"_s,
         u"background: #1a2e40; color: #7ab0f5"_s, u"background: #dce8f8; color: #3b8beb"_s},
        {u"#addDmBtn:hover"_s,
         {},
         u"background: #2a4060; color: #fff"_s,
         u"background: #c0d8f5; color: #1a6acc"_s},
        {u"#sideSearch"_s, u"border-radius: 8px; padding: 6px 12px; font-size: 12px"_s,
         u"background: #080d12; border: 1px solid #1a2535; color: #c8d8e8"_s,
         u"background: #ffffff; border: 1px solid #d0d8e8; color: #1a1a2e"_s},
        {u"#sideSearch:focus"_s, u"border-color: #3b8beb"_s, u"background: #0a1118"_s,
         u"background: #ffffff"_s},
    };
}

static QList<ExpectedRule> sidebarLists()
{
    return {
        same(u"#dmList"_s, u"border: none; padding: 6px 0; outline: none; background: transparent"_s, {}),
        same(u"#dmList::item"_s, u"border-radius: 8px; margin: 2px 8px; border-left: 3px solid transparent"_s,
             {}),
        {u"#dmList::item:hover"_s, {}, u"background: #151f2a"_s, u"background: #e8eef8"_s},
        {u"#dmList::item:selected"_s, u"border-left: 3px solid #3b8beb"_s, u"background: #1a2e40"_s,
         u"background: #d0e4f8"_s},
        {u"#searchResults"_s, u"border-radius: 10px; margin: 0 8px 8px; padding: 6px 0; outline: none"_s,
         u"background: #0a1118; border: 1px solid #1a2d40"_s,
         u"background: #ffffff; border: 1px solid #d0d8e8"_s},
        {u"#searchResults::item"_s, u"padding: 10px 14px; border-radius: 6px; margin: 2px 6px"_s,
         u"color: #8ab0d0"_s, u"color: #3060a0"_s},
        {u"#searchResults::item:hover"_s,
         {},
         u"background: #162230; color: #c8d8e8"_s,
         u"background: #e8f0fc; color: #1a3a80"_s},
        {u"#searchResults::item:selected"_s,
         {},
         u"background: #1a3050; color: #e8f0f8"_s,
         u"background: #d0e4f8; color: #0a2060"_s},
        {u"#sideFooter"_s,
         {},
         u"background: #080d12; border-top: 1px solid #141f2b; border-right: 1px solid #141f2b"_s,
         u"background: #edf0f7; border-top: 1px solid #d8dce8; border-right: 1px solid #d8dce8"_s},
        {u"#sideFooter:hover"_s, {}, u"background: #0c151e"_s, u"background: #e4e8f2"_s},
        {u"#myName"_s, u"font-size: 13px; font-weight: 700"_s, u"color: #e8f0f8"_s, u"color: #1a1a2e"_s},
        {u"#myStatus"_s, u"font-size: 11px"_s, u"color: #3ba55d"_s, u"color: #25a868"_s},
        {u"#footerChevron"_s, u"font-size: 18px"_s, u"color: #3a5a7a"_s, u"color: #8090b0"_s},
    };
}

static QList<ExpectedRule> conversation()
{
    return {
        {u"#centerPanel"_s, {}, u"background: #0f1923"_s, u"background: #ffffff"_s},
        {u"#chatHeader"_s,
         {},
         u"background: #0c151e; border-bottom: 1px solid #141f2b"_s,
         u"background: #f5f7fa; border-bottom: 1px solid #d8dce8"_s},
        {u"#headerLine"_s, u"border: none; max-height: 1px"_s, u"background: #141f2b"_s,
         u"background: #d8dce8"_s},
        {u"#peerAvatar"_s, u"border-radius: 18px; font-size: 12px; font-weight: 700"_s,
         u"background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1e4a70,stop:1 #1a3a55); color: #7ab0f5"_s,
         accentGradient},
        {u"#centerTitle"_s, u"font-size: 15px; font-weight: 700"_s, u"color: #fff"_s, u"color: #1a1a2e"_s},
        {u"#centerSubtitle"_s, u"font-size: 11px"_s, u"color: #3ba55d"_s, u"color: #25a868"_s},
        {u"#messageList"_s, u"border: none; padding: 8px 0"_s, u"background: #0f1923"_s,
         u"background: #ffffff"_s},
        same(u"#messageList::item"_s, u"background: transparent; border: none; padding: 0; margin: 0"_s, {}),
        {u"#inputArea"_s,
         {},
         u"background: #0a1018; border-top: 1px solid #1a2d40"_s,
         u"background: #f5f7fa; border-top: 1px solid #d8dce8"_s},
        {u"#msgInput"_s, u"border-radius: 10px; padding: 0px 14px; font-size: 13px"_s,
         u"background: #162535; border: 1px solid #2a4a6a; color: #e8f0f8"_s,
         u"background: #ffffff; border: 1px solid #c8d4e8; color: #1a1a2e"_s},
        {u"#msgInput:focus"_s, u"border: 1px solid #3b8beb"_s, u"background: #1a3050"_s,
         u"background: #ffffff"_s},
        same(u"#sendButton"_s, u"border: none; border-radius: 10px; font-size: 16px"_s, accentGradient),
        same(u"#sendButton:hover"_s, {}, u"background: #5aa0f5"_s),
        same(u"#sendButton:pressed"_s, {}, u"background: #1a6acc"_s),
    };
}

static QList<ExpectedRule> emptyStateAndSettings()
{
    return {
        {u"#emptyState"_s, {}, u"background: #0f1923"_s, u"background: #ffffff"_s},
        {u"#emptyInner"_s, u"border-radius: 16px"_s, u"background: #111e2a; border: 1px solid #1a2d40"_s,
         u"background: #f0f4fa; border: 1px solid #d0d8e8"_s},
        {u"#emptyIconContainer"_s, u"border-radius: 40px"_s,
         u"background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #1a3050,stop:1 #152540)"_s,
         u"background: qlineargradient(x1:0,y1:0,x2:1,y2:1,stop:0 #dce8f8,stop:1 #c8d8f5)"_s},
        same(u"#emptyIcon"_s, u"font-size: 36px; background: transparent"_s, {}),
        {u"#emptyTitle"_s, u"font-size: 18px; font-weight: 700"_s, u"background: #111e2a; color: #e8f0f8"_s,
         u"background: #f0f4fa; color: #1a1a2e"_s},
        {u"#emptySubtitle"_s, u"font-size: 13px"_s, u"background: #111e2a; color: #5a7a9a"_s,
         u"background: #f0f4fa; color: #6080a0"_s},
        {u"#emptyHints"_s, {}, u"background: #111e2a"_s, u"background: #f0f4fa"_s},
        same(u"#emptyActionBtn"_s,
             u"border: none; border-radius: 10px; font-size: 13px; font-weight: 700; padding: 0 24px"_s,
             accentGradient),
        same(u"#emptyActionBtn:hover"_s, {}, u"background: #5aa0f5"_s),
        {u"#settingsNav"_s,
         {},
         u"background: #0c151e; border-right: 1px solid #141f2b"_s,
         u"background: #edf0f7; border-right: 1px solid #d0d8e8"_s},
        {u"QScrollArea"_s, u"border: none"_s, u"background: #0f1923"_s, u"background: #f5f7fa"_s},
        {u"QScrollArea > QWidget > QWidget"_s, u"border: none"_s, u"background: #0f1923"_s,
         u"background: #f5f7fa"_s},
        {u"#settingsCard"_s, u"border-radius: 10px"_s, u"background: #111e2a"_s,
         u"background: #edf2fb; border: 1px solid #d0daf0"_s},
        {u"#settingsRow"_s, u"border-radius: 8px"_s, u"background: #111e2a"_s, u"background: #edf2fb"_s},
        same(u"#settingsSectionHeader"_s, {}, u"background: transparent"_s),
    };
}

static QList<ExpectedRule> menusAndScrollBars()
{
    return {
        {u"QMenu"_s, u"border-radius: 10px; padding: 6px 0"_s, menuDark, menuLight},
        {u"QMenu::item"_s, u"padding: 10px 20px"_s, u"color: #c8d8e8"_s, u"color: #1a1a2e"_s},
        {u"QMenu::item:selected"_s,
         {},
         u"background: #1a1a30; color: #fff"_s,
         u"background: #e8f0fc; color: #0a2060"_s},
        {u"QMenu::separator"_s, u"height: 1px; margin: 4px 10px"_s, u"background: rgba(255,255,255,0.06)"_s,
         u"background: #e0e4ea"_s},
        {u"QToolTip"_s, u"border-radius: 6px; padding: 5px 9px; font-size: 12px"_s,
         menuDark + u"; color: #e0e0ec"_s, menuLight + u"; color: #1a1a2e"_s},
        same(u"QScrollBar:vertical"_s, u"background: transparent; width: 5px; border-radius: 3px"_s, {}),
        {u"QScrollBar::handle:vertical"_s, u"border-radius: 3px; min-height: 30px"_s,
         u"background: rgba(255,255,255,0.08)"_s, u"background: rgba(0,0,0,0.12)"_s},
        same(u"QScrollBar::handle:vertical:hover"_s, {}, u"background: #3b8beb"_s),
        same(u"QScrollBar::add-line:vertical"_s, u"height: 0"_s, {}),
        same(u"QScrollBar::sub-line:vertical"_s, u"height: 0"_s, {}),
        same(u"QScrollBar:horizontal"_s, u"height: 0"_s, {}),
    };
}

QList<ExpectedRule> expectedRules()
{
    return windowAndCard() + signInFields() + signInButtons() + railAndSearch() + sidebarLists()
           + conversation() + emptyStateAndSettings() + menusAndScrollBars() + toolkitBoxes();
}

} // namespace tideloft::tests
