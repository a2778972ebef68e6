#include <qev/measure/co_edge.h>

#include "../kinds/cad_kinds.h"

namespace qev {

bool IsCoEdgeGroup(const CCadObject* object) {
    return object && IsPlainGroup(*object) && object->GetKey("GroupType") == "1";
}

bool IsCoEdgeObject(const CCadObject* object) {
    return object && object->GetKey("CoEdge") == "true";
}

bool IsCoEdgeObject_Tube(const CCadObject* object) {
    return object && (object->GetKey("TubeTrucateCoedge") == "1" || object->GetKey("IsCoedgeEdge") == "1");
}

} // namespace qev
