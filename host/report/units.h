/// \file
/// Lengths and areas as the tables show them, in the process's display unit.
#pragma once

#include <qev/units.h>

namespace host {

/// "mm" or "in".
inline const char* UnitName() {
    return UnitSystem::GetUnitSystem()->GetUnitType() == UNIT_INCH ? "in" : "mm";
}
/// Digits behind the point.
inline int UnitDigits() {
    return UnitSystem::GetUnitSystem()->GetDefaultPrecision();
}
inline double ShownLength(double mm) {
    return UnitSystem::GetUnitSystem()->MetricToUiUnit(mm, CONVERT_LENGTH);
}
inline double ShownArea(double mm2) {
    return ShownLength(ShownLength(mm2));
}

} // namespace host
