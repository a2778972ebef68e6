#include "picture.h"

#include <cmath>

#include "path_text.h"
#include "styles.h"

namespace host {
namespace {

using math::DPOINT2;

// The point at a part of a piece's length.
DPOINT2 PointOf(const qev::OutlinePiece& piece, double ratio) {
    if (const auto* segment = std::get_if<qev::SEGMENT>(&piece)) return segment->GetPoint(ratio);
    const auto& arc = std::get<math::EllipticArc>(piece);
    return arc.PointAt(arc.ParameterAt(ratio));
}

} // namespace

std::vector<const qev::CCadObject*> LeavesOf(const qev::CCadObject& object) {
    std::vector<const qev::CCadObject*> leaves;
    qev::TreeWalk walk(&object, qev::TreeWalk::AllMembers);
    for (auto step = walk.Next(); step != qev::TreeWalk::Step::kEnd; step = walk.Next())
        if (step == qev::TreeWalk::Step::kLeaf) leaves.push_back(walk.Object());
    return leaves;
}

Picture::Picture(const std::string& title, const qev::CadRect& box)
    : m_strTitle(CleanText(title)), m_box(box), m_dUnit(std::hypot(box.width, box.height) / 1000) {
    if (!(m_dUnit > 0)) m_dUnit = 1;    // nothing, or a single point
    const double margin = 20 * m_dUnit; // room for marks at the edge
    m_box = {box.x - margin, box.y - margin, box.width + 2 * margin, box.height + 2 * margin};
}

int Picture::LayerIndex(const std::string& name) {
    const auto [place, isNew] = m_mapLayers.try_emplace(name, static_cast<int>(m_vecLayers.size()));
    if (isNew) m_vecLayers.push_back(CleanText(name));
    return place->second;
}

void Picture::DrawObject(const ObjectReport& report) {
    const char* style = report.object->GetType() == qev::kCadText ? "text" : "outline";
    m_vecOutlines.push_back({report.object, StyleIndex(style), LayerIndex(LayerOf(*report.object)),
                             report.object->GetKey("Color").GetString()});
}

std::set<std::string> Picture::Colours() const {
    std::set<std::string> colours;
    for (const Outline& outline : m_vecOutlines)
        if (!outline.colour.empty()) colours.insert(outline.colour);
    return colours;
}

void Picture::Draw(const qev::CCadObject& object, const char* style) {
    for (const qev::CCadObject* leaf : LeavesOf(object))
        if (leaf->GetType() == qev::kCadDot)
            m_vecSpots.push_back({StyleIndex(style), leaf->GetStartPoint(), m_dUnit, {}});
        else
            m_vecCurves.push_back({StyleIndex(style), PathText(*leaf)});
}

void Picture::Mark(const ObjectReport& report) {
    const qev::CCadObject& object = *report.object;
    if (report.segments < 1 || object.GetPieceCount() == 0) return;
    const double size = std::min(6 * m_dUnit, report.length / 10); // short contours get small marks
    m_vecSpots.push_back({StyleIndex("start"), object.GetStartPoint(), size / 2, {}});
    const qev::OutlinePiece first = object.GetPiece(0);
    // The arrow lies on the middle of the first piece, along the chord of a tenth of it.
    const DPOINT2 tip = PointOf(first, 0.55);
    const DPOINT2 along = tip - PointOf(first, 0.45);
    if (const double norm = math::Norm(along); norm > 0)
        m_vecSpots.push_back({StyleIndex("way"), tip, size, along * (1 / norm)});
    for (const DPOINT2& corner : report.corners)
        m_vecSpots.push_back({StyleIndex("corner"), corner, size / 3, {}});
}

void Picture::MarkPoint(const DPOINT2& p, const char* style) {
    m_vecSpots.push_back({StyleIndex(style), p, 4 * m_dUnit, {}});
}

void Picture::MarkJoints(const qev::CCadMultiSegments& contour, const char* style) {
    for (int i = 0, count = contour.GetSegmentCount(); i < count; ++i)
        m_vecSpots.push_back({StyleIndex(style), contour.GetSegment(i).ptStart, 1.5 * m_dUnit, {}});
}

void Picture::AddStep(int object, const DPOINT2& start, const DPOINT2& end) {
    if (!m_vecSteps.empty()) m_vecCurves.push_back({StyleIndex("rapid"), TextOf("M", m_ptLeft, "L", start)});
    m_vecSteps.push_back({object, start});
    m_ptLeft = end;
}

} // namespace host
