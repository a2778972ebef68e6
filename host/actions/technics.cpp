// Technics reach a contour in four ways, all through the library's manager: added by a Lua text, removed by
// type, saved as the text that the contour's technics write, and loaded from that text. Loading comes first,
// so that a run can change what an earlier one has saved, and saving last.
//
// The file holds, for each contour that has technics, a line with the contour's number and the length of its
// text, and then the text. The number counts the contours in the order of the drawing (texts and dots, which
// take no technics, are no contours), so that the file fits only the drawing it was made of, read with the
// options it was read with; names would be better, but drawings have none. The length goes before the text so
// that no text needs quoting, and it is bounded before memory is taken.
//
// The manager and the operators answer a refusal by false and a text, which becomes the error of the drawing.
// Only a parameter out of bounds comes as an exception, thrown by the cursor as its text.

#include "technics.h"

#include <algorithm>
#include <fstream>
#include <ostream>

#include <qev/qev.h>

#include "host/report/output_file.h"

namespace host {
namespace {

using Objects = std::list<qev::CCadObject*>;

void LoadPlugIns(qev::CTechnicsManager& manager, const std::vector<std::string>& paths) {
    for (const std::string& path : paths)
        if (!manager.LoadTechnicsPlugIn(path)) throw DrawingError(manager.GetLastErrorText());
}

void Add(qev::CTechnicsManager& manager, const TechnicsRequest& request, const Objects& selection,
         std::ostream& out) {
    Objects changed, refused;
    std::string message;
    const bool added =
        manager.AddTechnics(&selection, request.text, request.params, &changed, &refused, message);
    if (!added) throw DrawingError("no technics: " + manager.GetLastErrorText() + message);
    manager.UpdataViewDataNotify(&changed);
    out << "technics: " << message << "\n";
}

void Remove(qev::CTechnicsManager& manager, int type, const Objects& selection, std::ostream& out) {
    Objects changed, refused;
    std::string message = "no operator";
    if (!manager.RemoveTechnics(&selection, type, &changed, &refused, message))
        throw DrawingError("nothing to remove: " + message);
    manager.UpdataViewDataNotify(&changed);
    out << "technics: " << message << "\n";
}

void Save(qev::CTechnicsManager& manager, const Objects& contours, const std::string& path) {
    OutputFile file(path, "technics");
    int number = 0;
    for (qev::CCadObject* contour : contours) {
        if (qev::HasTechnics(contour)) {
            manager.SaveTechnics(contour);
            const CString text = contour->GetTechnicsString();
            file.Stream() << number << " " << text.GetLength() << "\n" << text.GetString() << "\n";
        }
        ++number;
    }
    file.Keep();
}

void Load(qev::CTechnicsManager& manager, const Objects& contours, const std::string& path) {
    constexpr std::size_t kLongest = 1 << 24; // bytes of a text, far above what a contour can need
    const std::vector<qev::CCadObject*> byNumber(contours.begin(), contours.end());
    std::ifstream file(path, std::ios::binary);
    if (!file) throw DrawingError("the technics " + path + " cannot be opened");
    std::size_t number = 0;
    std::size_t length = 0;
    while (file >> number >> length) {
        std::string text(std::min(length, kLongest), '\0');
        if (number >= byNumber.size() || length > kLongest
            || !file.ignore(1).read(text.data(), static_cast<std::streamsize>(length)))
            throw DrawingError("the technics " + path + " do not fit the drawing");
        byNumber[number]->SetTechnicsString(text.c_str());
        manager.LoadTechnics(byNumber[number]);
        if (!manager.GetLastErrorText().empty())
            throw DrawingError("the technics of contour " + std::to_string(number) + ": "
                               + manager.GetLastErrorText());
    }
    if (!file.eof()) throw DrawingError("the technics " + path + " are damaged");
}

void DrawPaths(const Objects& contours, Picture& picture, std::ostream& out) {
    int count = 0;
    double length = 0;
    for (const qev::CCadObject* contour : contours)
        for (const qev::CCadObject* path : contour->GetToolPathList()) {
            picture.Draw(*path, "path");
            ++count;
            length += path->GetLength();
        }
    if (count > 0) out << count << " tool paths, " << length << " mm\n";
}

} // namespace

void RunTechnics(const TechnicsRequest& request, const Drawing& drawing, const qev::CCadObject* picked,
                 Picture& picture, std::ostream& out) try {
    qev::CTechnicsManager& manager = *qev::GetTechnicsManager();
    manager.SetDataOnly(true); // technics come with drawings, from anywhere
    LoadPlugIns(manager, request.plugIns);
    const bool isAsked =
        request.remove || !request.load.empty() || !request.text.empty() || !request.save.empty();
    if (!isAsked) return;
    Objects contours;
    qev::CollectLeafNode(&drawing.root.GetObjectsList(), &contours);
    Objects selection = contours;
    if (picked) selection.remove_if([picked](const qev::CCadObject* each) { return each != picked; });
    if (!request.load.empty()) Load(manager, contours, request.load);
    if (!request.text.empty()) Add(manager, request, selection, out);
    if (request.remove) Remove(manager, *request.remove, selection, out);
    if (!request.save.empty()) Save(manager, contours, request.save);
    DrawPaths(contours, picture, out);
} catch (const char* text) { // from the Lua cursor: a parameter out of bounds
    throw DrawingError(std::string("technics: ") + text);
}

} // namespace host
