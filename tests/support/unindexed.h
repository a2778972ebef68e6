/// \file
/// A contour without an index, beside which one with an index is asked.
#pragma once

#include <vector>

#include <qev/qev.h>

namespace test {

/// A host's kind with the segments of another contour, which has to outlive it. No index is kept of it, so
/// that it is searched in full.
class Unindexed : public qev::CCadMultiSegments {
public:
    explicit Unindexed(const qev::CCadObject& contour) : CCadMultiSegments(false), m_contour(contour) {}
    qev::cad_t GetType() const override { return m_contour.GetType(); }
    int GetSegmentCount() const override { return m_contour.GetSegmentCount(); }
    qev::SEGMENT GetSegment(int index) const override { return m_contour.GetSegment(index); }

private:
    const qev::CCadObject& m_contour;
};

/// What a contour is asked: where a point is nearest to it, and a walk of so many mm from a position on it.
struct Question {
    math::DPOINT2 p;
    math::POLYPOS on;
    double offset;
};

/// The answers that an index has a part in.
inline std::vector<double> Answers(qev::CCadMultiSegments& contour, const Question& q) {
    using namespace qev;
    struct Calculator : CPosCalculator {
        using CPosCalculator::_RetrieveNearestPos;
    } calculator;
    std::vector<double> answers;
    const auto add = [&](auto... each) { (answers.push_back(each), ...); };
    const CadRect box = contour.GetBoundRect();
    math::DPOINT2 nearest, at = q.p;
    math::POLYPOS pos, end;
    PosInfo picked;
    double upTo = 0, between = 0, before = 0;
    calculator.Init(nullptr, &q.p, 0);
    calculator._RetrieveNearestPos(&contour, &picked, false);
    add(contour.GetLength(), box.x, box.y, box.width, box.height, picked.nIndex, picked.dRatio);
    add(GetMinDistance(&contour, q.p, nearest), CoorToPos(&contour, q.p, pos, 1e4), contour.IsClose());
    add(nearest.x, nearest.y, PolyPosToDouble(pos), GetPosByOffset(&contour, q.on, q.offset, end));
    GetLengthStartToPos(&contour, q.on, upTo);
    GetLineLength_Dot2Dot2(&contour, q.on, pos, between);
    add(PolyPosToDouble(end), upTo, between, static_cast<int>(GetPointSide(&contour, q.p, 0)));
    add(FindSegmentIndexByRate(&contour, upTo / contour.GetLength(), 0, 0, before));
    PosToCoor(&contour, q.on.nSegIndex, q.on.dRatio, at);
    add(before, at.x, at.y, CPosCalculator::GetPtInMultiRatio(at, &contour));
    return answers;
}

} // namespace test
