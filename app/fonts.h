// Fonts that stand in for the design's own.
#pragma once

namespace tideloft::app
{

/// Substitutes the design's text font, so that letters and colour emoji come out as meant also where other
/// symbol fonts are installed. Needs the application object.
void substituteFonts();

} // namespace tideloft::app
