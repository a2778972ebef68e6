/// \file
/// What the interface needs of the application framework where that framework is absent.
#pragma once

#include <compare>
#include <string>

/// Text result of the interface: a byte string in the host's multi-byte code page. A value type.
class CString {
public:
    CString() = default;
    /// Copies `text`; a null pointer gives the empty text.
    CString(const char* text) : m_text(text ? text : "") {}

    /// The bytes, ended by a zero; valid until the object is changed or destroyed. Never null.
    const char* GetString() const { return m_text.c_str(); }
    operator const char*() const { return m_text.c_str(); }
    /// Number of bytes.
    int GetLength() const { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const { return m_text.empty(); }

    friend bool operator==(const CString& a, const CString& b) { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, const char* b) { return a == CString(b); }
    friend auto operator<=>(const CString& a, const CString& b) { return a.m_text <=> b.m_text; }
    friend auto operator<=>(const CString& a, const char* b) { return a <=> CString(b); }

private:
    std::string m_text;
};
