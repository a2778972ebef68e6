#include "host/drawings.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>

namespace test {

std::string Groups(const std::string& words) {
    std::istringstream in(words);
    std::string lines;
    for (std::string word; in >> word;) lines += word + "\n";
    return lines;
}

std::string DxfFile(const std::string& entities, const std::string& blocks) {
    return Groups("999 a_test 0 SECTION 2 BLOCKS " + blocks + " 0 ENDSEC 0 SECTION 2 ENTITIES " + entities
                  + " 0 ENDSEC 0 EOF");
}

std::string BinaryFile(const std::string& asciiFile) {
    std::string bytes("AutoCAD Binary DXF\r\n\x1a\0", 22);
    std::istringstream in(asciiFile);
    std::string code, value;
    while (std::getline(in, code) && std::getline(in, value)) {
        const int number = std::stoi(code);
        const double asDouble = std::strtod(value.c_str(), nullptr);
        const auto asInteger = static_cast<std::int64_t>(asDouble);
        const auto append = [&](const void* data, std::size_t size) {
            bytes.append(static_cast<const char*>(data), size);
        };
        const bool isDouble = (number >= 10 && number <= 59) || (number >= 210 && number <= 239);
        const bool isInteger = number >= 60 && number <= 99;
        append(&number, 2);
        if (isDouble) append(&asDouble, 8);
        if (isInteger) append(&asInteger, number < 80 ? 2 : 4);
        if (!isDouble && !isInteger) append(value.c_str(), value.size() + 1);
    }
    return bytes;
}

} // namespace test
