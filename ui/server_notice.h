// What stands in the chat panel while a server is open.
#pragma once

class QString;
class QWidget;

namespace tideloft::ui
{

/// A row with TEXT in its middle.
QWidget *makeServerNotice(const QString &text, QWidget *parent);

} // namespace tideloft::ui
