/// \file
/// Work that Ctrl-C must not tear in two.
#pragma once

namespace qev::platform {

/// While one of these lives, the user's wish to end the process (Ctrl-C, and on Posix systems also the
/// signals to terminate and to hang up) waits; it takes effect when the object goes. For the thread that
/// makes it: other threads of the process must have been started while one lived. At most one lives at a
/// time.
class HeldInterrupts {
public:
    /// Interrupts wait from here on.
    HeldInterrupts();
    /// Ends the process when an interrupt came meanwhile.
    ~HeldInterrupts();
    HeldInterrupts(const HeldInterrupts&) = delete;
    HeldInterrupts& operator=(const HeldInterrupts&) = delete;
};

} // namespace qev::platform
