// The file holds, for each contour that has technics, a line with the contour's number in the table, the
// length of its text and its shape, and then the text. The number alone fits only the drawing as it was: one
// entity more, and every technics would lie on its neighbour. So a contour is taken by its number only if it
// has the shape that was saved, and else the one contour that has it. What is compared is what the technics'
// positions depend on: how many segments there are, where the contour starts, how it lies. It is compared
// within a tolerance and not rounded, as rounding parts two numbers that lie on both sides of a half.
//
// The length of the text goes before it so that no text needs quoting, and it is bounded before memory is
// taken.

#include "saved_technics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <memory>
#include <utility>
#include <vector>

#include <qevtechnics/parameters.h>
#include <qevtechnics/stretches.h>

#include "host/report/output_file.h"

namespace host {
namespace {

// mm: shapes that differ by less are the same. It is what a converted curve may be off by, far above the
// rounding of a file and far below two contours that somebody has drawn apart.
constexpr double kSameShape = qev::kit::kConversionError;

constexpr std::size_t kLongest = 1 << 24; // bytes of a text, far above what a contour can need

// Segments, 1 for a closed contour, length in mm, box (left, bottom, width, height), start (x, y), area in
// mm^2 over the length.
using Shape = std::array<double, 10>;

Shape ShapeOf(const qev::CCadObject& object) {
    const auto contour = qev::kit::ContourOf(object);
    if (!contour) return {-1}; // no saved shape is like this
    const qev::CadRect box = contour->GetBoundRect();
    const math::DPOINT2 start = contour->GetStartPoint();
    const double length = contour->GetLength();
    const double area = contour->IsClose() ? qev::GetCadPolylineArea(contour.get(), true) : 0;
    return {static_cast<double>(contour->GetSegmentCount()),
            contour->IsClose() ? 1.0 : 0.0,
            length,
            box.x,
            box.y,
            box.width,
            box.height,
            start.x,
            start.y,
            length > 0 ? area / length : 0};
}

bool IsSame(const Shape& a, const Shape& b) {
    return std::equal(a.begin(), a.end(), b.begin(),
                      [](double x, double y) { return std::abs(x - y) <= kSameShape; });
}

// One contour's part of the file.
struct Saved {
    int number = 0;
    Shape shape{};
    std::string text;

    // How errors name it.
    std::string Name() const { return "the technics of object " + std::to_string(number) + ": "; }
};

void WriteSaved(std::ostream& out, const Saved& saved) {
    out << saved.number << ' ' << saved.text.size();
    for (const double value : saved.shape) out << ' ' << qev::kit::ShortestText(value);
    out << '\n' << saved.text << '\n';
}

// False where the file is damaged.
bool ReadSaved(std::istream& in, Saved& saved) {
    std::size_t length = 0;
    if (!(in >> saved.number >> length) || length > kLongest) return false;
    for (double& value : saved.shape) in >> value;
    saved.text.assign(length, '\0');
    return !!in.ignore(1).read(saved.text.data(), static_cast<std::streamsize>(length));
}

// Finds the contours that saved shapes belong to. The shapes are taken when the first number does not fit.
class Finder {
public:
    explicit Finder(const Numbered& contours) : m_rContours(contours) {}

    qev::CCadObject& Find(const Saved& saved) {
        const auto numbered = m_rContours.find(saved.number);
        if (numbered != m_rContours.end() && IsSame(ShapeOf(*numbered->second), saved.shape))
            return *numbered->second;
        if (m_vecShapes.empty())
            for (const auto& [number, each] : m_rContours) m_vecShapes.emplace_back(ShapeOf(*each), each);
        const auto isLike = [&](const auto& known) { return IsSame(known.first, saved.shape); };
        const auto found = std::find_if(m_vecShapes.begin(), m_vecShapes.end(), isLike);
        if (found == m_vecShapes.end()) throw DrawingError(saved.Name() + "no contour has its shape");
        if (std::any_of(found + 1, m_vecShapes.end(), isLike))
            throw DrawingError(saved.Name() + "several contours have its shape");
        return *found->second;
    }

private:
    const Numbered& m_rContours;
    std::vector<std::pair<Shape, qev::CCadObject*>> m_vecShapes; // of all; empty until they are needed
};

void Put(qev::CTechnicsManager& manager, const Saved& saved, qev::CCadObject& object) {
    if (!manager.KnowsTechnics(saved.text)) throw DrawingError(saved.Name() + manager.GetLastErrorText());
    object.SetTechnicsString(saved.text.c_str());
    try {
        manager.LoadTechnics(&object);
    } catch (const char* why) { // from an operator's cursor
        throw DrawingError(saved.Name() + why);
    }
}

} // namespace

void SaveTechnics(qev::CTechnicsManager& manager, const Numbered& contours, const std::string& path) {
    OutputFile file(path, "technics");
    for (const auto& [number, contour] : contours) {
        if (!qev::HasTechnics(contour)) continue;
        manager.SaveTechnics(contour);
        if (!manager.GetLastErrorText().empty()) throw DrawingError(manager.GetLastErrorText());
        WriteSaved(file.Stream(), {number, ShapeOf(*contour), contour->GetTechnicsString().GetString()});
    }
    file.Keep();
}

void LoadTechnics(qev::CTechnicsManager& manager, const Numbered& contours, const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw DrawingError("the technics " + path + " cannot be opened");
    Finder finder(contours);
    std::list<qev::CCadObject*> loaded;
    for (Saved saved; !(file >> std::ws).eof();) {
        if (!ReadSaved(file, saved)) throw DrawingError("the technics " + path + " are damaged");
        Put(manager, saved, *loaded.emplace_back(&finder.Find(saved)));
    }
    manager.UpdataViewDataNotify(&loaded); // bridges give way to lead-ins that were loaded after them
}

} // namespace host
