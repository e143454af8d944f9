// Finding the servers' buttons and filling the rail.
#include "tests/gui/tst_rail_probe.h"

#include <QJsonDocument>
#include <QLayout>
#include <QScrollArea>

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

QJsonObject server(const QString &id, const QString &name)
{
    return {{u"groupId"_s, id}, {u"name"_s, name}, {u"iconUrl"_s, u"/icons/"_s + id}};
}

QLayout *serverColumn(const GuiProbe &probe)
{
    if (const auto *place = probe.the<QWidget>(u"rail"_s)->findChild<QScrollArea *>())
        return place->widget()->layout();
    qFatal("The rail has no column for servers");
}

QList<QAbstractButton *> serverButtons(const GuiProbe &probe)
{
    QList<QAbstractButton *> buttons;
    const QLayout *column = serverColumn(probe);
    for (int i = 0; i < column->count(); ++i)
        buttons.append(qobject_cast<QAbstractButton *>(column->itemAt(i)->widget()));
    return buttons;
}

QList<bool> serverChecks(const GuiProbe &probe)
{
    QList<bool> checks;
    for (const QAbstractButton *button : serverButtons(probe))
        checks.append(button->isChecked());
    return checks;
}

bool listServers(GuiProbe &probe, const QJsonArray &servers)
{
    probe.service.answer("GET /api/groups", 200, QJsonDocument(servers).toJson());
    // A list that is still under way would take this one's place; and the buttons are laid out after the
    // call.
    return probe.settle() && callSlot(*probe.window, "onServersLoaded", Q_ARG(QJsonArray, servers))
           && probe.settle();
}

bool withServerMenu(const GuiProbe &probe, const std::function<void(QMenu *)> &use)
{
    return withMenu([&probe] { press(serverButtons(probe).first(), {5, 5}, Qt::RightButton); }, use);
}

} // namespace tideloft::tests
