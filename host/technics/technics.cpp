#include "technics.h"

#include <fstream>
#include <ostream>

#include <qev/qev.h>

namespace host {
namespace {

using Objects = std::list<qev::CCadObject*>;

void LoadPlugIns(qev::CTechnicsManager& manager, const std::vector<std::string>& paths) {
    for (const std::string& path : paths)
        if (!manager.LoadTechnicsPlugIn(path)) throw DrawingError(manager.GetLastErrorText());
}

void Add(qev::CTechnicsManager& manager, const Options& options, const Objects& selection,
         std::ostream& out) {
    Objects changed, refused;
    std::string message;
    const bool added =
        manager.AddTechnics(&selection, options.technics, options.params, &changed, &refused, message);
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

// A line with a contour's number and the length of its technics text, then the text, for each.
void Save(qev::CTechnicsManager& manager, const Objects& contours, const std::string& path) {
    std::ofstream file(path, std::ios::binary);
    int number = 0;
    for (qev::CCadObject* contour : contours) {
        if (qev::HasTechnics(contour)) {
            manager.SaveTechnics(contour);
            const CString text = contour->GetTechnicsString();
            file << number << " " << text.GetLength() << "\n" << text.GetString() << "\n";
        }
        ++number;
    }
    file.close();
    if (!file) throw DrawingError("the technics " + path + " cannot be written");
}

void Load(qev::CTechnicsManager& manager, const Objects& contours, const std::string& path) {
    constexpr std::size_t kLongest = 1 << 24;
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

void DrawPaths(const Objects& contours, SvgPicture& picture, std::ostream& out) {
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

void RunTechnics(const Options& options, const Drawing& drawing, const qev::CCadObject* picked,
                 SvgPicture& picture, std::ostream& out) try {
    qev::CTechnicsManager& manager = *qev::GetTechnicsManager();
    manager.SetDataOnly(true); // technics come with drawings, from anywhere
    LoadPlugIns(manager, options.plugins);
    Objects contours;
    qev::CollectLeafNode(&drawing.root.GetObjectsList(), &contours);
    Objects selection = contours;
    if (picked) selection.remove_if([picked](const qev::CCadObject* each) { return each != picked; });
    if (!options.load.empty()) Load(manager, contours, options.load);
    if (!options.technics.empty()) Add(manager, options, selection, out);
    if (options.remove) Remove(manager, *options.remove, selection, out);
    if (!options.save.empty()) Save(manager, contours, options.save);
    DrawPaths(contours, picture, out);
} catch (const char* text) { // from the Lua cursor: a parameter out of bounds
    throw DrawingError(std::string("technics: ") + text);
}

} // namespace host
