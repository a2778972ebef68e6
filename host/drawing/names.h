/// \file
/// Names of layers, blocks and units, for which "Cut" and "CUT" are the same.
#pragma once

#include <algorithm>
#include <string_view>

namespace host {

/// A letter in lower case, if it is one of ASCII; every other byte as it is.
constexpr char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Orders names by their letters in lower case; only those of ASCII have two cases here.
struct NameLess {
    using is_transparent = void; ///< maps with this order are searched by any kind of text
    /// Whether a comes before b.
    bool operator()(std::string_view a, std::string_view b) const {
        return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                            [](char x, char y) { return Lower(x) < Lower(y); });
    }
};

/// Whether two names are the same, in any case of letters.
inline bool IsSameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Lower(x) == Lower(y); });
}

} // namespace host
