#include "dxf_text.h"

#include "host/drawing/outline.h"
#include "host/drawing/stroke_font.h"

namespace host {
namespace {

constexpr std::size_t kLongestText = 10'000; // bytes

} // namespace

// A text's strokes become contours of a group that belongs to it. Long texts are split: the groups 3 come
// before the group 1. The direction of an MTEXT is an angle or a vector.
std::unique_ptr<qev::CCadText> MakeText(const Fields& f, const Affine& map) {
    std::string text;
    for (const DxfGroup& group : f.Groups())
        if (group.code == 1 || group.code == 3) text += group.text;
    if (text.size() > kLongestText) f.Fail("has a text of " + std::to_string(text.size()) + " characters");
    text = PlainText(text);
    const double angle = f.Find(11) && f.Type() == "MTEXT" ? math::D2GetNormalAngle(f.Point(11))
                                                           : math::AngleToRadian(f.Number(50, 0));
    const double height = f.Number(40);
    const Affine place =
        map * Affine::Translation(f.Point(kPoint)) * Affine::Rotation(angle) * Affine::Scale(height, height);
    auto object = std::make_unique<qev::CCadText>(text.c_str());
    for (const Stroke& stroke : StrokesOf(text)) {
        std::vector<qev::SEGMENT> segments;
        for (std::size_t i = 0; i + 1 < stroke.size(); ++i) segments.emplace_back(stroke[i], stroke[i + 1]);
        object->GetTextGroup()->PushBack(MakeContour(segments, place).release());
    }
    return object;
}

} // namespace host
