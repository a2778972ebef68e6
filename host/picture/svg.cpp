// SVG draws what the library's outlines are made of, so that nothing is flattened into chords: a line is "L",
// a cubic Bezier piece "C", an arc of a circle or an ellipse "A". An outline becomes one path, each piece as
// it comes from the object, and the picture is as exact as its numbers.
//
// "A" is given by its end point and not by its angles. From start, end and radii two centres are possible,
// and from each a short and a long way round; two flags choose. A whole ellipse ends where it starts, and
// then no centre follows, so that an arc of more than half a turn is drawn as two. Half a turn may stay
// one: nine digits then place its centre within 3e-5 of the radius, which is less than a pixel.
//
// Numbers have nine digits, a hundredth of a millimetre on a drawing of a kilometre. All 17 digits of a
// double would double the file and show nothing more.
//
// The drawing's y axis points up and SVG's down. One group turns the whole picture over, rather than every
// coordinate: so the numbers in the file are the drawing's.

#include "svg.h"

#include <charconv>
#include <cmath>
#include <ostream>
#include <string_view>

namespace host {
namespace {

using math::DPOINT2;
using qev::SEGMENT;

void Append(std::string& text, std::string_view part) {
    text += part;
}

void Append(std::string& text, double value) {
    char digits[32];
    text.append(digits,
                std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 9).ptr);
}

void Append(std::string& text, const DPOINT2& p) {
    Append(text, p.x);
    text += ' ';
    Append(text, p.y);
}

// Texts, numbers and points, one after the other.
template <class... Parts>
std::string Text(const Parts&... parts) {
    std::string text;
    (Append(text, parts), ...);
    return text;
}

// "A" with radii, rotation in degrees, and two flags: whether the arc turns by more than half a turn, and
// whether its angles grow.
std::string ArcTo(double a, double b, double rotation, double sweep, const DPOINT2& end) {
    const bool longWay = std::abs(sweep) > math::kPi;
    return Text("A", a, " ", b, " ", rotation * 180 / math::kPi, longWay ? " 1" : " 0",
                sweep > 0 ? " 1 " : " 0 ", end);
}

// An elliptic arc is a path of its own: no object has other pieces beside it.
std::string PathOf(const math::EllipticArc& arc) {
    const double rotation = math::D2GetNormalAngle(arc.GetAxisA());
    const int parts = std::abs(arc.GetSweep()) > math::kPi ? 2 : 1;
    const double step = arc.GetSweep() / parts;
    std::string path = Text("M", arc.PointAt(arc.GetStart()));
    for (int i = 1; i <= parts; ++i)
        path += ArcTo(arc.GetSemiAxisA(), arc.GetSemiAxisB(), rotation, step,
                      arc.PointAt(arc.GetStart() + i * step));
    return path;
}

// A segment goes on from where the path stands. An arc turns by four times the arc tangent of its bulge.
std::string PathOf(const SEGMENT& s) {
    if (s.nType == SEGMENT::kBezier) return Text("C", s.ptCtrl1, " ", s.ptCtrl2, " ", s.ptEnd);
    const double curvature = s.GetArc().GetCurvature();
    if (curvature == 0) return Text("L", s.ptEnd);
    const double radius = 1 / std::abs(curvature);
    return ArcTo(radius, radius, 0, 4 * std::atan(s.dBulge), s.ptEnd);
}

std::string PathOf(const qev::CCadObject& object) {
    std::string path;
    for (int i = 0, count = object.GetPieceCount(); i < count; ++i) {
        const qev::OutlinePiece piece = object.GetPiece(i);
        const auto* segment = std::get_if<SEGMENT>(&piece);
        if (segment && i == 0) path += Text("M", segment->ptStart);
        path += std::visit([](const auto& p) { return PathOf(p); }, piece);
    }
    return path;
}

// The point at a part of a piece's length.
DPOINT2 PointOf(const qev::OutlinePiece& piece, double ratio) {
    if (const auto* segment = std::get_if<SEGMENT>(&piece)) return segment->GetPoint(ratio);
    const auto& arc = std::get<math::EllipticArc>(piece);
    return arc.PointAt(arc.ParameterAt(ratio));
}

} // namespace

SvgPicture::SvgPicture(const qev::CadRect& box)
    : m_box(box), m_dUnit(std::hypot(box.width, box.height) / 1000) {
    if (!(m_dUnit > 0)) m_dUnit = 1;    // nothing, or a single point
    const double margin = 20 * m_dUnit; // room for marks at the edge
    m_box = {box.x - margin, box.y - margin, box.width + 2 * margin, box.height + 2 * margin};
}

void SvgPicture::Draw(const qev::CCadObject& object, const char* style) {
    qev::TreeWalk walk(&object, qev::TreeWalk::AllMembers);
    for (auto step = walk.Next(); step != qev::TreeWalk::Step::kEnd; step = walk.Next()) {
        if (step != qev::TreeWalk::Step::kLeaf) continue;
        const qev::CCadObject& leaf = *walk.Object();
        if (leaf.GetType() == qev::kCadDot)
            Ring(leaf.GetStartPoint(), m_dUnit, style);
        else
            m_strBody += Text("<path class='", style, "' d='", PathOf(leaf), "'/>\n");
    }
}

void SvgPicture::Ring(const DPOINT2& p, double radius, const char* style) {
    m_strBody += Text("<circle class='", style, "' cx='", p.x, "' cy='", p.y, "' r='", radius, "'/>\n");
}

void SvgPicture::Mark(const ObjectReport& report) {
    const qev::CCadObject& object = *report.object;
    if (report.segments < 1 || object.GetPieceCount() == 0) return;
    const double size = std::min(6 * m_dUnit, report.length / 10); // short contours get small marks
    Ring(object.GetStartPoint(), size / 2, "start");
    const qev::OutlinePiece first = object.GetPiece(0);
    // The arrow lies on the middle of the first piece, along the chord of a tenth of it.
    const DPOINT2 tip = PointOf(first, 0.55);
    const DPOINT2 along = tip - PointOf(first, 0.45);
    if (const double norm = math::Norm(along); norm > 0) {
        const DPOINT2 back = tip - along * (size / norm);
        const DPOINT2 side = math::LeftOf(along) * (size / norm / 3);
        m_strBody += Text("<path class='way' d='M", tip, "L", back + side, "L", back - side, "Z'/>\n");
    }
    for (const DPOINT2& corner : report.corners)
        m_strBody += Text("<rect class='corner' x='", corner.x - size / 3, "' y='", corner.y - size / 3,
                          "' width='", size * 2 / 3, "' height='", size * 2 / 3, "'/>\n");
}

void SvgPicture::MarkPoint(const DPOINT2& p, const char* style) {
    Ring(p, 4 * m_dUnit, style);
}

void SvgPicture::MarkJoints(const qev::CCadMultiSegments& contour, const char* style) {
    for (int i = 0, count = contour.GetSegmentCount(); i < count; ++i)
        Ring(contour.GetSegment(i).ptStart, m_dUnit / 2, style);
}

// The style sheet, a white ground, and the turned group with all that was drawn. The box is turned over by
// hand: it belongs to the document, outside the group.
void SvgPicture::Write(std::ostream& out) const {
    constexpr double kLongSide = 1600; // pixels
    const double scale = kLongSide / std::max(m_box.width, m_box.height);
    const double top = -m_box.y - m_box.height;
    out << Text(
        "<svg xmlns='http://www.w3.org/2000/svg' width='", m_box.width * scale, "' height='",
        m_box.height * scale, "' viewBox='", m_box.x, " ", top, " ", m_box.width, " ", m_box.height,
        "'>\n<style>path,circle,rect{fill:none;stroke-width:", m_dUnit * 0.8,
        "}.outline{stroke:#234}.text{stroke:#888}.start{stroke:#080}.way{fill:#06c}.corner{stroke:#c00}"
        ".converted{stroke:#f80;stroke-dasharray:",
        m_dUnit * 4, "}.joint{fill:#f80}.zone{stroke:#e22;stroke-width:", m_dUnit * 2,
        "}.free{stroke:#2a2;stroke-width:", m_dUnit * 2, "}.path{stroke:#08f;stroke-width:", m_dUnit * 1.6,
        "}.chosen{fill:#2a2}.pick{fill:#c0c}.cut{stroke:#c0c;stroke-width:", m_dUnit * 2.5,
        "}</style>\n<rect x='", m_box.x, "' y='", top, "' width='", m_box.width, "' height='", m_box.height,
        "' style='fill:#fff'/>\n<g transform='scale(1,-1)'>\n")
        << m_strBody << "</g>\n</svg>\n";
}

} // namespace host
