// Building a server's button.
#include "ui/server_button.h"

#include "ui/initials.h"
#include "ui/plain_tool_tip.h"
#include "ui/style/dialog_styles.h"
#include "ui/widget_parts.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QPushButton *makeServerButton(const ServerModel &server, bool selected, QWidget *parent)
{
    // A single "&" would become a shortcut and vanish.
    auto *button = makeButton(initials(server.name, 1).replace(u'&', u"&&"_s), parent);
    button->setToolTip(server.name);
    showToolTipAsPlainText(button);
    button->setAccessibleName(server.name);
    button->setFixedSize(36, 36);
    button->setCheckable(true);
    button->setChecked(selected);
    button->setStyleSheet(style::serverButton(selected));
    button->setContextMenuPolicy(Qt::CustomContextMenu);
    return button;
}

} // namespace tideloft::ui
