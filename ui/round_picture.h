// Pictures of people, as circles.
#pragma once

#include <QPixmap>

namespace tideloft::ui
{

/// SOURCE stretched to SIZE x SIZE px, whatever its shape, and cut to a circle.
QPixmap roundPicture(const QPixmap &source, int size);

} // namespace tideloft::ui
