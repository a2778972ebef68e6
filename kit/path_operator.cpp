// Technics with tool paths, and how they get onto objects.
//
// A path belongs to two: the object owns it, as the host draws and cuts what hangs on the object, and the
// technics that made it must find it again to replace it. So a technics keeps plain pointers to its own
// paths, which are compared with those on the object and never read; paths of other technics are left alone.
// A mark on each path was rejected: a path is any drawing object, and its attributes belong to the host.
//
// Making comes before removing: the new technics reads its parameters, which may throw, and makes its paths,
// which may not fit, and only then the old technics of the type goes. An object so never loses what it has to
// a text that is refused.

#include "path_operator.h"

#include <algorithm>
#include <charconv>

#include "stretches.h"

namespace kit {
namespace {

// Puts an object's technics in the order in which the manager loads them. Saving, loading and saving again
// then writes one and the same text.
void Sort(std::list<qev::CTechnics*>& technics) {
    const auto& operators = *qev::GetTechnicsManager()->GetTehcnisItemVector();
    const auto place = [&](const qev::CTechnics* each) {
        return std::find_if(operators.begin(), operators.end(), [each](qev::CITechnicsOperator* candidate) {
            return candidate->GetTechnicsType() == each->m_nType;
        });
    };
    technics.sort([&](const qev::CTechnics* a, const qev::CTechnics* b) { return place(a) < place(b); });
}

} // namespace

bool PathTechnics::RenewPaths(qev::CCadObject& object, const qev::CCadMultiSegments& contour) {
    RemovePaths(object);
    for (auto& path : MakePaths(contour)) {
        m_vecPaths.push_back(path.get());
        object.GetToolPathList().push_back(path.release());
    }
    return !m_vecPaths.empty();
}

void PathTechnics::RemovePaths(qev::CCadObject& object) {
    object.GetToolPathList().remove_if([this](const qev::CCadObject* path) {
        const bool isOwn = std::find(m_vecPaths.begin(), m_vecPaths.end(), path) != m_vecPaths.end();
        if (isOwn) delete path;
        return isOwn;
    });
    m_vecPaths.clear();
}

std::unique_ptr<PathTechnics> PathOperator::Make(qev::CCadObject& object, qev::CLuaAccess& cursor,
                                                 bool isPicked) const {
    const auto contour = ContourOf(object);
    if (!contour || contour->GetSegmentCount() == 0) return nullptr;
    auto technics = Read(cursor, object, *contour, isPicked);
    if (!technics->RenewPaths(object, *contour)) return nullptr;
    RemoveFrom(object);
    return technics;
}

bool PathOperator::RemoveFrom(qev::CCadObject& object) const {
    const std::unique_ptr<qev::CTechnics> technics(qev::PickOffTechnics(&object, m_nType));
    if (auto* own = dynamic_cast<PathTechnics*>(technics.get())) own->RemovePaths(object);
    return technics != nullptr;
}

std::string PathOperator::Summary(const char* done, std::size_t changed, std::size_t all) const {
    return std::string(m_szShown) + " " + done + " " + std::to_string(changed) + " of " + std::to_string(all)
           + " objects";
}

bool PathOperator::AddTechnicsByLua(const Objects* objects, qev::CLuaAccess* cursor, Objects* changed,
                                    Objects* refused, std::string& message) {
    std::size_t count = 0;
    for (qev::CCadObject* object : *objects) {
        auto technics = Make(*object, *cursor, object == objects->front());
        if (technics) ++count;
        if (Objects* const out = technics ? changed : refused) out->push_back(object);
        object->AddTechnics(technics.release());
        if (qev::HasTechnics(object)) Sort(object->GetTechnicsList());
    }
    message = Summary("added to", count, objects->size());
    return count > 0;
}

qev::CTechnics* PathOperator::CreateTechnics(qev::CCadObject* object, qev::CLuaAccess* cursor) {
    return Make(*object, *cursor, false).release();
}

bool PathOperator::RemoveTechnicsOf(const Objects* objects, int, Objects* changed, Objects* refused,
                                    std::string& message) {
    std::size_t count = 0;
    for (qev::CCadObject* object : *objects) {
        const bool removed = RemoveFrom(*object);
        if (removed) ++count;
        if (Objects* const out = removed ? changed : refused) out->push_back(object);
    }
    message = Summary("removed from", count, objects->size());
    return count > 0;
}

void PathOperator::UpdateViewData(qev::CCadObject* object) {
    auto* const technics = dynamic_cast<PathTechnics*>(qev::GetTechnics(object, m_nType, -1));
    const auto contour = technics ? ContourOf(*object) : nullptr;
    if (contour) technics->RenewPaths(*object, *contour);
}

std::string ShortestText(double value) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

} // namespace kit
