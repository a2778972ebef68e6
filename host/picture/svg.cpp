#include "svg.h"

#include <charconv>
#include <cmath>
#include <ostream>

namespace host {
namespace {

using math::DPOINT2;
using qev::SEGMENT;

std::string Number(double value) {
    char digits[32];
    char* const end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 9).ptr;
    return {digits, end};
}

std::string Pair(const DPOINT2& p) {
    return Number(p.x) + " " + Number(p.y);
}

// "A" with radii, rotation in degrees, and the flags for the long way round and for growing angles.
std::string ArcTo(double a, double b, double rotation, double sweep, const DPOINT2& end) {
    const bool longWay = std::abs(sweep) > math::kPi;
    return "A" + Number(a) + " " + Number(b) + " " + Number(rotation * 180 / math::kPi)
           + (longWay ? " 1" : " 0") + (sweep > 0 ? " 1 " : " 0 ") + Pair(end);
}

// SVG cannot end an arc where it starts, so that wide arcs are drawn as two.
std::string PathOf(const math::EllipticArc& arc) {
    const double rotation = math::D2GetNormalAngle(arc.GetAxisA());
    const int parts = std::abs(arc.GetSweep()) > math::kPi ? 2 : 1;
    const double step = arc.GetSweep() / parts;
    std::string path = "M" + Pair(arc.PointAt(arc.GetStart()));
    for (int i = 1; i <= parts; ++i)
        path += ArcTo(arc.GetSemiAxisA(), arc.GetSemiAxisB(), rotation, step,
                      arc.PointAt(arc.GetStart() + i * step));
    return path;
}

std::string PathOf(const SEGMENT& s) {
    if (s.nType == SEGMENT::kBezier)
        return "C" + Pair(s.ptCtrl1) + " " + Pair(s.ptCtrl2) + " " + Pair(s.ptEnd);
    const double curvature = s.GetArc().GetCurvature();
    if (curvature == 0) return "L" + Pair(s.ptEnd);
    const double radius = 1 / std::abs(curvature);
    return ArcTo(radius, radius, 0, 4 * std::atan(s.dBulge), s.ptEnd);
}

std::string PathOf(const qev::CCadObject& object) {
    std::string path;
    for (int i = 0, count = object.GetPieceCount(); i < count; ++i) {
        const qev::OutlinePiece piece = object.GetPiece(i);
        const auto* segment = std::get_if<SEGMENT>(&piece);
        if (segment && i == 0) path += "M" + Pair(segment->ptStart);
        path += std::visit([](const auto& p) { return PathOf(p); }, piece);
    }
    return path;
}

DPOINT2 PointOf(const qev::OutlinePiece& piece, double ratio) {
    if (const auto* segment = std::get_if<SEGMENT>(&piece)) return segment->GetPoint(ratio);
    const auto& arc = std::get<math::EllipticArc>(piece);
    return arc.PointAt(arc.ParameterAt(ratio));
}

} // namespace

SvgPicture::SvgPicture(const qev::CadRect& box)
    : m_box(box), m_unit(std::hypot(box.width, box.height) / 1000) {
    if (!(m_unit > 0)) m_unit = 1; // nothing, or a single point
    const double margin = 20 * m_unit;
    m_box = {box.x - margin, box.y - margin, box.width + 2 * margin, box.height + 2 * margin};
}

void SvgPicture::Draw(const qev::CCadObject& object, const char* style) {
    qev::TreeWalk walk(&object, qev::TreeWalk::AllMembers);
    for (auto step = walk.Next(); step != qev::TreeWalk::Step::kEnd; step = walk.Next()) {
        if (step != qev::TreeWalk::Step::kLeaf) continue;
        const qev::CCadObject& leaf = *walk.Object();
        if (leaf.GetType() == qev::kCadDot)
            Ring(leaf.GetStartPoint(), m_unit, style);
        else
            m_body += "<path class='" + std::string(style) + "' d='" + PathOf(leaf) + "'/>\n";
    }
}

void SvgPicture::Ring(const DPOINT2& p, double radius, const char* style) {
    m_body += "<circle class='" + std::string(style) + "' cx='" + Number(p.x) + "' cy='" + Number(p.y)
              + "' r='" + Number(radius) + "'/>\n";
}

void SvgPicture::Mark(const ObjectReport& report) {
    const qev::CCadObject& object = *report.object;
    if (report.segments < 1 || object.GetPieceCount() == 0) return;
    const double size = std::min(6 * m_unit, report.length / 10);
    Ring(object.GetStartPoint(), size / 2, "start");
    const qev::OutlinePiece first = object.GetPiece(0);
    const DPOINT2 tip = PointOf(first, 0.55);
    const DPOINT2 along = tip - PointOf(first, 0.45);
    if (const double norm = math::Norm(along); norm > 0) {
        const DPOINT2 back = tip - along * (size / norm);
        const DPOINT2 side = math::LeftOf(along) * (size / norm / 3);
        m_body += "<path class='way' d='M" + Pair(tip) + "L" + Pair(back + side) + "L" + Pair(back - side)
                  + "Z'/>\n";
    }
    for (const DPOINT2& corner : report.corners)
        m_body += "<rect class='corner' x='" + Number(corner.x - size / 3) + "' y='"
                  + Number(corner.y - size / 3) + "' width='" + Number(size * 2 / 3) + "' height='"
                  + Number(size * 2 / 3) + "'/>\n";
}

void SvgPicture::MarkPoint(const DPOINT2& p, const char* style) {
    Ring(p, 4 * m_unit, style);
}

void SvgPicture::MarkJoints(const qev::CCadMultiSegments& contour, const char* style) {
    for (int i = 0, count = contour.GetSegmentCount(); i < count; ++i)
        Ring(contour.GetSegment(i).ptStart, m_unit / 2, style);
}

// The drawing's y axis points up, SVG's down: one group turns everything over.
void SvgPicture::Write(std::ostream& out) const {
    constexpr double kLongSide = 1600; // pixels
    const double scale = kLongSide / std::max(m_box.width, m_box.height);
    out << "<svg xmlns='http://www.w3.org/2000/svg' width='" << Number(m_box.width * scale) << "' height='"
        << Number(m_box.height * scale) << "' viewBox='" << Number(m_box.x) << " "
        << Number(-m_box.y - m_box.height) << " " << Number(m_box.width) << " " << Number(m_box.height)
        << "'>\n<style>path,circle,rect{fill:none;stroke-width:" << Number(m_unit * 0.8)
        << "}.outline{stroke:#234}.text{stroke:#888}.start{stroke:#080}.way{fill:#06c}.corner{stroke:#c00}"
           ".converted{stroke:#f80;stroke-dasharray:"
        << Number(m_unit * 4) << "}.joint{fill:#f80}.zone{stroke:#e22;stroke-width:" << Number(m_unit * 2)
        << "}.free{stroke:#2a2;stroke-width:" << Number(m_unit * 2)
        << "}.path{stroke:#08f;stroke-width:" << Number(m_unit * 1.6)
        << "}.chosen{fill:#2a2}.pick{fill:#c0c}.cut{stroke:#c0c;stroke-width:" << Number(m_unit * 2.5)
        << "}</style>\n"
        << "<rect x='" << Number(m_box.x) << "' y='" << Number(-m_box.y - m_box.height) << "' width='"
        << Number(m_box.width) << "' height='" << Number(m_box.height)
        << "' style='fill:#fff'/>\n<g transform='scale(1,-1)'>\n"
        << m_body << "</g>\n</svg>\n";
}

} // namespace host
