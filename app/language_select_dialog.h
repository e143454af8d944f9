// The question that the first start asks.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

namespace tideloft::app
{

/// Lets the person choose the language and stores the choice as the setting `language`: "sv" or "en".
/// Rejected without a choice it stores nothing.
class LanguageSelectDialog : public QDialog
{
    Q_OBJECT

public:
    explicit LanguageSelectDialog(QWidget *parent = nullptr);

    /// 0 Swedish, 1 English.
    qint32 chosenLanguageIndex() const { return chosenIndex; }

private:
    QWidget *buildCard();
    void choose(qint32 index, const QString &language);

    qint32 chosenIndex = 0;
};

} // namespace tideloft::app
