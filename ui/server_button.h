// A server in the rail.
#pragma once

#include "ui/server_models.h"

class QPushButton;
class QWidget;

namespace tideloft::ui
{

/// A checkable button with the server's first letter and its full name as tool tip. A right click asks for
/// its context menu.
QPushButton *makeServerButton(const ServerModel &server, bool selected, QWidget *parent);

} // namespace tideloft::ui
