// The texts of controls through their ANSI functions, as hosts hold them in the system's code page. The
// length that is asked for first may be more than the text has, never less, and so the text is cut at its
// final zero.

#include "../dialog.h"

#include <string>

#include <windows.h>

namespace qev::platform {

void SetItemText(HWND dialog, int id, const char* text) {
    SetDlgItemTextA(dialog, id, text ? text : "");
}

CString GetItemText(HWND dialog, int id) {
    const HWND control = GetDlgItem(dialog, id);
    if (!control) return {};
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(control)) + 1, '\0');
    GetWindowTextA(control, text.data(), static_cast<int>(text.size()));
    return text.c_str();
}

} // namespace qev::platform
