// What both style sheets have to say of the toolkit's own boxes, and what the light one says alone.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/ui/style/tst_style_sheets_table.h"

namespace tideloft::tests
{

using namespace Qt::StringLiterals;

QList<ExpectedRule> toolkitBoxes()
{
    QList<ExpectedRule> rules;
    for (const QString &box : {u"QMessageBox"_s, u"QFileDialog"_s}) {
        rules << ExpectedRule{box, {}, u"background: #0f1923"_s, u"background: #f5f7fa"_s}
              << ExpectedRule{box + u" QPushButton"_s, u"border-radius: 6px; padding: 6px 16px"_s,
                              u"background: #1a2e40; color: #7ab0f5; border: 1px solid #2a4060"_s,
                              u"background: #dce8f8; color: #3060a0; border: 1px solid #d0d8e8"_s}
              << ExpectedRule{
                     box + u" QPushButton:hover"_s, {}, u"background: #2a4060"_s, u"background: #c0d8f5"_s};
    }
    for (const QString &part : {u"QLineEdit"_s, u"QComboBox"_s, u"QAbstractItemView"_s})
        rules << ExpectedRule{u"QFileDialog "_s + part,
                              {},
                              u"background: #0c151e; color: #e8f0f8; border: 1px solid #1a2d40"_s,
                              u"background: #ffffff; color: #1a1a2e; border: 1px solid #d0d8e8"_s};
    rules << ExpectedRule{u"QFileDialog QHeaderView::section"_s, u"border: none; padding: 4px 8px"_s,
                          u"background: #0c151e; color: #e8f0f8"_s, u"background: #ffffff; color: #1a1a2e"_s};
    return rules;
}

QList<ExpectedRule> expectedLightRules()
{
    return {{u"#hintRow"_s, {}, {}, u"background: #f0f4fa"_s},
            {u"#hintIcon"_s, u"font-size: 14px"_s, {}, u"color: #6080a0"_s},
            {u"#hintText"_s, u"font-size: 12px"_s, {}, u"color: #4060a0"_s}};
}

} // namespace tideloft::tests
