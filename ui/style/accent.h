// The accent colour and its substitution in a style sheet.
#pragma once

#include <QString>

namespace tideloft::ui
{

/// The accent that both style sheets are written with.
inline constexpr QStringView defaultAccent = u"#3b8beb";

/// The sheet with both accent literals, the accent and the dark end of its gradient, replaced by ACCENT.
/// With the default accent the sheet comes back unchanged, gradients included.
QString withAccent(QString sheet, const QString &accent);

} // namespace tideloft::ui
