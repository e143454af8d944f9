// Opening and closing.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_modal_probe.h"

#include "tests/gui/tst_rail_probe.h"
#include "tests/support/patience.h"
#include "tests/support/person.h"
#include "tests/support/popups.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/waiting.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

QList<InFront> everythingInFront()
{
    const auto rail = [](const char16_t *button) {
        return [button](SettingsProbe &probe) {
            clickOnScreen(*named(*probe.window, u"railBtn="_s + QString::fromUtf16(button)));
        };
    };
    return {{"a message box",
             [](SettingsProbe &probe) {
                 probe.openSettings();
                 probe.section(Account)->ensureWidgetVisible(buttonWith(probe.content(Account), u"Change"_s));
                 buttonWith(probe.content(Account), u"Change"_s)->click();
             }},
            {"the user menu",
             [](SettingsProbe &probe) {
                 clickAt(probe.the<QWidget>(u"sideFooter"_s), {250, 4});
             }},
            {"a server's menu",
             [](SettingsProbe &probe) {
                 clickAt(serverButtons(probe).constFirst(), {5, 5}, Qt::RightButton);
             }},
            {"the create dialog", rail(u"+")},
            {"the privacy dialog",
             [](SettingsProbe &probe) { clickOnScreen(*probe.the<QWidget>(u"quilloryBtn"_s)); }},
            {"the file dialog",
             [](SettingsProbe &probe) { clickOnScreen(*probe.the<QWidget>(u"footerAvatar"_s)); }},
            {"the input's menu", [](SettingsProbe &probe) {
                 clickAt(probe.the<QWidget>(u"msgInput"_s), {5, 5}, Qt::RightButton);
             }}};
}

ModalProbe::ModalProbe()
{
    refreshTimer()->stop();
    service.answer("GET /api/chat/public-key/bob", 200,
                   R"({"keys":[{"deviceId":"d","publicKeyBase64":")" + ownKeyPair().publicKey.toUtf8()
                       + R"("}]})");
    service.answer("POST /api/chat/send", 200, "{}");
    if (!listServers(*this, {server(u"g1"_s, u"Reef"_s)}) || !open(u"bob"_s) || !settle())
        qFatal("The window did not get ready");
}

QLineEdit *ModalProbe::input() const
{
    return the<QLineEdit>(u"msgInput"_s);
}

void ModalProbe::write(const QString &text) const
{
    input()->setText(text);
    QTest::keyClick(input(), Qt::Key_Return);
}

QStringList ModalProbe::closeAll()
{
    QStringList texts;
    for (int closed = 0;; ++closed) {
        QCoreApplication::processEvents();
        QWidget *popup = QApplication::activePopupWidget();
        QWidget *front = popup ? popup : QApplication::activeModalWidget();
        if (!front)
            return texts;
        if (closed > 200)
            qFatal("%s does not close, shown: %d", front->metaObject()->className(), front->isVisible());
        if (const auto *box = qobject_cast<QMessageBox *>(front))
            texts.append(box->text());
        if (auto *dialog = qobject_cast<QDialog *>(front))
            dialog->reject();
        else
            front->close();
    }
}

QStringList ModalProbe::during(const InFront &front, const std::function<void()> &meanwhile)
{
    QStringList texts;
    const Person<QWidget> person([&](QWidget &) {
        meanwhile();
        texts = closeAll();
    });
    front.open(*this);
    if (!waitFor([&] { return person.hasSeen(); }, patience()))
        qFatal("%s did not open", front.name);
    return texts + closeAll();
}

} // namespace tideloft::tests
