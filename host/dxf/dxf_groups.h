/// \file
/// A DXF file as a sequence of groups: a code that says what the value means, and the value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace host {

/// One group. The text points into the file's bytes.
struct DxfGroup {
    int code = 0;
    bool isBinary = false;   ///< the value is in `number`
    std::uint32_t place = 0; ///< line of the value, or byte of the group in a binary file
    std::string_view text;
    double number = 0;

    /// The value as a finite number of a size that a drawing may have (up to 1e9); a DrawingError otherwise.
    double AsNumber() const;
    /// The value as an integer, likewise.
    int AsInteger() const;
    /// "line 12" or "byte 345".
    std::string Where() const;
};

/// Reads the groups of an ASCII or binary DXF file that lies in memory.
class DxfGroups {
public:
    explicit DxfGroups(std::string_view bytes);

    /// The next group; false at the end of the bytes. A DrawingError when the bytes are no group.
    bool Next(DxfGroup& group);
    /// Where the reader stands.
    std::string Where() const;

private:
    std::string_view NextLine();
    bool NextAscii(DxfGroup& group);
    bool NextBinary(DxfGroup& group);
    std::string_view Take(std::size_t count);
    double TakeInteger(std::size_t count);

    std::string_view m_bytes;
    std::size_t m_at = 0;
    std::uint32_t m_line = 0;
    bool m_binary = false;
    std::size_t m_codeSize = 2; // bytes of a group code; 1 in old binary files
};

} // namespace host
