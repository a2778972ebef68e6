// Reads a drawing, reports its contours and draws them: what a host does with the library, in small.

#include <iostream>

#include "host.h"

int main(int argc, char** argv) {
    try {
        return host::Run(host::ParseOptions(argc, argv), std::cout, std::cerr);
    } catch (const host::UsageError& error) {
        std::cerr << "qev_host: " << error.what() << "\n" << host::kUsage;
        return 2;
    }
}
