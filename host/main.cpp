// Reads a drawing, reports its contours and draws them: what a host does with the library, in small.

#include <iostream>

#include <qev/units.h>

#include "host.h"

int main(int argc, char** argv) {
    try {
        const host::Options options = host::ParseOptions(argc, argv);
        if (!UnitSystem::GetUnitSystem()->Load(options.unit))
            throw host::UsageError("--unit takes Metric or Inch");
        return host::Run(options, std::cout, std::cerr);
    } catch (const host::UsageError& error) {
        std::cerr << "qev_host: " << error.what() << "\n" << host::kUsage;
        return 2;
    }
}
