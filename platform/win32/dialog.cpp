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
