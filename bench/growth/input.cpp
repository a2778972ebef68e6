#include "subject.h"

namespace qev::bench {
namespace {

using math::POLYPOS;

POLYPOS Place(double at) {
    return {static_cast<int>(at), at - std::floor(at)};
}

void FillContours(Input& input, const Wave& wave) {
    input.open.SetStartPoint(wave.points[0]);
    for (int i = 0; i < input.n; ++i) {
        const Node& node = wave.nodes[i];
        input.open.AddArc(node.end, i % 2 ? 0 : node.bulge);
    }
    input.closed.SetStartPoint(wave.points[0]);
    for (int i = 0; i + 1 < input.n; ++i)
        input.closed.AddArc(wave.nodes[i].end, i % 2 ? 0 : wave.nodes[i].bulge);
    input.closed.AddLine(wave.points[0]);
    input.beziers.SetStartPoint(wave.points[0]);
    for (const SEGMENT& piece : Kept<BezierWave>(input.n).contour.GetNodes())
        input.beziers.AddBezier(piece.ptCtrl1, piece.ptCtrl2, piece.ptEnd);
    constexpr double kTurn = 0.01; // radians at each joint, to either side in turn
    input.curve.SetStartPoint({0, 0});
    for (int i = 1; i <= input.n; ++i) input.curve.AddLine({1.0 * i, i % 2 * kTurn / 2});
    input.chords.reset(Convert2Polyline(&input.open, input.chordMap, 0.01));
}

void FillGroup(Input& input) {
    for (int i = 0; i < input.n; ++i) {
        const DPOINT2 corner = OnGrid(i, 30);
        auto square = std::make_unique<CCadPolyline>();
        square->SetStartPoint(corner);
        for (const DPOINT2& step : {DPOINT2{10, 0}, {10, 10}, {0, 10}, {0, 0}})
            square->AddLine(corner + step);
        input.outlines.PushBack(square->Clone(true));
        input.group.PushBack(square.release());
    }
    input.members = input.group.GetObjectsList();
    input.index = std::make_unique<CGroupIndex>(&input.group);
    std::string text = "T={Lead={Speed=12";
    for (int i = 0; i < input.n; ++i) {
        input.laden.AddTechnics(new CTechnics());
        text += ",1";
    }
    input.laden.SetTechnicsString((text + "}};").c_str());
}

void FillRanges(Input& input, Random& random) {
    for (int i = 0; i < input.n / 2; ++i) {
        const double start = 2 * i + random.Uniform(0.1, 0.4), end = 2 * i + random.Uniform(0.6, 1.9);
        if (i > 0) input.gaps.emplace_back(Place(At(input.zones.back().end) + 0.01), Place(start - 0.01));
        input.zones.emplace_back(Place(start), Place(end));
    }
    input.shuffled = input.zones;
    random.Shuffle(input.shuffled);
    input.paired = input.shuffled;
    for (std::size_t i = 0; i + 1 < input.paired.size(); i += 2)
        input.paired[i + 1].start = input.paired[i].start;
    random.Shuffle(input.paired);
    for (int i = 0; i < input.n; ++i) {
        const DPOINT2 p = random.Point(kWaveRadius);
        input.cloud.push_back({p.x, p.y, i});
    }
}

void FillQuestions(Input& input, Random& random) {
    for (int i = 0; i < Input::kQuestions; ++i) {
        input.positions.push_back({random.Index(input.n - 1), random.Uniform(0.1, 0.9)});
        DPOINT2 point;
        PosToCoor(&input.open, input.positions.back().nSegIndex, input.positions.back().dRatio, point);
        input.on.push_back(point);
        input.near.push_back(point + random.Point(2));
        input.lengths.push_back(random.Uniform(0, input.open.GetLength()));
        auto member = input.members.begin();
        std::advance(member, random.Index(input.n));
        input.picks.push_back((*member)->GetStartPoint() + random.Point(1));
    }
}

} // namespace

Input::Input(int size) : n(size) {
    Random random(12);
    FillContours(*this, Wave(n, 0.5));
    FillGroup(*this);
    FillRanges(*this, random);
    FillQuestions(*this, random);
}
Input::~Input() = default;

} // namespace qev::bench
