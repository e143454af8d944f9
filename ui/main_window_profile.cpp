// The user's own profile and picture.
#include "ui/main_window.h"

namespace tideloft::ui
{

void MainWindow::onAvatarUploaded(bool, const QString &) {}

} // namespace tideloft::ui
