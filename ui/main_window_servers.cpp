// The user's servers in the rail.
#include "ui/main_window.h"

namespace tideloft::ui
{

void MainWindow::onServersLoaded(const QJsonArray &loaded)
{
    servers = loaded;
}

void MainWindow::onServerLoaded(const QJsonObject &) {}

void MainWindow::onServerCreated(const QJsonObject &) {}

// The list carries the icons' addresses.
void MainWindow::onServerIconUploaded(const QString &, const QString &)
{
    api.fetchServers();
}

} // namespace tideloft::ui
