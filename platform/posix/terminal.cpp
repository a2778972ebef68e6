// The system's own answer.

#include "../terminal.h"

#include <unistd.h>

namespace qev::platform {

bool ErrorsGoToTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

} // namespace qev::platform
