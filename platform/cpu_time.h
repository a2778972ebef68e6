/// \file
/// How long a thread has computed.
#pragma once

namespace qev::platform {

/// Seconds that the calling thread has been computing; waiting does not count.
double ThreadSeconds();

} // namespace qev::platform
