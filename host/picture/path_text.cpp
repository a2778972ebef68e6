// Path data is what the library's outlines are made of, so that nothing is flattened into chords: a line is
// "L", a cubic Bezier piece "C", an arc of a circle or an ellipse "A". An outline becomes one path, each
// piece as it comes from the object, and the picture is as exact as its numbers.
//
// "A" is given by its end point and not by its angles. From start, end and radii two centres are possible,
// and from each a short and a long way round; two flags choose. A whole ellipse ends where it starts, and
// then no centre follows, so that an arc of more than half a turn is drawn as two. Half a turn may stay
// one: nine digits then place its centre within 3e-5 of the radius, which is less than a pixel.
//
// Numbers have nine digits, a hundredth of a millimetre on a drawing of a kilometre. All 17 digits of a
// double would double the file and show nothing more.

#include "path_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include <nlohmann/json.hpp>

namespace host {

using math::DPOINT2;
using qev::SEGMENT;

void AppendText(std::string& text, std::string_view part) {
    text += part;
}

void AppendText(std::string& text, double value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), value, std::chars_format::general, 9);
    text.append(digits.begin(), end.ptr);
}

void AppendText(std::string& text, const DPOINT2& p) {
    AppendText(text, p.x);
    text += ' ';
    AppendText(text, p.y);
}

namespace {

// "A" with radii, rotation in degrees, and two flags: whether the arc turns by more than half a turn, and
// whether its angles grow.
std::string ArcTo(double a, double b, double rotation, double sweep, const DPOINT2& end) {
    const bool longWay = std::abs(sweep) > math::kPi;
    return TextOf("A", a, " ", b, " ", rotation * 180 / math::kPi, longWay ? " 1" : " 0",
                  sweep > 0 ? " 1 " : " 0 ", end);
}

// An elliptic arc is a path of its own: no object has other pieces beside it.
std::string PathOf(const math::EllipticArc& arc) {
    const double rotation = math::D2GetNormalAngle(arc.GetAxisA());
    const int parts = std::abs(arc.GetSweep()) > math::kPi ? 2 : 1;
    const double step = arc.GetSweep() / parts;
    std::string path = TextOf("M", arc.PointAt(arc.GetStart()));
    for (int i = 1; i <= parts; ++i)
        path += ArcTo(arc.GetSemiAxisA(), arc.GetSemiAxisB(), rotation, step,
                      arc.PointAt(arc.GetStart() + i * step));
    return path;
}

// A segment goes on from where the path stands. An arc turns by four times the arc tangent of its bulge.
std::string PathOf(const SEGMENT& s) {
    if (s.nType == SEGMENT::kBezier) return TextOf("C", s.ptCtrl1, " ", s.ptCtrl2, " ", s.ptEnd);
    const double curvature = s.GetArc().GetCurvature();
    if (curvature == 0) return TextOf("L", s.ptEnd);
    const double radius = 1 / std::abs(curvature);
    return ArcTo(radius, radius, 0, 4 * std::atan(s.dBulge), s.ptEnd);
}

} // namespace

std::string PathText(const qev::CCadObject& leaf) {
    std::string path;
    for (int i = 0, count = leaf.GetPieceCount(); i < count; ++i) {
        const qev::OutlinePiece piece = leaf.GetPiece(i);
        const auto* segment = std::get_if<SEGMENT>(&piece);
        if (segment && i == 0) path += TextOf("M", segment->ptStart);
        path += std::visit([](const auto& p) { return PathOf(p); }, piece);
    }
    return path;
}

std::string PathText(const std::vector<SEGMENT>& segments) {
    std::string path = segments.empty() ? "" : TextOf("M", segments.front().ptStart);
    for (const SEGMENT& segment : segments) path += PathOf(segment);
    return path;
}

// The writer of JSON knows UTF-8, so that a text that has gone through it is whole.
std::string CleanText(const std::string& text) {
    using nlohmann::json;
    std::string clean =
        json::parse(json(text).dump(-1, ' ', false, json::error_handler_t::replace)).get<std::string>();
    std::replace_if(
        clean.begin(), clean.end(), [](unsigned char c) { return c < ' ' || c == 127; }, ' ');
    return clean;
}

} // namespace host
