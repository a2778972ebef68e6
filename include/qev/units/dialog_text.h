/// \file
/// Numbers as texts, and stored lengths in the controls of dialogs.
#pragma once

#include <qev/export.h>
#include <qev/platform.h>

/// A number with so many digits behind the point, less the zeros at its end: 1.5 and not 1.500, 2 and
/// not 2.000. The precision is kept between 0 and 1074, the digits that a double has at most. Throws
/// std::bad_alloc when memory is refused.
QEVCOMMON_API CString ToStringPrecision(double value, int precision);

/// Shows a text in a control. One of digits, signs and points only is a length in mm and shown in the display
/// unit, with 3 digits (inch: 5) and without zeros at its end; a number that no double holds counts as 0;
/// any other text is shown as it is, null as the empty one. Nothing happens for a null dialog and an absent
/// control. Throws std::bad_alloc when memory is refused, and the control stays as it was.
QEVCOMMON_API void SetDlgItemTextUnit(HWND dialog, int id, const char* text);
/// Reads a length in the display unit from a control; value becomes its millimetres with 16 digits behind the
/// point. The number that the text begins with counts, decimal or, behind 0x, hexadecimal, and 0 when there
/// is none that a double holds, no control or no dialog. Throws std::bad_alloc when memory is refused, and
/// value stays as it was.
QEVCOMMON_API void GetDlgItemTextUnit(HWND dialog, int id, CString& value);
