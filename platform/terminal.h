/// \file
/// Where a program's messages go.
#pragma once

namespace qev::platform {

/// Whether the process's standard error is a terminal, where a line may be written over.
bool ErrorsGoToTerminal();

} // namespace qev::platform
