/// \file
/// A DXF file as a sequence of groups: a code that says what the value means, and the value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace host {

/// One group of a file. It points into the file's bytes and is valid as long as they are.
struct DxfGroup {
    int code = 0;            ///< what the value means; 0 begins an entity
    bool isBinary = false;   ///< whether the file is binary, so that `place` counts bytes
    bool isNumber = false;   ///< whether the value is in `number`, else it is in `text`
    std::uint32_t place = 0; ///< line of the value, or byte of the group in a binary file
    std::string_view text;   ///< value of a text group, and of every group of an ASCII file
    double number = 0;       ///< value of a number group of a binary file

    /// The value as a finite number of a size that a drawing may have (up to 1e9). Throws a DrawingError for
    /// anything else.
    double AsNumber() const;

    /// The value as a whole number of up to 1e9. Throws a DrawingError for anything else.
    int AsInteger() const;

    /// Where the group stands, for messages: "line 12" or "byte 345".
    std::string Where() const;
};

/// Reads the groups of an ASCII or binary DXF file that lies in memory, one after the other.
class DxfGroups {
public:
    /// Stands before the first group of a file's bytes, which must outlive the reader and its groups.
    explicit DxfGroups(std::string_view bytes);

    /// Reads the next group; false at the end of the bytes. Throws a DrawingError when what follows is no
    /// group.
    bool Next(DxfGroup& group);

    /// Where the reader stands, for messages: "line 12" or "byte 345".
    std::string Where() const;

    /// A place between two groups of a file.
    struct Place {
        std::uint32_t byte = 0; ///< of the next group
        std::uint32_t line = 0; ///< how many lines lie before it, in an ASCII file
    };
    /// Where the next group begins. Files are below 4 GB.
    Place Here() const { return {static_cast<std::uint32_t>(m_nAt), m_nLine}; }
    /// Goes on from a place where this reader, or one of the same bytes, has stood.
    void GoTo(const Place& place) {
        m_nAt = place.byte;
        m_nLine = place.line;
    }

private:
    std::string_view NextLine();
    void SkipBlankLines();
    bool NextAscii(DxfGroup& group);
    bool NextBinary(DxfGroup& group);
    std::string_view Take(std::size_t count);
    double TakeInteger(std::size_t count);

    std::string_view m_bytes;
    std::size_t m_nAt = 0; // byte of the next group
    std::uint32_t m_nLine = 0;
    bool m_bBinary = false;
    char m_cLineEnd = '\n';      // the last byte of a line's end
    std::size_t m_nCodeSize = 2; // bytes of a group code; 1 in old binary files
};

} // namespace host
