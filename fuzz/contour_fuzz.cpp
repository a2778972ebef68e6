// A contour that is changed and asked in turn: with its index it answers as a search of all segments does, to
// the bit, and walks and lengths are those of the summed segments.
#include <bit>
#include <vector>

#include <gp_Trsf2d.hxx>

#include "input.h"
#include "support/unindexed.h"

namespace {

using namespace qev;
using namespace fuzz;
using test::Answers, test::Question;

bool AreSame(double a, double b) {
    return std::bit_cast<long long>(a) == std::bit_cast<long long>(b) || (std::isnan(a) && std::isnan(b));
}

void ExpectSums(const CCadMultiSegments& contour, const Question& q) {
    const double total = contour.GetLength(), from = LengthTo(contour, q.on), slack = 1e-12 * (1 + total);
    const auto off = [&](double length) { return std::abs(std::remainder(length, total)); };
    if (total < 1e-3) return;
    POLYPOS out;
    const int laps = GetPosByOffset(&contour, q.on, q.offset, out);
    Expect(!IsInvalidPos(&contour, out), "a walk ends on the contour");
    const double snap = 1e-9 * (out.dRatio == 0 ? 1 + total : 1); // a ratio of nearly 1 is the next start
    Expect(off(LengthTo(contour, out) - from - q.offset) < snap + slack + 1e-12 * std::abs(q.offset),
           "a walk is as long as it should be");
    const double nearly = 1e-9 * (1 + 1 / total); // laps: what is missing to the last one
    Expect(std::abs(laps - std::abs(q.offset) / total) < 1 + nearly, "a walk counts its laps");
    if (contour.GetType() != kCadPolyline) return;
    DPOINT2 nearest, picked;
    POLYPOS pos;
    const double least = GetMinDistance(&contour, q.p, nearest);
    Expect(CoorToPos(&contour, q.p, pos, 1e9) && !IsInvalidPos(&contour, pos), "a position that is nearest");
    PosToCoor(&contour, pos.nSegIndex, pos.dRatio, picked);
    Expect(math::D2GetDistance(q.p, picked) < least + 1e-4, "as near as the outline");
    double between = 0, upTo = 0;
    GetLengthStartToPos(&contour, q.on, upTo);
    Expect(std::abs(upTo - from) < slack, "the length to a position is that of its segments");
    GetLineLength_Dot2Dot2(&contour, q.on, out, between);
    const double ahead = LengthTo(contour, out) - from;
    const bool isEqual = PolyPosToDouble(q.on) == PolyPosToDouble(out);
    const bool isBack = ahead < 0 || (isEqual && contour.IsClose());
    Expect(std::abs(between - (isBack && contour.IsClose() ? ahead + total : ahead)) < 2e-9 * (1 + total)
               || off(ahead) < 2e-9 * (1 + total),
           "the length between two positions");
}

// Bumps of all turns round a circle, seen from near its centre nearly equally far; lengths of all magnitudes
// there and back along a line; or any segments.
template <class Contour>
std::unique_ptr<Contour> Shape(Input& in) {
    const int kind = in.Int(0, 5), count = in.Int(20, 200);
    constexpr bool kHasBeziers = std::is_same_v<Contour, CCadPolylineEx>; // whose points take long, unindexed
    if (kind > 1) return in.Polyline<Contour>(kHasBeziers ? 3 : kind == 2 ? 60 : 6);
    const double rough = std::pow(10, -in.Int(0, 9)), turn = kind == 0 ? 0 : std::pow(10, in.Int(-8, 2));
    auto contour = std::make_unique<Contour>();
    DPOINT2 p{0, 0};
    const bool isLine = in.Coin();
    for (int i = 0; i <= count; ++i) {
        p = isLine ? p + DPOINT2{std::pow(10, in.Int(-9, 2)) * (in.Coin() ? 1 : -1), 0}
                   : math::Rotated({1 + rough * in.Share(), 0}, math::kTwoPi * i / count);
        i == 0 ? contour->SetStartPoint(p) : contour->AddArc(p, turn * in.Share());
    }
    return contour;
}

// Turned round, and moved by a similarity, it has each of its points where it should.
template <class Contour>
void ExpectMoved(Contour& contour, const gp_Trsf2d& similarity, double ratio) {
    const std::unique_ptr<CCadObject> before(contour.Clone(false));
    contour.ReverseDir(true);
    contour.ApplyTransform(similarity);
    for (int i = 0, last = contour.GetSegmentCount() - 1; i <= last; ++i) {
        DPOINT2 expected = before->GetSegment(last - i).GetPoint(1 - ratio);
        similarity.Transforms(expected.x, expected.y);
        Expect(math::D2GetDistance(contour.GetSegment(i).GetPoint(ratio), expected) < 1e-6,
               "moved as it should be");
    }
    contour.ReverseDir(true);
    contour.ApplyTransform2D(similarity.Inverted());
    Expect(contour.IsNormalDir(), "turned round twice");
}

template <class Contour>
void Run(Input& in) {
    const auto contour = Shape<Contour>(in);
    test::Unindexed plain(*contour);
    gp_Trsf2d similarity, mirror;
    similarity.SetRotation({1, 2}, in.Int(-4, 4));
    mirror.SetMirror(gp_Ax2d({1, 2}, {3, 1}));
    if (in.Coin()) similarity.Multiply(mirror);
    for (int questions = in.Int(1, 4); questions > 0; --questions) {
        const int change = in.Int(0, 9);
        if (change == 0) contour->SetStartPoint(in.Point());
        if (change == 1) contour->ReverseDir(false);
        if (change == 2) in.AddSegment(*contour);
        if (change == 3) contour->ApplyTransform(similarity);
        if (change == 4 && !in.IsHostile()) ExpectMoved(*contour, similarity, in.Share());
        const DPOINT2 p = in.Point() * (in.Coin() ? 1 : 1e-7);
        const POLYPOS on = in.Pos(*contour);
        const Question q{p, on, in.Number(1000)};
        const std::vector<double> answers = Answers(*contour, q), expected = Answers(plain, q);
        Expect(std::equal(answers.begin(), answers.end(), expected.begin(), AreSame), "indexed = plain");
        if (!in.IsHostile()) ExpectSums(*contour, q);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    in.Int(0, 15) < 15 ? Run<CCadPolyline>(in) : Run<CCadPolylineEx>(in);
    return 0;
}
