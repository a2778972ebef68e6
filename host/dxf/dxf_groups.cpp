// DXF comes in two forms. The ASCII form has two lines for each group, the code and the value. The binary
// form begins with a sentinel and has the code in two bytes (in one, in files of the oldest programs) and the
// value in a form that depends on the range of the code alone. Both give the same groups, so that nothing
// behind this reader asks which form it was.
//
// An ASCII value stays a text until somebody asks for a number: most numbers of a file are never looked at,
// and of a damaged one the message can show what stands there. Nothing is copied.
//
// What other programs and old systems do to the lines of the ASCII form is taken as it is meant: a mark of
// the byte order before the first line, blank lines before it, lines that end in CR alone, blanks round a
// name.
//
// Numbers must be whole tokens and finite. They are bounded besides: a coordinate of 1e300 is damage, and one
// such point would make every box, grid and picture of the drawing useless.

#include "dxf_groups.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "host/drawing/drawing_error.h"

namespace host {
namespace {

constexpr std::string_view kBinarySentinel("AutoCAD Binary DXF\r\n\x1a\0", 22);
constexpr std::string_view kByteOrderMark("\xef\xbb\xbf"); // of UTF-8
// A thousand kilometres, if it is in mm. A number beyond it is damage, and would cost the rest of the drawing
// its digits.
constexpr double kLargestNumber = 1e9;

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Reads a whole token, with blanks round it and a plus sign before it; false when anything else is left.
template <class T>
bool Parse(std::string_view text, T& value) {
    text = Trimmed(text);
    if (text.size() > 1 && text.front() == '+') text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

// Whether a code's text is a name, which has no blanks at its ends; those of a text that is drawn count.
constexpr bool IsName(int code) {
    return code == 0 || code == 2 || (code >= 5 && code <= 9) || code == 410;
}

enum class ValueType { kText, kDouble, kInt16, kInt32, kInt64, kByte, kChunk };

// The value type that binary files store for a group code; what is in no range is a text.
ValueType TypeOf(int code) {
    const struct {
        int first, last;
        ValueType type;
    } ranges[] = {
        {10, 59, ValueType::kDouble},    {60, 79, ValueType::kInt16},      {90, 99, ValueType::kInt32},
        {110, 149, ValueType::kDouble},  {160, 169, ValueType::kInt64},    {170, 179, ValueType::kInt16},
        {210, 239, ValueType::kDouble},  {270, 289, ValueType::kInt16},    {290, 299, ValueType::kByte},
        {310, 319, ValueType::kChunk},   {370, 389, ValueType::kInt16},    {400, 409, ValueType::kInt16},
        {420, 429, ValueType::kInt32},   {440, 459, ValueType::kInt32},    {460, 469, ValueType::kDouble},
        {1004, 1004, ValueType::kChunk}, {1010, 1059, ValueType::kDouble}, {1060, 1070, ValueType::kInt16},
        {1071, 1071, ValueType::kInt32},
    };
    for (const auto& range : ranges)
        if (code >= range.first && code <= range.last) return range.type;
    return ValueType::kText;
}

} // namespace

std::string DxfGroup::Where() const {
    return (isBinary ? "byte " : "line ") + std::to_string(place);
}

double DxfGroup::AsNumber() const {
    double value = number;
    if (!isNumber && !Parse(text, value))
        throw DrawingError(Where() + ": " + Quoted(text) + " is not a number");
    if (!(std::abs(value) <= kLargestNumber)) {
        const std::string shown = isNumber ? std::to_string(value) : Quoted(text);
        throw DrawingError(Where() + ": the number " + shown + " is out of range");
    }
    return value;
}

int DxfGroup::AsInteger() const {
    const double value = AsNumber();
    if (value != std::floor(value))
        throw DrawingError(Where() + ": " + Quoted(text) + " is not a whole number");
    return static_cast<int>(value);
}

DxfGroups::DxfGroups(std::string_view bytes) : m_bytes(bytes) {
    m_bBinary = bytes.starts_with(kBinarySentinel);
    if (!m_bBinary) {
        if (bytes.starts_with(kByteOrderMark)) m_nAt = kByteOrderMark.size();
        if (bytes.find('\n') == std::string_view::npos) m_cLineEnd = '\r';
        SkipBlankLines();
        return;
    }
    m_nAt = kBinarySentinel.size();
    // old files start with the code 0 in one byte, and its text at once
    if (bytes.size() > m_nAt + 1 && bytes[m_nAt] == '\0' && bytes[m_nAt + 1] != '\0') m_nCodeSize = 1;
}

std::string DxfGroups::Where() const {
    return m_bBinary ? "byte " + std::to_string(m_nAt) : "line " + std::to_string(m_nLine);
}

bool DxfGroups::Next(DxfGroup& group) {
    return m_bBinary ? NextBinary(group) : NextAscii(group);
}

std::string_view DxfGroups::NextLine() {
    const std::size_t end = std::min(m_bytes.find(m_cLineEnd, m_nAt), m_bytes.size());
    std::string_view line = m_bytes.substr(m_nAt, end - m_nAt);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    m_nAt = std::min(end + 1, m_bytes.size());
    ++m_nLine;
    return line;
}

void DxfGroups::SkipBlankLines() {
    Place line = Here();
    while (m_nAt < m_bytes.size() && Trimmed(NextLine()).empty()) line = Here();
    GoTo(line);
}

bool DxfGroups::NextAscii(DxfGroup& group) {
    if (m_bytes.find_first_not_of(" \t\r\n", m_nAt) == std::string_view::npos) return false;
    const std::string_view code = NextLine();
    if (!Parse(code, group.code)) throw DrawingError(Where() + ": " + Quoted(code) + " is no group code");
    if (m_nAt >= m_bytes.size()) throw DrawingError(Where() + ": the file ends within a group");
    group.text = NextLine();
    if (IsName(group.code)) group.text = Trimmed(group.text);
    group.place = m_nLine;
    return true;
}

std::string_view DxfGroups::Take(std::size_t count) {
    // no overflow: the reader never stands behind the end
    if (count > m_bytes.size() - m_nAt) throw DrawingError(Where() + ": the file ends within a group");
    const std::string_view taken = m_bytes.substr(m_nAt, count);
    m_nAt += count;
    return taken;
}

// A little-endian signed integer: its bits are shifted up to the sign and back down.
double DxfGroups::TakeInteger(std::size_t count) {
    std::uint64_t bits = 0;
    const std::string_view bytes = Take(count);
    for (std::size_t i = count; i-- > 0;) bits = bits << 8 | static_cast<unsigned char>(bytes[i]);
    const auto shift = static_cast<int>(64 - 8 * count);
    return static_cast<double>(static_cast<std::int64_t>(bits << shift) >> shift);
}

bool DxfGroups::NextBinary(DxfGroup& group) {
    if (m_nAt >= m_bytes.size()) return false;
    group = {};
    group.isBinary = true;
    group.place = static_cast<std::uint32_t>(m_nAt);
    const auto codeBytes = Take(m_nCodeSize);
    group.code = static_cast<unsigned char>(codeBytes[0]);
    if (m_nCodeSize == 2)
        group.code |= static_cast<unsigned char>(codeBytes[1]) << 8;
    else if (group.code == 255)
        group.code = static_cast<int>(TakeInteger(2)); // extended data of old files
    const ValueType type = TypeOf(group.code);
    group.isNumber = type != ValueType::kText && type != ValueType::kChunk;
    switch (type) {
    case ValueType::kText:
        group.text = m_bytes.substr(m_nAt, m_bytes.find('\0', m_nAt) - m_nAt);
        Take(group.text.size() + 1);
        break;
    case ValueType::kDouble: {
        const std::string_view bytes = Take(sizeof group.number);
        std::memcpy(&group.number, bytes.data(), sizeof group.number);
        break;
    }
    case ValueType::kInt16:
        group.number = TakeInteger(2);
        break;
    case ValueType::kInt32:
        group.number = TakeInteger(4);
        break;
    case ValueType::kInt64:
        group.number = TakeInteger(8);
        break;
    case ValueType::kByte:
        group.number = TakeInteger(1);
        break;
    case ValueType::kChunk:
        group.text = Take(static_cast<unsigned char>(Take(1)[0]));
        break;
    }
    return true;
}

} // namespace host
