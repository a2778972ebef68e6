// What a drawing shows is told in four places: an entity may be marked as invisible, may lie on a sheet of
// paper beside the model, and its layer may be off or frozen. The difference between the last two is seen at
// inserts alone: a frozen layer hides all that its inserts show, one that is off only what lies on itself.
//
// A shop cuts what it sees. So what is not shown is left out, and counted by reason, as a drawing in which it
// was forgotten looks the same.

#include "dxf_layers.h"

#include <cstdlib>
#include <vector>

#include "dxf_colour.h"

namespace host {
namespace {

constexpr int kLayerName = 8;
constexpr int kInvisible = 60;
constexpr int kColour = 62;
constexpr int kInPaperSpace = 67;
constexpr int kLayoutName = 410;
constexpr int kTrueColour = 420;

constexpr int kByBlock = 0; // colours that are no index of the palette
constexpr int kByLayer = 256;

// Layers of a drawing, a hundred times as many as large ones have; they take some megabytes.
constexpr std::size_t kMostLayers = 100'000;

bool IsInsert(const Fields& entity) {
    return entity.Type() == "INSERT";
}

bool IsInPaperSpace(const Fields& entity) {
    if (entity.Integer(kInPaperSpace, 0) == 1) return true;
    const std::string_view layout = entity.Text(kLayoutName);
    return !layout.empty() && !IsSameName(layout, "Model");
}

// The value of an attribute of an insert may be hidden by a flag of its own.
bool IsInvisible(const Fields& entity) {
    constexpr int kHidden = 1; // among the flags of an attribute
    return entity.Integer(kInvisible, 0) == 1
           || (entity.Type() == "ATTRIB" && (entity.Integer(70, 0) & kHidden) != 0);
}

// The colour that an entity or a layer gives itself.
std::string OwnColour(const Fields& fields, int index) {
    return fields.Find(kTrueColour) ? TrueColour(fields.Integer(kTrueColour, 0)) : PaletteColour(index);
}

} // namespace

DxfLayers::DxfLayers(const DxfFile& file, const ReadSettings& settings, ErrorLog& log, Drawing& drawing)
    : m_settings(settings), m_drawing(drawing), m_encoding(file),
      m_setWanted(settings.layers.begin(), settings.layers.end()) {
    for (const DxfEntity& record : file.TableRecords()) {
        const std::vector<DxfGroup> groups = file.GroupsOf(record);
        const Fields fields(groups);
        if (fields.Type() != "LAYER") continue;
        try {
            constexpr int kFrozen = 1;                     // among its flags
            const int colour = fields.Integer(kColour, 7); // negative when it is off
            Layer& layer = Find(fields, fields.Text(2)).second;
            layer.isFrozen = (fields.Integer(70, 0) & kFrozen) != 0;
            layer.isShown = !layer.isFrozen && colour >= 0;
            layer.colour = OwnColour(fields, std::abs(colour));
        } catch (const DrawingError& error) {
            log.Note(error);
        }
    }
}

DxfLayers::Entry& DxfLayers::Find(const Fields& fields, std::string_view bytes) {
    const std::string name = m_encoding.NameOf(bytes);
    const auto found = m_drawing.layers.find(name);
    if (found != m_drawing.layers.end()) return *found;
    if (m_drawing.layers.size() >= kMostLayers) fields.Fail("names one layer too many");
    return *m_drawing.layers.emplace(name, Layer()).first;
}

DxfLayers::Look DxfLayers::LookOf(const Fields& entity, const Look* insert) {
    const std::string_view given = entity.Text(kLayerName);
    const std::string_view name = given.empty() ? "0" : given;
    const bool isOfInsert = insert && name == "0";
    Entry& layer = isOfInsert ? *insert->layer : Find(entity, name);
    const int index = entity.Integer(kColour, kByLayer);
    if (entity.Find(kTrueColour) || (index != kByBlock && index != kByLayer))
        return {&layer, OwnColour(entity, index)};
    if (index == kByLayer) return {&layer, layer.second.colour};
    return {&layer, insert ? insert->colour : std::string()};
}

bool DxfLayers::IsShown(const Fields& entity, const Layer& layer) {
    return IsInsert(entity) ? !layer.isFrozen : layer.isShown;
}

bool DxfLayers::Takes(const Fields& entity, const Look& look) {
    ReadCounts& counts = m_drawing.counts;
    const auto leftOut = [](int& count) {
        ++count;
        return false;
    };
    const bool hides = !m_settings.takeAll;
    if (hides && IsInPaperSpace(entity)) return leftOut(counts.paperSpace);
    if (!IsInsert(entity)) ++look.layer->second.entities;
    if (hides && IsInvisible(entity)) return leftOut(counts.invisible);
    if (hides && !IsShown(entity, look.layer->second)) return leftOut(counts.hidden);
    const bool isWanted = m_setWanted.empty() || IsInsert(entity) || m_setWanted.contains(look.layer->first);
    return isWanted || leftOut(counts.otherLayers);
}

void DxfLayers::CheckWanted() const {
    for (const std::string& name : m_setWanted)
        if (!m_drawing.layers.contains(name)) throw DrawingError("has no layer " + Quoted(name));
}

} // namespace host
