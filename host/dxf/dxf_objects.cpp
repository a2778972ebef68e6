// Entities become objects one by one, each through a row of one table: its type, the function that makes its
// object, and whether its coordinates belong to the plane of its own normal. What has no row is counted as
// not drawn.
//
// A block is drawn once for every insert of it, through the map of the insert; inserts of inserts multiply
// the maps. So every maker gets an affine map and gives the object of the drawing, and nothing is moved
// afterwards: a circle under a map that squeezes it is an ellipse from the beginning. Groups of the drawing
// that refer to one block were rejected, as the library's objects belong to one owner, and a host wants to
// cut what it sees.
//
// The normal of an entity is a third coordinate in a file of plane drawings. Pointing up it changes nothing,
// pointing down it turns the x axis round, which is how programs store what was mirrored; a tilted one is no
// plane drawing. (The plane of a normal follows from it alone, by the "arbitrary axis" rule of the format.)
//
// Blocks that hold each other tenfold over ten levels are a few lines of file and ten thousand million
// entities. So everything that can multiply is counted: the memory of the objects, the bytes of the file that
// are looked at, inserts, the depth. Memory and bytes may grow to a multiple of the file's size, which no
// file without inserts reaches, and a constant. A limit that is met ends the reading with what there is.

#include "dxf_objects.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <span>

#include "dxf_fields.h"
#include "dxf_file.h"
#include "dxf_text.h"
#include "host/drawing/outline.h"
#include "host/drawing/spline.h"

namespace host {
namespace {

using math::DPOINT2;
using qev::SEGMENT;

// Bytes that the objects of a file may take, and that may be looked at to make them: so many in any case, a
// second or two of work, and so many times the file's size. A line takes at least 28 bytes of a file, and a
// vertex 10; so their objects never meet the limit by themselves.
constexpr std::size_t kFreeBytes = 256 << 20;
constexpr std::size_t kGrowth = 8;
constexpr std::size_t kObjectBytes = 224; // an object in a list with a layer, and what is told of it
constexpr std::size_t kLetterBytes = 160; // a contour of a letter in a list
constexpr std::size_t kEntityCost = 64;   // bytes that could be read while an entity is looked at
constexpr int kMostInserts = 100'000;
constexpr int kDeepestInsert = 32; // blocks are nested some levels deep, unless they hold themselves

// The least z of a unit normal that counts as upright: a tilt of 0.08 degrees, which changes a length by a
// millionth.
constexpr double kUpright = 0.999999;

// Group codes that mean one thing in every entity.
constexpr int kLayer = 8;
constexpr int kInPaperSpace = 67;
constexpr int kFlags = 70;

constexpr int kClosed = 1; // among the flags of polylines and splines

struct Vertex {
    DPOINT2 point;
    double bulge = 0;
    int flags = 0;
};

// The vertices that a run of groups lists. Each begins with a group of `firstCode`: its x, or the group 0 of
// an entity of its own.
std::vector<Vertex> VerticesOf(std::span<const DxfGroup> groups, int xCode, int firstCode) {
    std::vector<Vertex> vertices;
    for (const DxfGroup& group : groups) {
        if (group.code == firstCode) vertices.push_back({});
        if (vertices.empty()) continue;
        if (group.code == xCode) vertices.back().point.x = group.AsNumber();
        if (group.code == xCode + 10) vertices.back().point.y = group.AsNumber();
        if (group.code == 42) vertices.back().bulge = group.AsNumber();
        if (group.code == kFlags) vertices.back().flags = group.AsInteger();
    }
    return vertices;
}

// The points that a run of groups lists, each beginning with its x.
std::vector<DPOINT2> PointsOf(std::span<const DxfGroup> groups, int xCode) {
    std::vector<DPOINT2> points;
    for (const DxfGroup& group : groups) {
        if (group.code == xCode) points.push_back({group.AsNumber(), 0});
        if (group.code == xCode + 10 && !points.empty()) points.back().y = group.AsNumber();
    }
    return points;
}

// A bulge belongs to the segment from its vertex to the next one.
std::vector<SEGMENT> SegmentsOf(const std::vector<Vertex>& vertices, bool closed) {
    std::vector<SEGMENT> segments;
    for (std::size_t i = 0; i + 1 < vertices.size(); ++i)
        segments.emplace_back(vertices[i].point, vertices[i + 1].point, vertices[i].bulge);
    if (closed && vertices.size() > 1)
        segments.emplace_back(vertices.back().point, vertices.front().point, vertices.back().bulge);
    return segments;
}

// A limit ends the reading also for a lenient log: every further entity would only repeat the message.
class LimitError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

bool IsClosed(const Fields& fields) {
    return (fields.Integer(kFlags, 0) & kClosed) != 0;
}

// Builds the objects of a file and counts what they cost.
class Builder {
public:
    Builder(const DxfFile& file, ErrorLog& log, Drawing& drawing)
        : m_file(file), m_texts(file), m_log(log), m_drawing(drawing),
          m_nMostBytes(kFreeBytes + kGrowth * file.Size()) {}

    void AddAll(const std::vector<DxfEntity>& entities, const Affine& map, qev::CCadGroup& into, int depth) {
        for (const DxfEntity& entity : entities) {
            try {
                const std::vector<DxfGroup> groups = m_file.GroupsOf(entity);
                Charge(Fields(groups), entity.size + kEntityCost, m_nVisitedBytes,
                       "makes the host read more than");
                Add(Fields(groups), map, into, depth);
            } catch (const DrawingError& error) {
                m_log.Note(error);
            }
        }
    }

private:
    static constexpr const char* kMakesMore = "makes the drawing larger than";
    using Maker = void (Builder::*)(const Fields&, const Affine&, qev::CCadGroup&, int);
    struct Row {
        std::string_view type;
        Maker make;
        bool hasOwnAxes; // its coordinates belong to the plane of its normal
    };

    // Adds bytes for an entity to one of the sums, unless they are too many.
    void Charge(const Fields& fields, std::size_t bytes, std::size_t& sum, const char* what) const {
        sum += bytes;
        if (sum > m_nMostBytes)
            throw LimitError(
                fields.Message(std::string(what) + " " + std::to_string(m_nMostBytes >> 20) + " MB"));
    }

    void Add(const Fields& fields, const Affine& map, qev::CCadGroup& into, int depth) {
        static constexpr Row kRows[] = {
            {"LINE", &Builder::AddLine, false},        {"POINT", &Builder::AddPoint, false},
            {"CIRCLE", &Builder::AddCircle, true},     {"ARC", &Builder::AddArc, true},
            {"ELLIPSE", &Builder::AddEllipse, false},  {"LWPOLYLINE", &Builder::AddLwPolyline, true},
            {"POLYLINE", &Builder::AddPolyline, true}, {"SPLINE", &Builder::AddSpline, false},
            {"TEXT", &Builder::AddText, true},         {"MTEXT", &Builder::AddText, false},
            {"INSERT", &Builder::AddInsert, true},     {"SEQEND", nullptr, false},
        };
        if (fields.Integer(kInPaperSpace, 0) == 1) return;
        for (const Row& row : kRows) {
            if (row.type != fields.Type()) continue;
            const auto plane = row.hasOwnAxes ? OwnAxes(fields) : Affine();
            if (!plane) break;
            if (row.make) (this->*row.make)(fields, map * *plane, into, depth);
            return;
        }
        ++m_drawing.skipped[Printable(fields.Type())];
    }

    // The plane of the entity's normal; none when it is tilted.
    static std::optional<Affine> OwnAxes(const Fields& fields) {
        const double z = fields.Number(kNormalZ, 1);
        if (std::abs(z) < kUpright) return std::nullopt;
        return Affine::Scale(z < 0 ? -1 : 1, 1);
    }

    // Hands an object of an entity to a group, unless it is one too many.
    void Give(const Fields& fields, std::unique_ptr<qev::CCadObject> object, qev::CCadGroup& into) {
        const std::string layer(fields.Text(kLayer));
        const std::size_t further = std::max(0, object->GetPieceCount() - 1);
        Charge(fields, kObjectBytes + further * sizeof(SEGMENT) + layer.size(), m_nObjectBytes, kMakesMore);
        object->SetKey("Layer", layer.c_str());
        into.PushBack(object.release());
    }

    void AddPoint(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        Give(f, std::make_unique<qev::CCadDot>(map.Point(f.Point(kPoint))), into);
    }

    void AddLine(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        Give(f, std::make_unique<qev::CCadLine>(map.Point(f.Point(kPoint)), map.Point(f.Point(11))), into);
    }

    void AddCircle(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        const double radius = f.Number(40);
        Give(f, MakeArc({f.Point(kPoint), {radius, 0}, {0, radius}}, map), into);
    }

    // Arcs run counter-clockwise in the plane of their normal; from an angle to itself it is a whole circle.
    void AddArc(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        const double radius = f.Number(40);
        const double start = math::AngleToRadian(f.Number(50));
        const double sweep = math::RegularizeRadian(math::AngleToRadian(f.Number(51)) - start);
        Give(f,
             MakeArc({f.Point(kPoint), {radius, 0}, {0, radius}, start, sweep == 0 ? math::kTwoPi : sweep},
                     map),
             into);
    }

    // The centre and the major axis of an ellipse do not belong to the plane of its normal, as those of a
    // circle do. A normal that points down only turns the direction round.
    void AddEllipse(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        const DPOINT2 major = f.Point(11);
        const double up = f.Number(kNormalZ, 1) < 0 ? -1 : 1;
        const double start = f.Number(41, 0);
        const double sweep = f.Number(42, math::kTwoPi) - start;
        constexpr double kWhole = 1e-9; // radians: two pi as a file of 10 digits or more has it
        const bool whole = std::abs(std::abs(sweep) - math::kTwoPi) < kWhole || sweep == 0;
        Give(f,
             MakeArc({f.Point(kPoint), major, math::LeftOf(major) * (f.Number(40) * up), start,
                      whole ? math::kTwoPi : math::RegularizeRadian(sweep)},
                     map),
             into);
    }

    void AddContour(const Fields& f, const std::vector<SEGMENT>& segments, const Affine& map,
                    qev::CCadGroup& into) {
        if (segments.empty()) f.Fail("has fewer than two points");
        Give(f, MakeContour(segments, map), into);
    }

    void AddLwPolyline(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        AddContour(f, SegmentsOf(VerticesOf(f.Groups(), kPoint, kPoint), IsClosed(f)), map, into);
    }

    void AddPolyline(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        constexpr int kMeshFlags = 16 | 64; // a surface, of polygons or as a net
        constexpr int kFrameVertex = 16;    // a control point of a smoothed polyline, not of its curve
        if (f.Integer(kFlags, 0) & kMeshFlags) {
            ++m_drawing.skipped["POLYLINE mesh"];
            return;
        }
        auto vertices = VerticesOf(f.Groups(), kPoint, 0); // each VERTEX begins with its group 0
        std::erase_if(vertices, [](const Vertex& v) { return (v.flags & kFrameVertex) != 0; });
        AddContour(f, SegmentsOf(vertices, IsClosed(f)), map, into);
    }

    // A spline is given by control points or, by some programs, by the points it goes through.
    void AddSpline(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        Spline spline;
        spline.degree = f.Integer(71, 3);
        spline.controls = PointsOf(f.Groups(), kPoint);
        for (const DxfGroup& group : f.Groups()) {
            if (group.code == 40) spline.knots.push_back(group.AsNumber());
            if (group.code == 41) spline.weights.push_back(group.AsNumber());
        }
        const std::vector<DPOINT2> fit = PointsOf(f.Groups(), 11);
        const bool byFitPoints = spline.controls.empty() && fit.size() > 1;
        if (!byFitPoints)
            if (const char* fault = FaultOf(spline)) f.Fail(fault);
        std::vector<SEGMENT> segments;
        for (const math::CubicBezier& b : byFitPoints ? ThroughPoints(fit, IsClosed(f)) : ToBeziers(spline))
            segments.emplace_back(b.start, b.ctrl1, b.ctrl2, b.end);
        AddContour(f, segments, map, into);
    }

    // The contours of a text share those of its letters. They are paid for after they are made: its length is
    // bounded.
    void AddText(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        const int lacking = m_texts.LackingLetters();
        auto text = m_texts.Make(f, map);
        if (!text) {
            ++m_drawing.skipped[std::string(f.Type()) + ", as no font was found"];
            return;
        }
        if (const int more = m_texts.LackingLetters() - lacking)
            m_drawing.skipped["letters that the font lacks"] += more;
        Charge(f, kLetterBytes * text->GetTextGroup()->GetObjectsList().size(), m_nObjectBytes, kMakesMore);
        Give(f, std::move(text), into);
    }

    // An insert may stand for a grid of them. From right to left: the base point goes to the origin, the
    // block is scaled, moved to its cell of the grid, turned, moved to the insert's point, and mapped as the
    // insert itself.
    void AddInsert(const Fields& f, const Affine& map, qev::CCadGroup& into, int depth) {
        const DxfBlock* block = m_file.FindBlock(f.Text(2));
        if (!block) f.Fail("names the block " + Quoted(f.Text(2)) + ", which does not exist");
        if (depth >= kDeepestInsert)
            throw LimitError(f.Message("lies deeper than " + std::to_string(kDeepestInsert)
                                       + " inserts: blocks that hold themselves?"));
        const int columns = std::max(1, f.Integer(70, 1));
        const int rows = std::max(1, f.Integer(71, 1));
        const Affine turn = Affine::Rotation(math::AngleToRadian(f.Number(50, 0)));
        const Affine fit = Affine::Scale(f.Number(41, 1), f.Number(42, 1))
                           * Affine::Translation({-block->baseX, -block->baseY});
        for (int row = 0; row < rows; ++row)
            for (int column = 0; column < columns; ++column) {
                if (++m_nInserts > kMostInserts)
                    throw LimitError(
                        f.Message("makes more than " + std::to_string(kMostInserts) + " inserts"));
                const DPOINT2 cell{column * f.Number(44, 0), row * f.Number(45, 0)};
                const Affine placed =
                    map * Affine::Translation(f.Point(kPoint)) * turn * Affine::Translation(cell) * fit;
                if (!placed.IsUsable()) f.Fail("scales or moves its block out of range");
                const std::string name(f.Text(2));
                Charge(f, kObjectBytes + name.size(), m_nObjectBytes, kMakesMore);
                auto group = std::make_unique<qev::CCadGroup>();
                qev::CCadGroup& members = *group;
                into.PushBack(group.release());
                members.SetKey("Block", name.c_str());
                AddAll(block->entities, placed, members, depth + 1);
            }
    }

    const DxfFile& m_file;
    DxfTexts m_texts;
    ErrorLog& m_log;
    Drawing& m_drawing;
    const std::size_t m_nMostBytes;
    std::size_t m_nVisitedBytes = 0;
    std::size_t m_nObjectBytes = 0;
    int m_nInserts = 0;
};

} // namespace

void ReadDxfBytes(std::string_view bytes, ErrorLog& log, Drawing& drawing, const ReadSettings&) {
    const DxfFile file(bytes, log);
    try {
        Builder(file, log, drawing).AddAll(file.Entities(), {}, drawing.root, 0);
    } catch (const LimitError& error) {
        log.Note(DrawingError(error.what()));
    }
}

void ReadDxf(const std::string& path, ErrorLog& log, Drawing& drawing, const ReadSettings& settings) {
    ReadDxfBytes(DxfFile::Load(path), log, drawing, settings);
}

} // namespace host
