#include "print.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <ostream>

namespace host {

// Tables need columns of a width and numbers of a precision, which printf's formats say in one line and
// stream manipulators in six. The compiler checks the format against the arguments.
void Print(std::ostream& out, const char* format, ...) {
    std::array<char, 256> line{};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line.data(), line.size(), format, arguments);
    va_end(arguments);
    out << line.data();
}

std::string OneLine(std::string text) {
    const auto isControl = [](unsigned char c) { return c < ' ' || c == 0x7f; };
    std::replace_if(text.begin(), text.end(), isControl, '?');
    return text;
}

} // namespace host
