#include "path_operator.h"

#include <algorithm>
#include <charconv>

#include "stretches.h"

namespace plugins {
namespace {

// Puts technics in the order in which the manager loads them, so that loading does not change what is saved.
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
        m_paths.push_back(path.get());
        object.GetToolPathList().push_back(path.release());
    }
    return !m_paths.empty();
}

void PathTechnics::RemovePaths(qev::CCadObject& object) {
    object.GetToolPathList().remove_if([this](const qev::CCadObject* path) {
        const bool isOwn = std::find(m_paths.begin(), m_paths.end(), path) != m_paths.end();
        if (isOwn) delete path;
        return isOwn;
    });
    m_paths.clear();
}

std::unique_ptr<PathTechnics> PathOperator::Make(qev::CCadObject& object, qev::CLuaAccess& cursor,
                                                 bool isPicked) const {
    const auto contour = contours::ContourOf(object);
    if (!contour || contour->GetSegmentCount() == 0) return nullptr;
    auto technics = Read(cursor, object, *contour, isPicked);
    if (!technics->RenewPaths(object, *contour)) return nullptr;
    RemoveFrom(object);
    return technics;
}

bool PathOperator::RemoveFrom(qev::CCadObject& object) const {
    const std::unique_ptr<qev::CTechnics> technics(qev::PickOffTechnics(&object, m_type));
    if (auto* own = dynamic_cast<PathTechnics*>(technics.get())) own->RemovePaths(object);
    return technics != nullptr;
}

std::string PathOperator::Summary(const char* done, std::size_t changed, std::size_t all) const {
    return std::string(m_shown) + " " + done + " " + std::to_string(changed) + " of " + std::to_string(all)
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
        Sort(object->GetTechnicsList());
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
    auto* const technics = dynamic_cast<PathTechnics*>(qev::GetTechnics(object, m_type, -1));
    const auto contour = technics ? contours::ContourOf(*object) : nullptr;
    if (contour) technics->RenewPaths(*object, *contour);
}

std::string Number(double value) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

} // namespace plugins
