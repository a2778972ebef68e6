// Any bytes as a drawing: read, joined, reported, converted and cut. No bytes may crash the host, hold it up
// or take more memory than its limits allow.
#include <algorithm>
#include <memory>
#include <string_view>

#include <qev/qev.h>

#include "host/drawing/join.h"
#include "host/dxf/dxf_objects.h"
#include "host/report/report.h"

namespace {

// What a host does with an object that it has read.
void Exercise(const qev::CCadObject& object) {
    const std::unique_ptr<qev::CCadPolyline> converted(qev::Convert2Polyline(&object, 0.1));
    if (!converted) return;
    const int last = std::max(0, qev::GetCadSegments(converted.get()) - 1);
    const std::unique_ptr<qev::CCadMultiSegments> cut(
        qev::GetMultiSementsByRange(converted.get(), {{0, 0.25}, {last, 0.75}}));
    for (int i = 0; i <= last; ++i) qev::GetCornerAngle(converted.get(), i);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    host::ErrorLog log(true); // lenient, so that damage does not hide what comes behind it
    host::Drawing drawing;
    try {
        host::ReadDxfBytes({reinterpret_cast<const char*>(data), size}, log, drawing);
    } catch (const host::DrawingError&) {
        return 0; // no DXF file
    }
    host::JoinOpenPieces(drawing.root, 0.01);
    host::ReportOf(drawing);
    for (const qev::CCadObject* object : drawing.Objects()) Exercise(*object);
    return 0;
}
