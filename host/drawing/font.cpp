// FreeType reads the file. It is asked for letters in the font's own units, without the rounding to pixels
// that a screen wants, so that an outline is what the font's designer drew: closed contours of lines and
// quadratic Bezier pieces (cubic ones in fonts of another format). A quadratic piece is the cubic one whose
// control points lie two thirds of the way from its ends to its own control point.
//
// The height of a drawing's text is that of its capitals, so that everything is scaled by the height of the
// letter H, which has no round top.
//
// A glyph is read once and kept, by its number in the font, so that all letters without one share the box.
// Places where it is drawn share its contours. A text of ten letters would otherwise take 25 kB.

#include "font.h"

#include <ft2build.h>
// after the library's settings
#include <freetype/freetype.h>
#include <freetype/ftoutln.h>

#include "platform/dynamic_library.h"
#include "platform/path.h"

namespace host {
namespace {

using math::DPOINT2;
using qev::SEGMENT;

constexpr const char* kInstalled = "share/qev/DejaVuSans.ttf";
constexpr const char* kDebian = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// Takes the pieces of a letter as FreeType hands them out. It has room for all of them before it starts,
// since an exception must not pass through FreeType's own functions.
class Pen {
public:
    Pen(const FT_Outline& outline, double scale) : m_dScale(scale) {
        m_vecContours.reserve(static_cast<std::size_t>(outline.n_contours));
        m_vecSegments.reserve(static_cast<std::size_t>(outline.n_points + outline.n_contours));
    }

    void MoveTo(const FT_Vector& p) {
        Close();
        m_start = m_at = Scaled(p);
    }
    void LineTo(const FT_Vector& p) { Draw(SEGMENT(m_at, Scaled(p))); }
    void ConicTo(const FT_Vector& control, const FT_Vector& p) {
        const DPOINT2 middle = Scaled(control);
        const DPOINT2 end = Scaled(p);
        Draw(SEGMENT(m_at, m_at + (middle - m_at) * (2.0 / 3), end + (middle - end) * (2.0 / 3), end));
    }
    void CubicTo(const FT_Vector& first, const FT_Vector& second, const FT_Vector& p) {
        Draw(SEGMENT(m_at, Scaled(first), Scaled(second), Scaled(p)));
    }

    // The contours that were drawn.
    std::vector<std::shared_ptr<const GlyphOutline>> Contours() {
        Close();
        std::vector<std::shared_ptr<const GlyphOutline>> contours;
        std::size_t first = 0;
        for (const std::size_t end : m_vecContours) {
            contours.push_back(MakeContour({m_vecSegments.begin() + first, m_vecSegments.begin() + end}));
            first = end;
        }
        return contours;
    }

private:
    DPOINT2 Scaled(const FT_Vector& p) const {
        return DPOINT2{static_cast<double>(p.x), static_cast<double>(p.y)} * m_dScale;
    }
    // Points of a font are whole numbers, so that equal ones are equal here too.
    void Draw(const SEGMENT& segment) {
        const bool hasLength = segment.nType == SEGMENT::kBezier || math::Norm(segment.ptEnd - m_at) > 0;
        if (hasLength) m_vecSegments.push_back(segment);
        m_at = segment.ptEnd;
    }
    void Close() {
        Draw(SEGMENT(m_at, m_start));
        const std::size_t before = m_vecContours.empty() ? 0 : m_vecContours.back();
        if (m_vecSegments.size() > before) m_vecContours.push_back(m_vecSegments.size());
    }
    static std::shared_ptr<const GlyphOutline> MakeContour(std::vector<SEGMENT> segments) {
        auto outline = std::make_shared<GlyphOutline>();
        for (const SEGMENT& segment : segments) {
            outline->bounds.Add(segment.GetBounds());
            outline->length += segment.GetLength();
            outline->area += math::Cross(segment.ptStart, segment.ptEnd) / 2 + segment.GetChordArea();
        }
        outline->segments = std::move(segments);
        return outline;
    }

    double m_dScale;
    DPOINT2 m_start;
    DPOINT2 m_at;
    std::vector<SEGMENT> m_vecSegments;
    std::vector<std::size_t> m_vecContours; // where each one ends among the segments
};

// What FreeType calls for each piece of an outline.
constexpr FT_Outline_Funcs kPenFunctions{
    [](const FT_Vector* p, void* pen) {
        static_cast<Pen*>(pen)->MoveTo(*p);
        return 0;
    },
    [](const FT_Vector* p, void* pen) {
        static_cast<Pen*>(pen)->LineTo(*p);
        return 0;
    },
    [](const FT_Vector* control, const FT_Vector* p, void* pen) {
        static_cast<Pen*>(pen)->ConicTo(*control, *p);
        return 0;
    },
    [](const FT_Vector* first, const FT_Vector* second, const FT_Vector* p, void* pen) {
        static_cast<Pen*>(pen)->CubicTo(*first, *second, *p);
        return 0;
    },
    0,
    0};

} // namespace

// FreeType's library and the font's face in it.
struct Font::File {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    double scale = 1; // capital heights of one unit of the font

    File() = default;
    ~File() {
        FT_Done_Face(face);
        FT_Done_FreeType(library);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool Load(FT_UInt index) const { return FT_Load_Glyph(face, index, FT_LOAD_NO_SCALE) == 0; }
};

std::unique_ptr<Font> Font::Open() {
    using namespace qev::platform;
    const std::string folder = RemoveFileSpec(ModulePathOf(&kPenFunctions));
    for (const std::string& path : {AppendPath(folder, kInstalled),
                                    AppendPath(RemoveFileSpec(folder), kInstalled), std::string(kDebian)})
        if (auto font = Open(path)) return font;
    return nullptr;
}

std::unique_ptr<Font> Font::Open(const std::string& path) {
    auto file = std::make_unique<File>();
    if (FT_Init_FreeType(&file->library) != 0) return nullptr;
    if (FT_New_Face(file->library, path.c_str(), 0, &file->face) != 0) return nullptr;
    if (!file->Load(FT_Get_Char_Index(file->face, 'H'))) return nullptr;
    const FT_Pos height = file->face->glyph->metrics.height;
    if (height <= 0) return nullptr;
    file->scale = 1 / static_cast<double>(height);
    return std::unique_ptr<Font>(new Font(std::move(file)));
}

Font::Font(std::unique_ptr<File> file) : m_pFile(std::move(file)) {}
Font::~Font() = default;

const Glyph& Font::GlyphOf(char32_t letter) {
    const FT_UInt index = FT_Get_Char_Index(m_pFile->face, letter);
    const auto [found, isNew] = m_mapGlyphs.try_emplace(index);
    Glyph& glyph = found->second;
    if (!isNew) return glyph;
    glyph.isLacking = index == 0; // the font's first glyph is the box
    if (!m_pFile->Load(index)) return glyph;
    FT_GlyphSlotRec& slot = *m_pFile->face->glyph;
    glyph.advance = static_cast<double>(slot.metrics.horiAdvance) * m_pFile->scale;
    if (slot.format != FT_GLYPH_FORMAT_OUTLINE) return glyph;
    Pen pen(slot.outline, m_pFile->scale);
    FT_Outline_Decompose(&slot.outline, &kPenFunctions, &pen);
    glyph.contours = pen.Contours();
    return glyph;
}

double Font::Depth() {
    math::Bounds bounds;
    for (const auto& contour : GlyphOf('p').contours) bounds.Add(contour->bounds);
    return bounds.IsEmpty() ? 0 : -bounds.lower.y;
}

} // namespace host
