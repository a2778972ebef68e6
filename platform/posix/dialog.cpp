// Off Windows a dialog is an object of the host, which knows its controls.

#include "../dialog.h"

namespace qev::platform {

void SetItemText(HWND dialog, int id, const char* text) {
    if (dialog) dialog->SetItemText(id, text ? text : "");
}

CString GetItemText(HWND dialog, int id) {
    return dialog ? dialog->GetItemText(id) : CString();
}

} // namespace qev::platform
