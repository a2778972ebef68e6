/// \file
/// The outlines of letters, from a font file.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <qevdata/qevdata.h>

namespace host {

/// A closed contour of a letter, in units of a capital's height: the letter's origin is (0, 0), its base line
/// the x axis. It is shared by all places where the letter is drawn.
struct GlyphOutline {
    std::vector<qev::SEGMENT> segments; ///< lines and Bezier pieces that join end to start
    math::Bounds bounds;                ///< the exact box
    double length = 0;
    double area = 0; ///< enclosed, negative when the contour runs clockwise
};

/// How a letter is drawn, in units of a capital's height.
struct Glyph {
    std::vector<std::shared_ptr<const GlyphOutline>> contours; ///< none for a blank
    double advance = 0;                                        ///< from its origin to that of the next letter
    bool isLacking = false; ///< whether the font does not have the letter, and a box stands for it
};

/// A font that is read letter by letter, as they are asked for. Letters stand side by side without kerning,
/// in the order of the text.
class Font {
public:
    /// The host's font: share/qev/DejaVuSans.ttf in the program's folder or beside it, or where Debian has
    /// it. Null when there is none.
    static std::unique_ptr<Font> Open();

    /// The font of a file; null when there is none or its capitals have no height.
    static std::unique_ptr<Font> Open(const std::string& path);

    ~Font();
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    /// How a letter is drawn. The answer stays where it is as long as the font.
    const Glyph& GlyphOf(char32_t letter);

    /// How far small letters reach below the base line, in units of a capital's height; above 0.
    double Depth();

private:
    struct File;
    explicit Font(std::unique_ptr<File> file);

    std::unique_ptr<File> m_pFile;
    std::unordered_map<unsigned, Glyph> m_mapGlyphs; // by their numbers in the font
};

} // namespace host
