/// \file
/// What is wrong with a drawing, and whether reading goes on.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace host {

/// One clear line: where and what.
class DrawingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Takes the errors of one drawing. A strict reader stops at the first one; a lenient one notes it, leaves
/// the entity out, and goes on.
class ErrorLog {
public:
    explicit ErrorLog(bool lenient) : m_lenient(lenient) {}

    /// Throws the error again when the log is strict.
    void Note(const DrawingError& error) {
        if (!m_lenient) throw error;
        m_errors.emplace_back(error.what());
    }
    const std::vector<std::string>& Errors() const { return m_errors; }

private:
    bool m_lenient;
    std::vector<std::string> m_errors;
};

} // namespace host
