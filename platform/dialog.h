/// \file
/// The texts of a dialog's controls.
#pragma once

#include <qev/platform.h>

namespace qev::platform {

/// Sets a control's text; nothing happens for a null dialog and an absent control. A null text is the empty
/// one.
void SetItemText(HWND dialog, int id, const char* text);
/// A control's whole text; the empty one for a null dialog and an absent control.
CString GetItemText(HWND dialog, int id);

} // namespace qev::platform
