// Finding the program's icon.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/window_icon.h"

#include "app/identity.h"

#include <QIconEngine>

#include <optional>

using namespace Qt::StringLiterals;

namespace tideloft::app
{

namespace
{

/// The icon that the program carries. The toolkit would read its pictures, all of them, before anybody shows
/// one: here they are read then.
class CarriedIcon : public QIconEngine
{
public:
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        icon().paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return icon().pixmap(size, 1, mode, state);
    }
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return icon().actualSize(size, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        QList<QSize> sizes;
        for (const int size : lengths)
            sizes.append({size, size});
        return sizes;
    }
    bool isNull() override { return false; }
    [[nodiscard]] QIconEngine *clone() const override { return new CarriedIcon(*this); }

private:
    static constexpr int lengths[] = {16, 24, 32, 48, 64, 128, 256};

    const QIcon &icon()
    {
        if (!read) {
            read.emplace();
            for (const int size : lengths)
                read->addFile(u":/icons/%1.png"_s.arg(size), QSize(size, size));
        }
        return *read;
    }

    std::optional<QIcon> read;
};

} // namespace

QIcon windowIcon()
{
    return QIcon::fromTheme(desktopFileName, QIcon(new CarriedIcon));
}

} // namespace tideloft::app
