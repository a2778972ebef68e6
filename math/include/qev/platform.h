/// \file
/// The framework's and the system's types that the interface uses, as classes of our own with the framework's
/// names. On Windows the handles are the system's.
#pragma once

#include <compare>
#include <string>
#include <utility>
#include <vector>

/// Text result of the interface: a byte string in the host's multi-byte code page. A value type.
class CString {
public:
    CString() = default;
    /// Copies `text`; a null pointer gives the empty text.
    CString(const char* text) : m_strText(text ? text : "") {}

    /// The bytes, ended by a zero; valid until the object is changed or destroyed. Never null.
    const char* GetString() const { return m_strText.c_str(); }
    /// The bytes, ended by a zero, for functions that take a C text; valid until the object is changed or
    /// destroyed. Never null.
    operator const char*() const { return m_strText.c_str(); }
    /// Number of bytes.
    int GetLength() const { return static_cast<int>(m_strText.size()); }
    /// Whether there is no byte before the final zero.
    bool IsEmpty() const { return m_strText.empty(); }

    /// Whether the bytes are equal.
    friend bool operator==(const CString& a, const CString& b) { return a.m_strText == b.m_strText; }
    /// Whether the bytes are those of a C text; null is the empty one.
    friend bool operator==(const CString& a, const char* b) { return a == CString(b); }
    /// The order of the bytes as unsigned numbers; the start of a text comes before the text.
    friend auto operator<=>(const CString& a, const CString& b) { return a.m_strText <=> b.m_strText; }
    /// The order against a C text, byte by byte as unsigned numbers; null is the empty text.
    friend auto operator<=>(const CString& a, const char* b) { return a <=> CString(b); }

private:
    std::string m_strText;
};

/// A picture in memory, one without pixels at first.
class CImage {
public:
    CImage() = default;
    CImage(const CImage&) = delete;
    CImage& operator=(const CImage&) = delete;

    /// Whether there are no pixels.
    bool IsNull() const { return m_vecBgra.empty(); }
    /// Pixels in a row; 0 without a picture.
    int GetWidth() const { return m_nWidth; }
    /// Number of rows; 0 without a picture.
    int GetHeight() const { return m_nHeight; }
    /// Four bytes a pixel (blue, green, red, alpha), rows from the top without gaps; null without a picture.
    const unsigned char* GetBits() const { return m_vecBgra.data(); }

    /// Takes the pixels over; bgra holds width * height * 4 bytes.
    void Assign(int width, int height, std::vector<unsigned char> bgra) {
        m_nWidth = width;
        m_nHeight = height;
        m_vecBgra = std::move(bgra);
    }

private:
    int m_nWidth = 0;
    int m_nHeight = 0;
    std::vector<unsigned char> m_vecBgra;
};

#if defined(_WIN32)

// As the system's own headers declare them, so that they may come before or after this one.
struct HWND__;
using HWND = HWND__*;
struct HINSTANCE__;
using HINSTANCE = HINSTANCE__*;
using HMODULE = HINSTANCE;

#else

/// A dialog as the host shows it: texts that are reached by the number of their control.
class CIDialog {
public:
    virtual ~CIDialog() = default;
    /// Nothing happens when there is no such item. The text is copied.
    virtual void SetItemText(int id, const char* text) = 0;
    /// The empty text when there is no such item.
    virtual CString GetItemText(int id) const = 0;
};
using HWND = CIDialog*;  ///< the dialog, which stays the host's; null is none
using HMODULE = void*;   ///< of a dynamic library; null is none
using HINSTANCE = void*; ///< of a dynamic library, as HMODULE; null is none

#endif
