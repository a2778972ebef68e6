// Reads drawings, reports their contours and draws them: what a host does with the library, in small.

#include <iostream>

#include "host.h"
#include "platform/terminal.h"

int main(int argc, char** argv) {
    return host::Main(argc, argv, std::cout, std::cerr, qev::platform::ErrorsGoToTerminal());
}
