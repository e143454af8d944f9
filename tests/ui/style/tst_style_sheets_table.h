// What both style sheets have to say, written down apart from them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

namespace tideloft::tests
{

/// One selector, with its state if it has one. Declarations are written "name: value; name: value".
struct ExpectedRule {
    QString selector;
    QString shape; ///< the same in both sheets
    QString dark;  ///< further declarations of the dark sheet
    QString light; ///< further declarations of the light sheet
};

/// Those for the boxes of the toolkit, which are among the rules that both sheets have.
QList<ExpectedRule> toolkitBoxes();

/// Every rule that both sheets have.
QList<ExpectedRule> expectedRules();

/// The rules that only the light sheet has.
QList<ExpectedRule> expectedLightRules();

} // namespace tideloft::tests
