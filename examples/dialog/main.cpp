// Asks for a length in a dialog, in millimetres or inches, and prints what a host would store: millimetres.
#include <cstdio>
#include <cstring>

#include <qev/units.h>

#include <windows.h>

#include "dialog.h"

namespace {

struct Length {
    CString mm;
    bool isAcceptedAtOnce; ///< OK is pressed as soon as the dialog stands, for a run without a user
};

INT_PTR CALLBACK OnMessage(HWND dialog, UINT message, WPARAM control, LPARAM created) {
    if (message == WM_INITDIALOG) {
        const auto* length = reinterpret_cast<const Length*>(created);
        SetWindowLongPtrA(dialog, DWLP_USER, created);
        SetDlgItemTextUnit(dialog, LENGTH_FIELD, length->mm);
        if (length->isAcceptedAtOnce) PostMessageA(dialog, WM_COMMAND, IDOK, 0);
        return TRUE;
    }
    const auto command = LOWORD(control);
    if (message != WM_COMMAND || (command != IDOK && command != IDCANCEL)) return FALSE;
    auto* length = reinterpret_cast<Length*>(GetWindowLongPtrA(dialog, DWLP_USER));
    if (command == IDOK) GetDlgItemTextUnit(dialog, LENGTH_FIELD, length->mm);
    EndDialog(dialog, command);
    return TRUE;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3 || !UnitSystem::GetUnitSystem()->Load(argv[1])) {
        std::fprintf(stderr, "usage: dialog_example Metric|Inch MILLIMETRES [--accept]\n");
        return 2;
    }
    Length length{argv[2], argc > 3 && std::strcmp(argv[3], "--accept") == 0};
    const auto answer = DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(LENGTH_DIALOG), nullptr,
                                        OnMessage, reinterpret_cast<LPARAM>(&length));
    if (answer == IDOK) std::printf("%s\n", length.mm.GetString());
    return answer == IDOK ? 0 : 1;
}
