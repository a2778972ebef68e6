// The least drawing of DXF 2000 that strict readers take: the nine tables with the records that every drawing
// has, the two blocks of model and paper space, the entities of model space, and the root dictionary. Every
// record has a handle of its own, a hexadecimal number, and names its owner's; those of the frame are written
// here by hand and lie below kFirstFree.
//
// DXF 2000 is the oldest version with polylines and ellipses of their own, and so the one that most machines'
// programs read. Curves go out as lines and arcs because that is what machines cut.

#include "dxf_writer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <memory>

#include <qev/qev.h>

#include <qevtechnics/stretches.h>

#include "host/drawing/drawing_error.h"

namespace host {
namespace {

constexpr unsigned kFirstFree = 0x100; // handle of the first layer

// The groups before the layers, as codes and values with blanks between them.
constexpr std::string_view kBeforeLayers =
    "0 SECTION 2 HEADER 9 $ACADVER 1 AC1015 9 $HANDSEED 5 7FFFFFFF 9 $INSUNITS 70 4 9 $MEASUREMENT 70 1 "
    "0 ENDSEC 0 SECTION 2 CLASSES 0 ENDSEC 0 SECTION 2 TABLES "
    "0 TABLE 2 VPORT 5 1 330 0 100 AcDbSymbolTable 70 0 0 ENDTAB "
    "0 TABLE 2 LTYPE 5 2 330 0 100 AcDbSymbolTable 70 3 "
    "0 LTYPE 5 3 330 2 100 AcDbSymbolTableRecord 100 AcDbLinetypeTableRecord 2 ByBlock 70 0 3 - 72 65 73 0 "
    "40 0 "
    "0 LTYPE 5 4 330 2 100 AcDbSymbolTableRecord 100 AcDbLinetypeTableRecord 2 ByLayer 70 0 3 - 72 65 73 0 "
    "40 0 "
    "0 LTYPE 5 5 330 2 100 AcDbSymbolTableRecord 100 AcDbLinetypeTableRecord 2 Continuous 70 0 3 - 72 65 73 "
    "0 "
    "40 0 0 ENDTAB 0 TABLE 2 LAYER 5 6 330 0 100 AcDbSymbolTable ";

constexpr std::string_view kAfterLayers =
    "0 ENDTAB 0 TABLE 2 STYLE 5 7 330 0 100 AcDbSymbolTable 70 1 "
    "0 STYLE 5 8 330 7 100 AcDbSymbolTableRecord 100 AcDbTextStyleTableRecord 2 Standard 70 0 40 0 41 1 50 0 "
    "71 0 42 2.5 3 txt 0 ENDTAB "
    "0 TABLE 2 VIEW 5 9 330 0 100 AcDbSymbolTable 70 0 0 ENDTAB "
    "0 TABLE 2 UCS 5 A 330 0 100 AcDbSymbolTable 70 0 0 ENDTAB "
    "0 TABLE 2 APPID 5 B 330 0 100 AcDbSymbolTable 70 1 "
    "0 APPID 5 C 330 B 100 AcDbSymbolTableRecord 100 AcDbRegAppTableRecord 2 ACAD 70 0 0 ENDTAB "
    "0 TABLE 2 DIMSTYLE 5 D 330 0 100 AcDbSymbolTable 70 1 100 AcDbDimStyleTable 71 0 "
    "0 DIMSTYLE 105 E 330 D 100 AcDbSymbolTableRecord 100 AcDbDimStyleTableRecord 2 Standard 70 0 0 ENDTAB "
    "0 TABLE 2 BLOCK_RECORD 5 F 330 0 100 AcDbSymbolTable 70 2 "
    "0 BLOCK_RECORD 5 10 330 F 100 AcDbSymbolTableRecord 100 AcDbBlockTableRecord 2 *Model_Space "
    "0 BLOCK_RECORD 5 11 330 F 100 AcDbSymbolTableRecord 100 AcDbBlockTableRecord 2 *Paper_Space "
    "0 ENDTAB 0 ENDSEC 0 SECTION 2 BLOCKS "
    "0 BLOCK 5 12 330 10 100 AcDbEntity 8 0 100 AcDbBlockBegin 2 *Model_Space 70 0 10 0 20 0 30 0 "
    "3 *Model_Space 0 ENDBLK 5 13 330 10 100 AcDbEntity 8 0 100 AcDbBlockEnd "
    "0 BLOCK 5 14 330 11 100 AcDbEntity 67 1 8 0 100 AcDbBlockBegin 2 *Paper_Space 70 0 10 0 20 0 30 0 "
    "3 *Paper_Space 0 ENDBLK 5 15 330 11 100 AcDbEntity 67 1 8 0 100 AcDbBlockEnd "
    "0 ENDSEC 0 SECTION 2 ENTITIES ";

constexpr std::string_view kEnd =
    "0 ENDSEC 0 SECTION 2 OBJECTS 0 DICTIONARY 5 16 330 0 100 AcDbDictionary 281 1 3 ACAD_GROUP 350 17 "
    "0 DICTIONARY 5 17 330 16 100 AcDbDictionary 281 1 0 ENDSEC 0 EOF ";

double Degrees(double radians) {
    return radians * 180 / math::kPi;
}

} // namespace

DxfWriter::DxfWriter(std::ostream& out, const std::vector<DxfLayer>& layers)
    : m_out(out), m_nHandle(kFirstFree) {
    Words(kBeforeLayers);
    Group(70, std::to_string(layers.size() + 1));
    Layer({"0", 7});
    for (const DxfLayer& layer : layers) Layer(layer);
    Words(kAfterLayers);
}

void DxfWriter::End() {
    Words(kEnd);
}

void DxfWriter::Group(int code, std::string_view value) {
    m_out << code << "\n" << value << "\n";
}

// The shortest digits that are read back as this number.
void DxfWriter::Group(int code, double value) {
    std::array<char, 32> digits{};
    auto* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    Group(code, std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
}

// The codes of y and z are those of x and 10 and 20 more.
void DxfWriter::Point(int code, const math::DPOINT2& p) {
    Group(code, p.x);
    Group(code + 10, p.y);
    Group(code + 20, 0.0);
}

void DxfWriter::Words(std::string_view words) {
    for (const char c : words) m_out.put(c == ' ' ? '\n' : c);
}

std::string DxfWriter::NextHandle() {
    std::array<char, 16> digits{};
    auto* const end = std::to_chars(digits.data(), digits.data() + digits.size(), m_nHandle++, 16).ptr;
    return {digits.data(), end};
}

void DxfWriter::Layer(const DxfLayer& layer) {
    Group(0, "LAYER");
    Group(5, NextHandle());
    Words("330 6 100 AcDbSymbolTableRecord 100 AcDbLayerTableRecord ");
    Group(2, layer.name);
    Group(70, "0");
    Group(62, std::to_string(layer.colour));
    Group(6, "Continuous");
}

// What all entities begin with.
void DxfWriter::Begin(std::string_view type, std::string_view layer, std::string_view subclass) {
    Group(0, type);
    Group(5, NextHandle());
    Words("330 10 100 AcDbEntity ");
    Group(8, layer);
    Group(100, subclass);
}

void DxfWriter::Add(const qev::CCadObject& object, std::string_view layer) {
    qev::TreeWalk walk(&object, qev::TreeWalk::AllMembers);
    for (auto step = walk.Next(); step != qev::TreeWalk::Step::kEnd; step = walk.Next())
        if (step == qev::TreeWalk::Step::kLeaf) AddLeaf(*walk.Object(), layer);
}

void DxfWriter::AddLeaf(const qev::CCadObject& object, std::string_view layer) {
    if (object.GetType() == qev::kCadDot) {
        Begin("POINT", layer, "AcDbPoint");
        Point(10, object.GetStartPoint());
    } else if (object.GetType() == qev::kCadLine) {
        Begin("LINE", layer, "AcDbLine");
        Point(10, object.GetStartPoint());
        Point(11, object.GetEndPoint());
    } else if (const auto* circle = dynamic_cast<const qev::CCadCircle*>(&object);
               circle && circle->IsCounterClockwise()) {
        Begin("CIRCLE", layer, "AcDbCircle");
        AddRound(circle->GetCenterPoint(), circle->GetRadius());
    } else if (const auto* arc = dynamic_cast<const qev::CCadArc*>(&object);
               arc && arc->IsCounterClockwise()) {
        Begin("ARC", layer, "AcDbCircle");
        AddRound(arc->GetCenterPoint(), arc->GetRadius());
        Group(100, "AcDbArc");
        Group(50, Degrees(arc->GetStartAngle()));
        Group(51, Degrees(arc->GetStartAngle() + arc->GetCentralAngle()));
    } else if (const auto* ellipse = dynamic_cast<const qev::CCadEllipseBase*>(&object)) {
        AddEllipse(ellipse->GetOutline(), layer);
    } else {
        const std::unique_ptr<qev::CCadPolyline> polyline(
            qev::Convert2Polyline(&object, qev::kit::kConversionError));
        if (!polyline) throw DrawingError("an object cannot be written as a polyline");
        AddPolyline(*polyline, layer);
    }
}

void DxfWriter::AddRound(const math::DPOINT2& centre, double radius) {
    Point(10, centre);
    Group(40, radius);
}

// DXF counts the parameter from the longer axis, and about the normal: one that points down makes it grow
// clockwise. An arc from a parameter of ours so starts at its negative then.
void DxfWriter::AddEllipse(const math::EllipticArc& outline, std::string_view layer) {
    const bool isTurned = outline.GetSemiAxisB() > outline.GetSemiAxisA();
    const double sign = outline.GetSweep() < 0 ? -1 : 1;
    const double start = sign * (outline.GetStart() - (isTurned ? math::kPi / 2 : 0));
    const double longer = isTurned ? outline.GetSemiAxisB() : outline.GetSemiAxisA();
    const double shorter = isTurned ? outline.GetSemiAxisA() : outline.GetSemiAxisB();
    Begin("ELLIPSE", layer, "AcDbEllipse");
    Point(10, outline.GetCenter());
    Point(11, isTurned ? outline.GetAxisB() : outline.GetAxisA());
    Group(210, 0.0);
    Group(220, 0.0);
    Group(230, sign);
    Group(40, shorter / longer);
    Group(41, start);
    Group(42, start + std::abs(outline.GetSweep()));
}

// A closed polyline goes from its last vertex to its first one by itself.
void DxfWriter::AddPolyline(const qev::CCadPolyline& polyline, std::string_view layer) {
    const int segments = polyline.GetSegmentCount();
    if (segments == 0) return;
    const qev::SEGMENT last = polyline.GetSegment(segments - 1);
    const bool endsAtStart =
        polyline.IsClose() && math::Norm(last.ptEnd - polyline.GetSegment(0).ptStart) == 0;
    Begin("LWPOLYLINE", layer, "AcDbPolyline");
    Group(90, std::to_string(segments + (endsAtStart ? 0 : 1)));
    Group(70, polyline.IsClose() ? "1" : "0");
    const auto vertex = [this](const math::DPOINT2& p, double bulge) {
        Group(10, p.x);
        Group(20, p.y);
        if (bulge != 0) Group(42, bulge);
    };
    for (int i = 0; i < segments; ++i) {
        const qev::SEGMENT segment = polyline.GetSegment(i);
        vertex(segment.ptStart, segment.dBulge);
    }
    if (!endsAtStart) vertex(last.ptEnd, 0);
}

} // namespace host
