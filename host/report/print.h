/// \file
/// Lines of tables, and lengths and areas as they show them: in the display unit of the process.
#pragma once

#include <iosfwd>
#include <string>

#include <qev/units.h>

namespace host {

/// Writes a formatted text, as printf does, in the "C" locale's numbers as long as nobody has set another
/// one. A text is cut off after 255 characters.
[[gnu::format(printf, 2, 3)]] void Print(std::ostream& out, const char* format, ...);

/// A text from a file as a table may show it: with '?' for each control character, which could end the line
/// or steer the terminal.
std::string OneLine(std::string text);

/// The display unit's name, "mm" or "in".
inline const char* UnitName() {
    return UnitSystem::GetUnitSystem()->GetUnitType() == UNIT_INCH ? "in" : "mm";
}

/// How many digits behind the point a length or an area is shown with.
inline int UnitDigits() {
    return UnitSystem::GetUnitSystem()->GetDefaultPrecision();
}

/// A length in the display unit.
inline double ShownLength(double mm) {
    return UnitSystem::GetUnitSystem()->MetricToUiUnit(mm, CONVERT_LENGTH);
}

/// An area, given in mm^2, in the square of the display unit.
inline double ShownArea(double mm2) {
    return ShownLength(ShownLength(mm2));
}

} // namespace host
