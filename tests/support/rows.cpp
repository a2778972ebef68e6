#include "support/rows.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <iomanip>

#include <gtest/gtest.h>

namespace test {
namespace {

int ToInt(double number) {
    return static_cast<int>(std::clamp<double>(number, INT_MIN, INT_MAX));
}

} // namespace

template <>
std::string Field(std::istream& in) {
    std::string word;
    EXPECT_TRUE(in >> std::quoted(word, '\'')) << "a row is too short";
    return word;
}

template <>
std::vector<double> Field(std::istream& in) {
    std::vector<double> numbers;
    std::istringstream parts(Field<std::string>(in));
    for (std::string part; std::getline(parts, part, ',') && part != "none";) {
        char* end = nullptr;
        numbers.push_back(std::strtod(part.c_str(), &end));
        EXPECT_EQ(*end, 0) << part;
    }
    return numbers;
}

template <>
std::vector<int> Field(std::istream& in) {
    std::vector<int> integers;
    for (const double number : Field<std::vector<double>>(in)) integers.push_back(ToInt(number));
    return integers;
}

template <>
double Field(std::istream& in) {
    return Field<std::vector<double>>(in).at(0);
}

template <>
int Field(std::istream& in) {
    return ToInt(Field<double>(in));
}

template <>
bool Field(std::istream& in) {
    return Field<int>(in) != 0;
}

template <>
math::DPOINT2 Field(std::istream& in) {
    const std::vector<double> numbers = Field<std::vector<double>>(in);
    return numbers.empty() ? math::NoPoint() : math::DPOINT2{numbers.at(0), numbers.at(1)};
}

template <>
math::POLYPOS Field(std::istream& in) {
    std::string word = Field<std::string>(in);
    std::replace(word.begin(), word.end(), '+', ' ');
    std::istringstream parts(word);
    const int index = Field<int>(parts);
    return {index, Field<double>(parts)};
}

} // namespace test
