#include <algorithm>
#include <cmath>
#include <optional>

#include "dxf_file.h"
#include "host/drawing/affine.h"
#include "host/drawing/drawing.h"
#include "host/drawing/outline.h"
#include "host/drawing/spline.h"
#include "host/drawing/stroke_font.h"

namespace host {
namespace {

using math::DPOINT2;
using qev::SEGMENT;

// What a drawing may hold at most: its objects then stay below half a gigabyte. Inserts of inserts multiply.
constexpr int kMostSegments = 500'000;
constexpr int kMostInserts = 100'000;
constexpr std::size_t kMostGroups = 1 << 25; // looked at, also of entities that give nothing,
constexpr std::size_t kEntityCost = 16;      // each of which costs as much as this many groups
constexpr std::size_t kLongestText = 10'000; // bytes
constexpr int kDeepestInsert = 32;
// A unit normal whose z is at least this lies across the drawing plane.
constexpr double kUpright = 0.999999;

// The groups of one entity by code.
class Fields {
public:
    explicit Fields(std::span<const DxfGroup> groups) : m_head(groups.front()), m_groups(groups.subspan(1)) {}

    std::string_view Type() const { return m_head.text; }
    std::span<const DxfGroup> Groups() const { return m_groups; }

    const DxfGroup* Find(int code) const {
        for (const DxfGroup& group : m_groups) {
            if (group.code == 0) break; // the vertices of a polyline follow
            if (group.code == code) return &group;
        }
        return nullptr;
    }
    double Number(int code, double otherwise) const {
        const DxfGroup* group = Find(code);
        return group ? group->AsNumber() : otherwise;
    }
    double Number(int code) const { return Required(code).AsNumber(); }
    int Integer(int code, int otherwise) const {
        const DxfGroup* group = Find(code);
        return group ? group->AsInteger() : otherwise;
    }
    DPOINT2 Point(int code) const { return {Number(code), Number(code + 10)}; }
    std::string_view Text(int code) const {
        const DxfGroup* group = Find(code);
        return group ? group->text : std::string_view();
    }
    /// The message for what is wrong with the entity.
    std::string Message(const std::string& what) const {
        return m_head.Where() + ": " + Printable(Type()) + " " + what;
    }
    [[noreturn]] void Fail(const std::string& what) const { throw DrawingError(Message(what)); }

private:
    const DxfGroup& Required(int code) const {
        const DxfGroup* group = Find(code);
        if (!group) Fail("lacks its group " + std::to_string(code));
        return *group;
    }

    const DxfGroup& m_head;
    std::span<const DxfGroup> m_groups;
};

struct Vertex {
    DPOINT2 point;
    double bulge = 0;
    int flags = 0;
};

// The points that a run of groups lists. Each begins with its x, or with another group where that is given.
std::vector<Vertex> VerticesOf(std::span<const DxfGroup> groups, int xCode, int firstCode) {
    std::vector<Vertex> vertices;
    for (const DxfGroup& group : groups) {
        if (group.code == firstCode) vertices.push_back({});
        if (vertices.empty()) continue;
        if (group.code == xCode) vertices.back().point.x = group.AsNumber();
        if (group.code == xCode + 10) vertices.back().point.y = group.AsNumber();
        if (group.code == 42) vertices.back().bulge = group.AsNumber();
        if (group.code == 70) vertices.back().flags = group.AsInteger();
    }
    return vertices;
}

std::vector<DPOINT2> PointsOf(std::span<const DxfGroup> groups, int xCode) {
    std::vector<DPOINT2> points;
    for (const DxfGroup& group : groups) {
        if (group.code == xCode) points.push_back({group.AsNumber(), 0});
        if (group.code == xCode + 10 && !points.empty()) points.back().y = group.AsNumber();
    }
    return points;
}

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

// Builds the objects of a file under its limits.
class Builder {
public:
    Builder(const DxfFile& file, ErrorLog& log, Drawing& drawing)
        : m_file(file), m_log(log), m_drawing(drawing) {}

    void AddAll(const std::vector<DxfEntity>& entities, const Affine& map, qev::CCadGroup& into, int depth) {
        for (const DxfEntity& entity : entities) {
            try {
                Add(Fields(m_file.GroupsOf(entity)), map, into, depth);
            } catch (const DrawingError& error) {
                m_log.Note(error);
            }
        }
    }

private:
    using Maker = void (Builder::*)(const Fields&, const Affine&, qev::CCadGroup&, int);
    struct Row {
        std::string_view type;
        Maker make;
        bool hasOwnAxes; // its coordinates belong to the plane of its normal
    };

    void Add(const Fields& fields, const Affine& map, qev::CCadGroup& into, int depth) {
        m_groups += fields.Groups().size() + kEntityCost;
        if (m_groups > kMostGroups)
            throw LimitError(fields.Message("is one entity too many in the inserted blocks"));
        static constexpr Row kRows[] = {
            {"LINE", &Builder::AddLine, false},        {"POINT", &Builder::AddPoint, false},
            {"CIRCLE", &Builder::AddCircle, true},     {"ARC", &Builder::AddArc, true},
            {"ELLIPSE", &Builder::AddEllipse, false},  {"LWPOLYLINE", &Builder::AddLwPolyline, true},
            {"POLYLINE", &Builder::AddPolyline, true}, {"SPLINE", &Builder::AddSpline, false},
            {"TEXT", &Builder::AddText, true},         {"MTEXT", &Builder::AddText, false},
            {"INSERT", &Builder::AddInsert, true},     {"SEQEND", nullptr, false},
        };
        constexpr int kInPaperSpace = 67;
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

    // The plane of the entity's normal: seen from below its x axis is turned round. Tilted planes are not
    // drawn.
    static std::optional<Affine> OwnAxes(const Fields& fields) {
        const double z = fields.Number(230, 1);
        if (std::abs(z) < kUpright) return std::nullopt;
        return Affine::Scale(z < 0 ? -1 : 1, 1);
    }

    void Give(const Fields& fields, std::unique_ptr<qev::CCadObject> object, qev::CCadGroup& into) {
        m_segments += std::max(1, object->GetPieceCount());
        if (m_segments > kMostSegments)
            throw LimitError(fields.Message("makes the drawing larger than " + std::to_string(kMostSegments)
                                            + " segments"));
        object->SetKey("Layer", std::string(fields.Text(8)).c_str());
        into.PushBack(object.release());
    }

    void AddPoint(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        Give(f, std::make_unique<qev::CCadDot>(map.Point(f.Point(10))), into);
    }

    void AddLine(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        Give(f, std::make_unique<qev::CCadLine>(map.Point(f.Point(10)), map.Point(f.Point(11))), into);
    }

    void AddCircle(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        const double radius = f.Number(40);
        Give(f, MakeArc({f.Point(10), {radius, 0}, {0, radius}}, map), into);
    }

    void AddArc(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        const double radius = f.Number(40);
        const double start = math::AngleToRadian(f.Number(50));
        const double sweep = math::RegularizeRadian(math::AngleToRadian(f.Number(51)) - start);
        Give(f,
             MakeArc({f.Point(10), {radius, 0}, {0, radius}, start, sweep == 0 ? math::kTwoPi : sweep}, map),
             into);
    }

    void AddEllipse(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        const DPOINT2 major = f.Point(11);
        const double up = f.Number(230, 1) < 0 ? -1 : 1;
        const double start = f.Number(41, 0);
        const double sweep = f.Number(42, math::kTwoPi) - start;
        constexpr double kWhole = 1e-9; // radians
        const bool whole = std::abs(std::abs(sweep) - math::kTwoPi) < kWhole || sweep == 0;
        Give(f,
             MakeArc({f.Point(10), major, math::LeftOf(major) * (f.Number(40) * up), start,
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
        AddContour(f, SegmentsOf(VerticesOf(f.Groups(), 10, 10), (f.Integer(70, 0) & 1) != 0), map, into);
    }

    void AddPolyline(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        constexpr int kMeshFlags = 16 | 64;
        constexpr int kFrameVertex = 16; // a control point of a smoothed polyline, not of its curve
        if (f.Integer(70, 0) & kMeshFlags) {
            ++m_drawing.skipped["POLYLINE mesh"];
            return;
        }
        auto vertices = VerticesOf(f.Groups(), 10, 0); // each VERTEX begins with its group 0
        std::erase_if(vertices, [](const Vertex& v) { return (v.flags & kFrameVertex) != 0; });
        AddContour(f, SegmentsOf(vertices, (f.Integer(70, 0) & 1) != 0), map, into);
    }

    void AddSpline(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        Spline spline;
        spline.degree = f.Integer(71, 3);
        spline.controls = PointsOf(f.Groups(), 10);
        for (const DxfGroup& group : f.Groups()) {
            if (group.code == 40) spline.knots.push_back(group.AsNumber());
            if (group.code == 41) spline.weights.push_back(group.AsNumber());
        }
        const std::vector<DPOINT2> fit = PointsOf(f.Groups(), 11);
        const bool byFitPoints = spline.controls.empty() && fit.size() > 1;
        if (!byFitPoints)
            if (const char* fault = FaultOf(spline)) f.Fail(fault);
        std::vector<SEGMENT> segments;
        for (const math::CubicBezier& b :
             byFitPoints ? ThroughPoints(fit, (f.Integer(70, 0) & 1) != 0) : ToBeziers(spline))
            segments.emplace_back(b.start, b.ctrl1, b.ctrl2, b.end);
        AddContour(f, segments, map, into);
    }

    void AddText(const Fields& f, const Affine& map, qev::CCadGroup& into, int) {
        std::string text;
        for (const DxfGroup& group : f.Groups())
            if (group.code == 1 || group.code == 3) text += group.text;
        if (text.size() > kLongestText)
            f.Fail("has a text of " + std::to_string(text.size()) + " characters");
        text = PlainText(text);
        const double angle = f.Find(11) && f.Type() == "MTEXT" ? math::D2GetNormalAngle(f.Point(11))
                                                               : math::AngleToRadian(f.Number(50, 0));
        const double height = f.Number(40);
        const Affine place =
            map * Affine::Translation(f.Point(10)) * Affine::Rotation(angle) * Affine::Scale(height, height);
        auto object = std::make_unique<qev::CCadText>(text.c_str());
        for (const Stroke& stroke : StrokesOf(text)) {
            std::vector<SEGMENT> segments;
            for (std::size_t i = 0; i + 1 < stroke.size(); ++i)
                segments.emplace_back(stroke[i], stroke[i + 1]);
            Give(f, MakeContour(segments, place), *object->GetTextGroup());
        }
        Give(f, std::move(object), into);
    }

    void AddInsert(const Fields& f, const Affine& map, qev::CCadGroup& into, int depth) {
        const DxfBlock* block = m_file.FindBlock(f.Text(2));
        if (!block) f.Fail("names the block '" + Printable(f.Text(2)) + "', which does not exist");
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
                if (++m_inserts > kMostInserts)
                    throw LimitError(
                        f.Message("makes more than " + std::to_string(kMostInserts) + " inserts"));
                const DPOINT2 cell{column * f.Number(44, 0), row * f.Number(45, 0)};
                const Affine placed =
                    map * Affine::Translation(f.Point(10)) * turn * Affine::Translation(cell) * fit;
                if (!placed.IsUsable()) f.Fail("scales or moves its block out of range");
                auto group = std::make_unique<qev::CCadGroup>();
                qev::CCadGroup& members = *group;
                into.PushBack(group.release());
                members.SetKey("Block", std::string(f.Text(2)).c_str());
                AddAll(block->entities, placed, members, depth + 1);
            }
    }

    const DxfFile& m_file;
    ErrorLog& m_log;
    Drawing& m_drawing;
    int m_segments = 0;
    int m_inserts = 0;
    std::size_t m_groups = 0;
};

} // namespace

void ReadDxfBytes(std::string_view bytes, ErrorLog& log, Drawing& drawing) {
    const DxfFile file(bytes, log);
    try {
        Builder(file, log, drawing).AddAll(file.Entities(), {}, drawing.root, 0);
    } catch (const LimitError& error) {
        log.Note(DrawingError(error.what()));
    }
}

void ReadDxf(const std::string& path, ErrorLog& log, Drawing& drawing) {
    ReadDxfBytes(DxfFile::Load(path), log, drawing);
}

std::vector<const qev::CCadObject*> Drawing::Objects() const {
    const auto members = [](const qev::CCadObject& object) {
        return object.GetType() == qev::kCadText ? nullptr : object.GetMembers();
    };
    std::vector<const qev::CCadObject*> objects;
    qev::TreeWalk walk(&root, members);
    for (auto step = walk.Next(); step != qev::TreeWalk::Step::kEnd; step = walk.Next())
        if (step == qev::TreeWalk::Step::kLeaf) objects.push_back(walk.Object());
    return objects;
}

} // namespace host
