/// \file
/// Tables of cases from text.
#pragma once

#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <qev/types.h>
#include <qevmath/qevmath.h>

namespace test {

/// Reads one field: a number (1e99 as an integer is the largest one), 0 or 1, a word or 'some words',
/// a point 1,2 or none, a position 2+0.5, or the numbers of a list 1,2,3 or none.
template <class T>
T Field(std::istream& in);

/// "1,2 0.5; 3,4 0.7" as rows of fields, behind the text of each row.
template <class... T>
std::vector<std::tuple<std::string, T...>> Rows(const std::string& text) {
    std::vector<std::tuple<std::string, T...>> rows;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line, ';');) {
        std::istringstream fields(line);
        rows.push_back(std::tuple<std::string, T...>{line, Field<T>(fields)...});
    }
    return rows;
}

} // namespace test
