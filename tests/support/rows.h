/// \file
/// Tables of cases from text.
#pragma once

#include <algorithm>
#include <climits>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <qev/types.h>
#include <qevmath/qevmath.h>

#include <gtest/gtest.h>

namespace test {

/// The next word, or 'some words'.
std::string Word(std::istream& in);
/// The numbers in the next word; none where it is "none".
std::vector<double> Numbers(std::istream& in, char separator = ',');
/// 1e99 is the largest integer.
inline int ToInt(double number) {
    return static_cast<int>(std::clamp<double>(number, INT_MIN, INT_MAX));
}

/// Reads one field: a number, 0 or 1, words, a point 1,2 or none, a position 2+0.5, or a list 1,2,3 or none.
template <class T>
T Field(std::istream& in) {
    if constexpr (std::is_same_v<T, std::string>) {
        return Word(in);
    } else {
        const std::vector<double> numbers = Numbers(in, std::is_same_v<T, math::POLYPOS> ? '+' : ',');
        if constexpr (std::is_same_v<T, std::vector<double>> || std::is_same_v<T, std::vector<int>>)
            return {numbers.begin(), numbers.end()};
        else if constexpr (std::is_same_v<T, math::POLYPOS>)
            return {ToInt(numbers.at(0)), numbers.at(1)};
        else if constexpr (std::is_same_v<T, math::DPOINT2>)
            return numbers.empty() ? math::NoPoint() : math::DPOINT2{numbers.at(0), numbers.at(1)};
        else
            return static_cast<T>(std::is_same_v<T, double> ? numbers.at(0) : ToInt(numbers.at(0)));
    }
}

/// "1,2 0.5; 3,4 0.7" as rows of fields, behind the text of each row.
template <class... T>
std::vector<std::tuple<std::string, T...>> Rows(const std::string& text) {
    std::vector<std::tuple<std::string, T...>> rows;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line, ';');) {
        std::istringstream fields(line);
        rows.push_back(std::tuple<std::string, T...>{line, Field<T>(fields)...});
        EXPECT_TRUE((fields >> std::ws).eof()) << line;
    }
    return rows;
}

} // namespace test
