#include "support/rows.h"

#include <cstdlib>
#include <iomanip>

namespace test {

std::string Word(std::istream& in) {
    std::string word;
    EXPECT_TRUE(in >> std::quoted(word, '\'')) << "a row is too short";
    return word;
}

std::vector<double> Numbers(std::istream& in, char separator) {
    std::vector<double> numbers;
    std::istringstream parts(Word(in));
    for (std::string part; std::getline(parts, part, separator) && part != "none";) {
        char* end = nullptr;
        numbers.push_back(std::strtod(part.c_str(), &end));
        EXPECT_EQ(*end, 0) << part;
    }
    return numbers;
}

} // namespace test
