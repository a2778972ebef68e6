/// \file
/// The plug-ins of the host's process.
#pragma once

#include <string>
#include <vector>

namespace qev {
class CTechnicsManager;
}

namespace host {

/// Loads technics plug-ins that were not loaded before. Each is named by its file, or by the name that its
/// file has, with or without extension, in the folder of the plug-ins that are installed with the program, or
/// beside the program; a file in the working directory comes first. Throws a DrawingError with the reason
/// for the first that is refused; those before it stay loaded.
void LoadPlugIns(qev::CTechnicsManager& manager, const std::vector<std::string>& names);

} // namespace host
