/// \file
/// What is wrong with a drawing, and whether reading goes on.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// A drawing, or a request about it, cannot be served; the text says where and what, in one line.
class DrawingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The beginning of a text from a file as a message may show it: at most 40 bytes, with '?' for each that is
/// not printable ASCII.
inline std::string Printable(std::string_view text) {
    std::string shown;
    for (const char c : text.substr(0, 40)) shown += c >= ' ' && c <= '~' ? c : '?';
    return shown;
}

/// A text from a file in quotes, as a message may show it: its first 40 bytes, '?' for what is not printable
/// ASCII.
inline std::string Quoted(std::string_view text) {
    std::string quoted(1, '\'');
    quoted += Printable(text);
    quoted += '\'';
    return quoted;
}

/// Takes the errors of one drawing. A strict log stops the reading at the first one; a lenient one notes it,
/// the reader leaves the entity out, and goes on. The first thousand texts are kept, the rest is counted. A
/// drawing without an error was read whole, with errors it was mostly read, and one that threw was refused.
class ErrorLog {
public:
    /// How many texts are kept: enough for a reader, and a bound on the memory that a damaged file can take.
    static constexpr std::size_t kMostKept = 1000;

    /// An empty log, lenient or strict.
    explicit ErrorLog(bool lenient) : m_bLenient(lenient) {}

    /// Takes an error; a strict log throws it again instead.
    void Note(const DrawingError& error) {
        if (!m_bLenient) throw error;
        if (m_vecErrors.size() < kMostKept)
            m_vecErrors.emplace_back(error.what());
        else
            ++m_nUnkept;
    }

    /// Takes what the user should know of an entity that has nothing to be drawn, as a polyline of one point.
    /// Nothing of the drawing is lost by it, so that a strict log goes on too.
    void Remark(const std::string& text) {
        if (m_vecRemarks.size() < kMostKept) m_vecRemarks.push_back(text);
    }

    /// The texts of the errors that were kept, in the order in which they came.
    const std::vector<std::string>& Errors() const { return m_vecErrors; }

    /// How many errors came after the log was full.
    std::size_t Unkept() const { return m_nUnkept; }

    /// The first thousand remarks, in the order in which they came.
    const std::vector<std::string>& Remarks() const { return m_vecRemarks; }

private:
    bool m_bLenient;
    std::vector<std::string> m_vecErrors;
    std::vector<std::string> m_vecRemarks;
    std::size_t m_nUnkept = 0;
};

} // namespace host
