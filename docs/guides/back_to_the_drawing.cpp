// The guide "From a converter's polyline back to the drawing": a machine runs lines and arcs, a user thinks
// in the ellipse that was drawn.
#include <cstdio>
#include <memory>
#include <vector>

#include <qev/qev.h>
#include <qevdata/qevdata.h>

namespace {

void Print(const char* what, const qev::CCadObject& object, const math::POLYPOS& pos) {
    math::DPOINT2 p;
    qev::PosToCoor(&object, pos.nSegIndex, pos.dRatio, p);
    std::printf("%s: segment %d, ratio %.4f, at (%.3f, %.3f)\n", what, pos.nSegIndex, pos.dRatio, p.x, p.y);
}

} // namespace

int main() {
    //! [convert]
    const qev::CCadEllipse drawn({0, 0}, 50, 25, 0); // 100 x 50 mm
    std::vector<int> map;                            // the source segment of each new one
    const std::unique_ptr<qev::CCadPolyline> run(qev::Convert2Polyline(&drawn, map, 0.001));
    std::printf("%d arcs within 0.001 mm\n", run->GetSegmentCount());
    //! [convert]

    //! [forward]
    const math::POLYPOS bridge{0, 0.3}; // where the user has put a bridge: 30 % of the way round
    math::POLYPOS onRun;
    qev::GetMapPos(&drawn, run.get(), map, bridge, onRun);
    Print("drawn", drawn, bridge);
    Print("run", *run, onRun);
    //! [forward]

    //! [back]
    math::DPOINT2 point; // by the point, which lies within the conversion's error of what was drawn
    qev::PosToCoor(run.get(), onRun.nSegIndex, onRun.dRatio, point);
    math::POLYPOS back;
    qev::CoorToPos(&drawn, point, back, 0.002);
    Print("and back", drawn, back);
    //! [back]
}
