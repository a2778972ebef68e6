/// \file
/// What a file is, asked of the system without opening it.
#pragma once

namespace qev::platform {

/// The size in bytes of an ordinary file, through links too. -1 when there is none or its status cannot be
/// read, and for folders, pipes and devices, which may block whoever opens them.
long long FileSize(const char* path);

} // namespace qev::platform
