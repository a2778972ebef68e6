// Results of the objects of a drawing: what they answer about themselves, what they convert to, and which of
// them lies nearest to a point.

#include "digest.h"

namespace digest {

void AddObjects(Sequence& random, Digest& results) {
    for (int i = 0; i < 200; ++i) {
        const auto object = random.Object();
        const qev::CadRect box = object->GetBoundRect();
        for (const double value : {box.x, box.y, box.width, box.height, object->GetLength()})
            results.Add(value);
        results.Add(object->GetStartPoint());
        results.Add(object->GetEndPoint());
        results.Add(object->IsClose());
        results.Add(object->GetDirection());
        for (int k = 0; k < object->GetSegmentCount(); ++k) {
            const qev::SEGMENT segment = object->GetSegment(k);
            results.Add(segment.GetPoint(random.Uniform(0, 1)));
            results.Add(segment.GetLength());
        }
    }
}

// The errors are as coarse as drawings have them; finer ones only take longer. The nodes are added and not
// the length alone, since pieces may be chosen differently at an equal length.
void AddConversions(Sequence& random, Digest& results) {
    const char* const kSettings[] = {"SegmentType=Both;AbsoluteError=0.01;",
                                     "SegmentType=Arc;AbsoluteError=0.05;",
                                     "SegmentType=Line;AbsoluteError=0.5;"};
    for (int i = 0; i < 72; ++i) {
        const auto object = random.Object();
        qev::CCadPolyline* made = nullptr;
        results.Add(qev::CConvertCadObjectToCadPolyline(kSettings[i % 3])(object.get(), made));
        const std::unique_ptr<qev::CCadPolyline> polyline(made);
        if (!polyline) continue;
        for (const auto& node : polyline->GetNodes())
            for (const double value : {node.x, node.y, node.bulge}) results.Add(value);
    }
}

// One group for all points, so that objects compete. Most points hit nothing within 5 mm; the distance
// from the group is added for all of them.
void AddPicks(Sequence& random, Digest& results) {
    qev::CCadGroup group(false);
    for (int i = 0; i < 40; ++i) group.PushBack(random.Object().release());
    for (int i = 0; i < 200; ++i) {
        const math::DPOINT2 p = random.Point();
        math::DPOINT2 nearest = math::NoPoint();
        results.Add(qev::Hit(&group, p, 5, &nearest) != nullptr);
        results.Add(nearest);
        results.Add(qev::GetMinDistance(&group, p, nearest));
        results.Add(nearest);
    }
}

} // namespace digest
