// Entities become objects one by one, each through a row of one table: its type, the function that makes its
// object, and whether its coordinates belong to the plane of its own normal. What has no row is counted as
// not drawn.
//
// A block is drawn once for every insert of it, through the map of the insert; inserts of inserts multiply
// the maps. So every maker gets an affine map and gives the object of the drawing, and nothing is moved
// afterwards; the outermost map scales the unit of the file to mm. Groups of the drawing that refer to one
// block were rejected, as the library's objects belong to one owner, and a host wants to cut what it sees.
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
#include <array>
#include <cmath>
#include <memory>
#include <optional>

#include "dxf_fields.h"
#include "dxf_file.h"
#include "dxf_layers.h"
#include "dxf_shapes.h"
#include "dxf_text.h"
#include "dxf_units.h"
#include "host/drawing/affine.h"
#include "host/drawing/duplicates.h"
#include "host/drawing/overlaps.h"

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

// A limit ends the reading also for a lenient log: every further entity would only repeat the message.
class LimitError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Builds the objects of a file and counts what they cost.
class Builder {
public:
    // Where an entity goes: the map that it is drawn through, the group that takes its object, and the look
    // of the insert that shows it, null when it belongs to the drawing itself.
    struct Target {
        Affine map;
        qev::CCadGroup& group;
        const DxfLayers::Look* insert = nullptr;
        int depth = 0;
    };

    Builder(const DxfFile& file, DxfLayers& layers, ErrorLog& log, Drawing& drawing)
        : m_file(file), m_encoding(file), m_texts(file, m_encoding), m_layers(layers), m_log(log),
          m_drawing(drawing), m_nMostBytes(kFreeBytes + kGrowth * file.Size()) {}

    void AddAll(const std::vector<DxfEntity>& entities, const Target& target) {
        for (const DxfEntity& entity : entities) {
            try {
                const std::vector<DxfGroup> groups = m_file.GroupsOf(entity);
                Charge(Fields(groups), entity.size + kEntityCost, m_nVisitedBytes,
                       "makes the host read more than");
                Add(Fields(groups), target);
            } catch (const DrawingError& error) {
                m_log.Note(error);
            }
        }
    }

private:
    using Look = DxfLayers::Look;
    static constexpr const char* kMakesMore = "makes the drawing larger than";

    // How a type is drawn: by the object that one of its entities is made, or by a function that does more.
    struct Row {
        std::string_view type;
        bool hasOwnAxes; // its coordinates belong to the plane of its normal
        Shape (*shape)(const Fields&, const Affine&);
        void (Builder::*add)(const Fields&, const Look&, const Target&);
    };

    // Adds bytes for an entity to one of the sums, unless they are too many.
    void Charge(const Fields& fields, std::size_t bytes, std::size_t& sum, const char* what) const {
        sum += bytes;
        if (sum > m_nMostBytes)
            throw LimitError(
                fields.Message(std::string(what) + " " + std::to_string(m_nMostBytes >> 20) + " MB"));
    }

    static const Row* FindRow(std::string_view type) {
        static constexpr std::array kRows{
            Row{"LINE", false, &MakeLine, nullptr},
            Row{"POINT", false, &MakePoint, nullptr},
            Row{"CIRCLE", true, &MakeCircle, nullptr},
            Row{"ARC", true, &MakeCircularArc, nullptr},
            Row{"ELLIPSE", false, &MakeEllipse, nullptr},
            Row{"LWPOLYLINE", true, &MakeLwPolyline, nullptr},
            Row{"POLYLINE", true, &MakePolyline, nullptr},
            Row{"SPLINE", false, &MakeSpline, nullptr},
            Row{"TEXT", true, nullptr, &Builder::AddText},
            Row{"MTEXT", false, nullptr, &Builder::AddText},
            Row{"ATTRIB", true, nullptr, &Builder::AddText},
            Row{"INSERT", true, nullptr, &Builder::AddInsert},
        };
        const auto* row =
            std::find_if(kRows.begin(), kRows.end(), [type](const Row& each) { return each.type == type; });
        return row == kRows.end() ? nullptr : row;
    }

    void Add(const Fields& fields, const Target& target) {
        if (fields.Type() == "SEQEND" || fields.Type() == "VIEWPORT") return; // nothing that is drawn
        const Look look = m_layers.LookOf(fields, target.insert);
        if (!m_layers.Takes(fields, look)) return;
        const Row* row = FindRow(fields.Type());
        if (!row) return Skip(fields, "");
        if (fields.Type() == "POLYLINE" && IsMesh(fields)) return Skip(fields, " mesh");
        const auto plane = row->hasOwnAxes ? OwnAxes(fields) : Affine();
        if (!plane) return Skip(fields, " tilted in space");
        CountFlattened(fields, m_drawing.counts);
        const Target inPlane{target.map * *plane, target.group, target.insert, target.depth};
        if (row->add) return (this->*row->add)(fields, look, inPlane);
        GiveShape(fields, row->shape(fields, inPlane.map), look, target.group);
    }

    // Counts an entity that is not drawn.
    void Skip(const Fields& fields, const char* why) { ++m_drawing.skipped[Printable(fields.Type()) + why]; }

    // The plane of the entity's normal; none when it is tilted.
    static std::optional<Affine> OwnAxes(const Fields& fields) {
        const double z = fields.Number(kNormalZ, 1);
        if (std::abs(z) < kUpright) return std::nullopt;
        return Affine::Scale(z < 0 ? -1 : 1, 1);
    }

    // Hands an object of an entity to a group, unless it is one too many.
    void Give(const Fields& fields, std::unique_ptr<qev::CCadObject> object, const Look& look,
              qev::CCadGroup& into) {
        const std::string& layer = look.layer->first;
        const std::size_t further = std::max(0, object->GetPieceCount() - 1);
        Charge(fields, kObjectBytes + further * sizeof(SEGMENT) + layer.size(), m_nObjectBytes, kMakesMore);
        object->SetKey("Layer", layer.c_str());
        if (!look.colour.empty()) object->SetKey("Color", look.colour.c_str());
        into.PushBack(object.release());
    }

    void GiveShape(const Fields& fields, Shape shape, const Look& look, qev::CCadGroup& into) {
        m_drawing.counts.zeroLength += shape.zeroLength;
        if (shape.remark) m_log.Remark(fields.Message(std::string(shape.remark) + " and is left out"));
        if (shape.object) Give(fields, std::move(shape.object), look, into);
    }

    // The contours of a text share those of its letters. They are paid for after they are made: its length is
    // bounded.
    void AddText(const Fields& f, const Look& look, const Target& target) {
        const int lacking = m_texts.LackingLetters();
        auto text = m_texts.Make(f, target.map);
        if (!text) return Skip(f, ", as no font was found");
        if (const int more = m_texts.LackingLetters() - lacking)
            m_drawing.skipped["letters that the font lacks"] += more;
        Charge(f, kLetterBytes * text->GetTextGroup()->GetObjectsList().size(), m_nObjectBytes, kMakesMore);
        Give(f, std::move(text), look, target.group);
    }

    // An insert may stand for a grid of them. From right to left: the base point goes to the origin, the
    // block is scaled, moved to its cell of the grid, turned, moved to the insert's point, and mapped as the
    // insert itself.
    void AddInsert(const Fields& f, const Look& look, const Target& target) {
        const DxfBlock* block = m_file.FindBlock(f.Text(2));
        if (!block) f.Fail("names the block " + Quoted(f.Text(2)) + ", which does not exist");
        if (target.depth >= kDeepestInsert)
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
                const Affine placed = target.map * Affine::Translation(f.Point(kPoint)) * turn
                                      * Affine::Translation(cell) * fit;
                if (!placed.IsUsable()) f.Fail("scales or moves its block out of range");
                const std::string name = m_encoding.NameOf(f.Text(2));
                Charge(f, kObjectBytes + name.size(), m_nObjectBytes, kMakesMore);
                auto group = std::make_unique<qev::CCadGroup>();
                qev::CCadGroup& members = *group;
                target.group.PushBack(group.release());
                members.SetKey("Block", name.c_str());
                AddAll(block->entities, {placed, members, &look, target.depth + 1});
            }
    }

    const DxfFile& m_file;
    const DxfEncoding m_encoding;
    DxfTexts m_texts;
    DxfLayers& m_layers;
    ErrorLog& m_log;
    Drawing& m_drawing;
    const std::size_t m_nMostBytes;
    std::size_t m_nVisitedBytes = 0;
    std::size_t m_nObjectBytes = 0;
    int m_nInserts = 0;
};

} // namespace

void ReadDxfBytes(std::string_view bytes, ErrorLog& log, Drawing& drawing, const ReadSettings& settings) {
    const DxfFile file(bytes, log);
    drawing.unit = UnitOf(file, settings.drawingUnit, log);
    DxfLayers layers(file, settings, log, drawing);
    const double scale = drawing.unit.millimetres;
    try {
        Builder(file, layers, log, drawing)
            .AddAll(file.Entities(), {Affine::Scale(scale, scale), drawing.root});
    } catch (const LimitError& error) {
        log.Note(DrawingError(error.what()));
    }
    layers.CheckWanted();
    DropDuplicates(drawing, settings.joinAcrossLayers);
    DropCovered(drawing, settings.joinAcrossLayers);
}

void ReadDxf(const std::string& path, ErrorLog& log, Drawing& drawing, const ReadSettings& settings) {
    ReadDxfBytes(DxfFile::Load(path), log, drawing, settings);
}

} // namespace host
