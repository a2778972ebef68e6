// The layers are named for what lies on them, because a machine's program takes its settings by layer.

#include "path_file.h"

#include <array>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include <qev/qev.h>

#include <qevtechnics/paths.h>

#include "host/dxf/dxf_writer.h"

namespace host {
namespace {

using qev::kit::HasRole;

struct RoleLayer {
    const char* role; // of a tool path
    DxfLayer layer;
};

constexpr DxfLayer kContours{"CONTOURS", 7};
constexpr DxfLayer kTexts{"TEXTS", 8};
constexpr DxfLayer kCuts{"CUT", 5}; // paths of any other role are cut, too
constexpr DxfLayer kBridges{"BRIDGES", 1};
constexpr std::array kRoles{
    RoleLayer{qev::kit::kLeadInRole, {"LEAD_IN", 3}},
    RoleLayer{qev::kit::kLeadOutRole, {"LEAD_OUT", 4}},
    RoleLayer{qev::kit::kOverlapRole, {"OVERLAP", 6}},
};

std::string_view PathLayerOf(const qev::CCadObject& path) {
    for (const RoleLayer& each : kRoles)
        if (HasRole(path, each.role)) return each.layer.name;
    return kCuts.name;
}

void AddBridges(DxfWriter& writer, const qev::CCadObject& object) {
    const auto contour = qev::kit::ContourOf(object);
    if (!contour) return;
    for (const qev::kit::Stretch& each : qev::kit::FindBridges(object, *contour)) {
        const std::unique_ptr<qev::CCadMultiSegments> bridge(qev::CutStretch(contour.get(), each.range));
        if (bridge) writer.Add(*bridge, kBridges.name);
    }
}

void Add(DxfWriter& writer, const qev::CCadObject& object) {
    writer.Add(object, object.GetType() == qev::kCadText ? kTexts.name : kContours.name);
    if (object.GetToolPathList().empty()) return;
    for (const qev::CCadObject* path : object.GetToolPathList()) writer.Add(*path, PathLayerOf(*path));
    AddBridges(writer, object);
}

} // namespace

void WritePathFile(std::ostream& out, const Drawing& drawing, const CuttingPlan* plan) {
    std::vector<DxfLayer> layers{kContours, kTexts, kCuts, kBridges};
    for (const RoleLayer& each : kRoles) layers.push_back(each.layer);
    DxfWriter writer(out, layers);
    std::vector<const qev::CCadObject*> objects = drawing.Objects();
    if (plan)
        for (const Cut& cut : plan->cuts) Add(writer, *std::exchange(objects[cut.object], nullptr));
    for (const qev::CCadObject* object : objects)
        if (object) Add(writer, *object);
    writer.End();
}

} // namespace host
