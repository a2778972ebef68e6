/// \file
/// What is wrong with a drawing, and whether reading goes on.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// One clear line: where and what.
class DrawingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The beginning of a text from the file as a message may show it: 40 bytes, '?' for what is not printable
/// ASCII.
inline std::string Printable(std::string_view text) {
    std::string shown;
    for (const char c : text.substr(0, 40)) shown += c >= ' ' && c <= '~' ? c : '?';
    return shown;
}

/// Takes the errors of one drawing. A strict reader stops at the first one; a lenient one notes it, leaves
/// the entity out, and goes on. The first thousand are kept, the rest is counted.
class ErrorLog {
public:
    static constexpr std::size_t kMostKept = 1000;

    explicit ErrorLog(bool lenient) : m_lenient(lenient) {}

    /// Throws the error again when the log is strict.
    void Note(const DrawingError& error) {
        if (!m_lenient) throw error;
        if (m_errors.size() < kMostKept)
            m_errors.emplace_back(error.what());
        else
            ++m_unkept;
    }
    const std::vector<std::string>& Errors() const { return m_errors; }
    std::size_t Unkept() const { return m_unkept; }

private:
    bool m_lenient;
    std::vector<std::string> m_errors;
    std::size_t m_unkept = 0;
};

} // namespace host
