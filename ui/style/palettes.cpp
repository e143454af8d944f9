// The dark and the light palette, side by side.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/style/palettes.h"

#include <array>

namespace tideloft::ui
{

namespace
{

// In the dark sheet the hint rows take the default text colour.
constexpr QStringView lightHintRows = uR"(
#hintRow { background: #f0f4fa; }
#hintIcon { color: #6080a0; font-size: 14px; }
#hintText { color: #4060a0; font-size: 12px; })";

constexpr auto roles = std::to_array<PaletteRole>({
    // Everywhere
    {u"window", u"#07070c", u"#f0f2f5"},
    {u"text", u"#e0e0ec", u"#1a1a2e"},
    {u"soft-text", u"#c8d8e8", u"#1a1a2e"},
    {u"strong-text", u"#e8f0f8", u"#1a1a2e"},
    {u"lively-text", u"#7ab0f5", u"#3b8beb"},
    {u"online", u"#3ba55d", u"#25a868"},
    {u"panel", u"#0c151e", u"#f5f7fa"},
    {u"panel-border", u"#141f2b", u"#d8dce8"},
    {u"box-border", u"#1a2d40", u"#d0d8e8"},
    {u"page", u"#0f1923", u"#f5f7fa"},
    {u"chat", u"#0f1923", u"#ffffff"},
    {u"soft-button", u"#1a2e40", u"#dce8f8"},
    {u"soft-button-hover", u"#2a4060", u"#c0d8f5"},
    // Sign-in page
    {u"topbar-border", u"rgba(255,255,255,0.042)", u"#e0e4ea"},
    {u"logo-name", u"#7070a0", u"#6060a0"},
    {u"sign-in-card", u"#0a0a11", u"#ffffff"},
    {u"sign-in-card-border", u"rgba(255,255,255,0.08)", u"#e0e4ea"},
    {u"sign-in-subtitle", u"#50507a", u"#8080a0"},
    {u"badge-border", u"rgba(37,168,104,0.18)", u"rgba(37,168,104,0.30)"},
    {u"badge-text", u"#25a868", u"#1a8a50"},
    {u"field", u"#11111c", u"#f5f7fa"},
    {u"field-border", u"rgba(255,255,255,0.10)", u"#d0d4dc"},
    {u"field-border-hover", u"rgba(255,255,255,0.10)", u"#b0b8c8"},
    {u"field-focus", u"#0d0d18", u"#ffffff"},
    {u"field-border-focus", u"#5b5bd6", u"#3b8beb"},
    {u"error", u"rgba(224,84,84,0.08)", u"rgba(200,50,50,0.08)"},
    {u"error-text", u"#e05454", u"#c03030"},
    {u"divider", u"rgba(255,255,255,0.07)", u"#e0e4ea"},
    {u"divider-text", u"#30304a", u"#a0a8b8"},
    {u"button-disabled", u"#1a1a2e", u"#c0cce0"},
    {u"button-disabled-text", u"#3a3a5a", u"#8090a0"},
    {u"quiet-text", u"#50508a", u"#6070a0"},
    {u"ghost-button-border", u"rgba(255,255,255,0.07)", u"#d0d8e8"},
    {u"ghost-button-hover", u"rgba(255,255,255,0.04)", u"#f0f4fa"},
    // Rail
    {u"rail", u"#080d12", u"#e8ecf2"},
    {u"rail-border", u"#141f2b", u"#d0d8e4"},
    {u"rail-button-text", u"#3a5a7a", u"#7090b0"},
    {u"rail-button-hover", u"#151f2a", u"#d8e4f0"},
    {u"rail-button-checked", u"#1a2e45", u"#c8d8f0"},
    {u"rail-button-checked-text", u"#3b8beb", u"#2563eb"},
    // Sidebar
    {u"add-button-hover-text", u"#fff", u"#1a6acc"},
    {u"search", u"#080d12", u"#ffffff"},
    {u"search-border", u"#1a2535", u"#d0d8e8"},
    {u"search-open", u"#0a1118", u"#ffffff"},
    {u"conversation-hover", u"#151f2a", u"#e8eef8"},
    {u"conversation-selected", u"#1a2e40", u"#d0e4f8"},
    {u"result-text", u"#8ab0d0", u"#3060a0"},
    {u"result-hover", u"#162230", u"#e8f0fc"},
    {u"result-hover-text", u"#c8d8e8", u"#1a3a80"},
    {u"result-selected", u"#1a3050", u"#d0e4f8"},
    {u"result-selected-text", u"#e8f0f8", u"#0a2060"},
    {u"footer", u"#080d12", u"#edf0f7"},
    {u"footer-hover", u"#0c151e", u"#e4e8f2"},
    {u"footer-chevron", u"#3a5a7a", u"#8090b0"},
    // Open conversation
    {u"peer-avatar", u"#1e4a70", u"#3b8beb"},
    {u"peer-avatar-end", u"#1a3a55", u"#2563eb"},
    {u"peer-avatar-text", u"#7ab0f5", u"#fff"},
    {u"peer-name", u"#fff", u"#1a1a2e"},
    {u"input-area", u"#0a1018", u"#f5f7fa"},
    {u"input-area-border", u"#1a2d40", u"#d8dce8"},
    {u"message-field", u"#162535", u"#ffffff"},
    {u"message-field-border", u"#2a4a6a", u"#c8d4e8"},
    {u"message-field-focus", u"#1a3050", u"#ffffff"},
    // No open conversation
    {u"empty-card", u"#111e2a", u"#f0f4fa"},
    {u"empty-icon", u"#1a3050", u"#dce8f8"},
    {u"empty-icon-end", u"#152540", u"#c8d8f5"},
    {u"empty-subtitle", u"#5a7a9a", u"#6080a0"},
    // Settings
    {u"settings-nav", u"#0c151e", u"#edf0f7"},
    {u"settings-nav-border", u"#141f2b", u"#d0d8e8"},
    {u"settings-card", u"#111e2a", u"#edf2fb"},
    // Menus, tool tips, scroll bars
    {u"popup", u"#0e0e18", u"#ffffff"},
    {u"popup-border", u"rgba(255,255,255,0.08)", u"#d0d8e8"},
    {u"popup-selected", u"#1a1a30", u"#e8f0fc"},
    {u"popup-selected-text", u"#fff", u"#0a2060"},
    {u"menu-separator", u"rgba(255,255,255,0.06)", u"#e0e4ea"},
    {u"scroll-handle", u"rgba(255,255,255,0.08)", u"rgba(0,0,0,0.12)"},
    // The toolkit's own boxes
    {u"dialog-button-text", u"#7ab0f5", u"#3060a0"},
    {u"dialog-button-border", u"#2a4060", u"#d0d8e8"},
    {u"dialog-field", u"#0c151e", u"#ffffff"},
    // What the light sheet alone says
    {u"settings-card-border", u"", u" border: 1px solid #d0daf0;"},
    {u"hint-rows", u"", lightHintRows},
});

} // namespace

std::span<const PaletteRole> paletteRoles()
{
    return roles;
}

} // namespace tideloft::ui
