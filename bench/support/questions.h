/// \file
/// How much the rows of a work are asked.
#pragma once

namespace qev::bench {

/// How many different questions a work has, where it does not say otherwise: enough that a processor does not
/// learn the way through them by heart.
inline constexpr int kQuestions = 256;

} // namespace qev::bench
