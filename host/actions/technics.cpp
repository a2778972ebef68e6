// Technics reach a contour in four ways, all through the library's manager: added by a Lua text, removed by
// type, saved as the text that the contour's technics write, and loaded from that text. Loading comes first,
// so that a run can change what an earlier one has saved, and saving last.
//
// The manager and the operators answer a refusal by false and a text, which becomes the error of the drawing.
// Only a parameter out of bounds comes as an exception, thrown by the cursor as its text.

#include "technics.h"

#include <map>
#include <memory>
#include <ostream>
#include <sstream>

#include <qev/qev.h>

#include <qevtechnics/paths.h>

#include "host/drawing/unicode.h"
#include "plug_ins.h"
#include "saved_technics.h"

namespace host {
namespace {

using Objects = std::list<qev::CCadObject*>;

// Contours under the numbers that the table gives them.
Numbered NumberedOf(const Objects& contours, const Drawing& drawing) {
    std::map<const qev::CCadObject*, int> numbers;
    for (const qev::CCadObject* each : drawing.Objects())
        numbers.emplace(each, static_cast<int>(numbers.size()));
    Numbered numbered;
    for (qev::CCadObject* each : contours) numbered.emplace(numbers.at(each), each);
    return numbered;
}

// The manager knows the drawing as long as this lives.
class Lent {
public:
    Lent(qev::CTechnicsManager& manager, const Drawing& drawing) : m_rManager(manager) {
        manager.SetDrawing(&drawing.root);
    }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;
    ~Lent() { m_rManager.SetDrawing(nullptr); }

private:
    qev::CTechnicsManager& m_rManager;
};

// Prints what operators say of an addition. A line that begins with a blank is about the next refused object.
void PrintMessage(const std::string& message, const Objects& refused, const Numbered& contours,
                  std::ostream& out) {
    std::map<const qev::CCadObject*, int> numbers;
    for (const auto& [number, contour] : contours) numbers.emplace(contour, number);
    auto next = refused.begin();
    std::istringstream lines(message);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(' ') && next != refused.end())
            out << "  object " << numbers.at(*next++) << line.substr(1) << "\n";
        else
            out << "technics: " << line << "\n";
}

void Add(qev::CTechnicsManager& manager, const TechnicsRequest& request, const Objects& selection,
         const Numbered& contours, std::ostream& out) {
    Objects changed, refused;
    std::string message;
    const bool added =
        manager.AddAllTechnics(&selection, request.text, request.params, &changed, &refused, message);
    if (!manager.GetLastErrorText().empty()) throw DrawingError("no technics: " + manager.GetLastErrorText());
    manager.UpdataViewDataNotify(&changed);
    PrintMessage(FromBridge(message), refused, contours, out);
    if (!added) throw DrawingError("no technics: there is one that fits on no contour");
}

// The type of technics that a user names: by its name, or by the type's number.
int TypeOf(qev::CTechnicsManager& manager, const std::string& name) {
    for (qev::CITechnicsOperator* each : *manager.GetTehcnisItemVector())
        if (name == each->GetTechnicsName() || name == std::to_string(each->GetTechnicsType()))
            return each->GetTechnicsType();
    throw DrawingError("nothing to remove: no plug-in knows technics " + name);
}

void Remove(qev::CTechnicsManager& manager, const std::string& name, const Objects& selection,
            std::ostream& out) {
    Objects changed, refused;
    std::string message;
    if (!manager.RemoveTechnics(&selection, TypeOf(manager, name), &changed, &refused, message))
        throw DrawingError("nothing to remove: " + message);
    manager.UpdataViewDataNotify(&changed);
    out << "technics: " << FromBridge(message) << "\n";
}

// Says of each object whose technics have lost their tool paths, as others took their room.
void PrintLostPaths(qev::CTechnicsManager& manager, const Numbered& contours, std::ostream& out) {
    for (const auto& [number, contour] : contours)
        for (qev::CITechnicsOperator* each : *manager.GetTehcnisItemVector()) {
            const std::string why = qev::kit::WhyLostPaths(*contour, each->GetTechnicsName());
            if (!why.empty())
                out << "warning: object " << number << " is left without its " << each->GetTechnicsName()
                    << ": " << why << "\n";
        }
}

// Draws what the tool paths of a contour leave of it, and answers how many such bridges there are.
std::size_t DrawBridges(const qev::CCadObject& object, Picture& picture) {
    if (object.GetToolPathList().empty()) return 0;
    const auto contour = qev::kit::ContourOf(object);
    const auto bridges = qev::kit::FindBridges(object, *contour);
    for (const qev::kit::Stretch& bridge : bridges) {
        const std::unique_ptr<qev::CCadMultiSegments> part(
            qev::GetMultiSementsByRange(contour.get(), bridge.range));
        if (part) picture.Draw(*part, "bridge");
    }
    return bridges.size();
}

void DrawPaths(const Objects& contours, Picture& picture, std::ostream& out) {
    int count = 0;
    std::size_t bridges = 0;
    double length = 0;
    for (const qev::CCadObject* contour : contours) {
        for (const qev::CCadObject* path : std::as_const(*contour).GetToolPathList()) {
            const bool isLead = qev::kit::HasRole(*path, qev::kit::kLeadInRole)
                                || qev::kit::HasRole(*path, qev::kit::kLeadOutRole);
            picture.Draw(*path, isLead ? "lead" : "path");
            ++count;
            length += path->GetLength();
        }
        bridges += DrawBridges(*contour, picture);
    }
    if (count > 0) out << count << " tool paths, " << length << " mm, " << bridges << " bridges\n";
}

} // namespace

void RunTechnics(const TechnicsRequest& request, const Drawing& drawing, const qev::CCadObject* picked,
                 Picture& picture, std::ostream& out) try {
    qev::CTechnicsManager& manager = *qev::GetTechnicsManager();
    manager.SetDataOnly(true); // technics come with drawings, from anywhere
    LoadPlugIns(manager, request.plugIns);
    const bool isAsked =
        !request.remove.empty() || !request.load.empty() || !request.text.empty() || !request.save.empty();
    if (!isAsked) return;
    Objects contours;
    qev::CollectLeafNode(&drawing.root.GetObjectsList(), &contours);
    Objects selection = contours;
    if (picked) selection.remove_if([picked](const qev::CCadObject* each) { return each != picked; });
    const Numbered objects = NumberedOf(contours, drawing);
    const Lent lent(manager, drawing);
    if (!request.load.empty()) LoadTechnics(manager, objects, request.load);
    if (!request.text.empty()) Add(manager, request, selection, objects, out);
    if (!request.remove.empty()) Remove(manager, request.remove, selection, out);
    if (!request.save.empty()) SaveTechnics(manager, objects, request.save);
    PrintLostPaths(manager, objects, out);
    DrawPaths(contours, picture, out);
} catch (const char* text) { // from the Lua cursor: a parameter out of bounds
    throw DrawingError(std::string("technics: ") + text);
}

} // namespace host
