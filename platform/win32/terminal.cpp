// Only a console has a console's mode; NUL, which is a character device too, has none.

#include "../terminal.h"

#include <windows.h>

namespace qev::platform {

bool ErrorsGoToTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

} // namespace qev::platform
