/// \file
/// The kit under the name by which the host calls it.
#pragma once

#include <qevtechnics/stretches.h>

namespace qev::kit {}
namespace kit = qev::kit;
