// Drawing texts where they stand.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_emoji_drawing.h"

#include "tests/support/gui_probe.h"
#include "ui/chat/bubble_text.h"
#include "ui/chat/message_row.h"
#include "ui/rail/create_server_dialog.h"
#include "ui/settings/profile_card.h"
#include "ui/sidebar/conversation_row.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/plain_tool_tip.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

namespace
{

QString lookWith(const QColor &pen)
{
    return u"color: %1; background: #000000; border: none; font-size: 24px;"_s.arg(pen.name());
}

QImage dressed(QWidget *widget, const QString &look)
{
    if (widget->styleSheet() != look)
        widget->setStyleSheet(look);
    widget->setFixedSize(400, 50); // also against a layout
    return widget->grab().toImage();
}

TextPlace label(const QByteArray &name, QLabel *label)
{
    return {name, [label](const QString &text, const QColor &pen) {
                label->setText(text);
                return dressed(label, lookWith(pen));
            }};
}

TextPlace field(const QByteArray &name, QLineEdit *field)
{
    return {name, [field](const QString &text, const QColor &pen) {
                field->setText(text);
                return dressed(field, lookWith(pen));
            }};
}

/// A label of what MAKE makes of a text, found by its place among the elided ones.
TextPlace labelOf(const QByteArray &name, const std::function<QWidget *(const QString &)> &make, int index)
{
    return {name, [make, index](const QString &text, const QColor &pen) {
                const std::unique_ptr<QWidget> owner(make(text));
                return dressed(owner->findChildren<ui::ElidedLabel *>().value(index), lookWith(pen));
            }};
}

TextPlace message(QWidget *window)
{
    return {"message", [window](const QString &text, const QColor &pen) {
                ui::BubbleText bubble(text, window);
                return dressed(&bubble, lookWith(pen));
            }};
}

TextPlace bio(QPlainTextEdit *field)
{
    return {"bio", [field](const QString &text, const QColor &pen) {
                field->setPlainText(text);
                return dressed(field, lookWith(pen));
            }};
}

TextPlace searchResult(QListWidget *list)
{
    return {"search result", [list](const QString &text, const QColor &pen) {
                list->clear();
                list->addItem(text);
                list->doItemsLayout();
                return dressed(list, u"#searchResults { background: #000000; border: none; }"
                                     "#searchResults::item { %1 }"_s.arg(lookWith(pen)));
            }};
}

TextPlace toolTip(QWidget *window)
{
    auto *button = new QPushButton(window);
    ui::showToolTipAsPlainText(button);
    return {"tool tip", [button](const QString &text, const QColor &pen) {
                button->setToolTip(text);
                QHelpEvent event(QEvent::ToolTip, {}, {});
                QApplication::sendEvent(button, &event);
                const QWidgetList windows = QApplication::topLevelWidgets();
                const auto found = std::ranges::find_if(
                    windows, [](const QWidget *each) { return each->inherits("QTipLabel"); });
                const std::unique_ptr<QWidget> tip(found == windows.end() ? nullptr : *found);
                return tip ? dressed(tip.get(), lookWith(pen)) : QImage();
            }};
}

TextPlace box(QWidget *window)
{
    return {"box", [window](const QString &text, const QColor &pen) {
                ui::showMessage(window, ui::Severity::Information, text);
                const std::unique_ptr<QMessageBox> box(window->findChild<QMessageBox *>());
                if (auto *view = box->findChild<QPlainTextEdit *>())
                    return dressed(view, lookWith(pen));
                return dressed(box->findChild<QLabel *>(u"qt_msgbox_label"_s), lookWith(pen));
            }};
}

} // namespace

std::vector<TextPlace> textPlaces(const GuiProbe &probe)
{
    QWidget *window = probe.window.get();
    const auto *dialog = new ui::CreateServerDialog(ui::Language::English, window);
    const ui::ProfileCard card = ui::makeProfileCard(u"alice"_s, ui::Language::English, window);
    const auto conversation = [window](const QString &text) {
        return ui::makeConversationRow({.peer = text, .preview = text, .time = {}}, window);
    };
    const auto row = [window](const QString &text) {
        ui::MessageRowModel model;
        model.sender = text;
        return new ui::MessageRow(model, window);
    };
    return {message(window),
            labelOf("sender", row, 0),
            labelOf("conversation", conversation, 0),
            labelOf("preview", conversation, 1),
            label("header", probe.the<QLabel>(u"centerTitle"_s)),
            label("header's initials", probe.the<QLabel>(u"peerAvatar"_s)),
            label("own name", probe.the<QLabel>(u"myName"_s)),
            label("profile card", card.card->findChild<ui::ElidedLabel *>()),
            field("message field", probe.the<QLineEdit>(u"msgInput"_s)),
            field("search", probe.the<QLineEdit>(u"sideSearch"_s)),
            field("user name", probe.username()),
            field("server's name", dialog->findChildren<QLineEdit *>().value(0)),
            field("server's description", dialog->findChildren<QLineEdit *>().value(1)),
            field("display name", card.displayName),
            bio(card.bio),
            searchResult(probe.the<QListWidget>(u"searchResults"_s)),
            toolTip(window),
            box(window)};
}

QList<int> inkColumns(const QImage &picture)
{
    QList<int> columns;
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            if (qGray(picture.pixel(x, y)) > 0) {
                columns << x;
                break;
            }
        }
    }
    return columns;
}

int inkWidth(const QImage &picture)
{
    const QList<int> columns = inkColumns(picture);
    return columns.isEmpty() ? 0 : columns.last() - columns.first() + 1;
}

} // namespace tideloft::tests
