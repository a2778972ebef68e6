// Technics with tool paths, and how they get onto objects.
//
// A path belongs to two: the object owns it, as the host draws and cuts what hangs on the object, and the
// technics that made it must find it again to replace it. So a technics keeps plain pointers to its own
// paths, which are compared with those on the object and never read; paths of other technics are left alone.
//
// Making comes before removing: the new technics reads its parameters, which may throw, and makes its paths,
// which may not fit, and only then the old technics of the type goes. An object so never loses what it has to
// a text that is refused.

#include <algorithm>

#include <qevtechnics/path_operator.h>

namespace qev::kit {
namespace {

// Puts an object's technics in the order in which the manager loads them. Saving, loading and saving again
// then writes one and the same text.
void Sort(std::list<CTechnics*>& technics) {
    const auto& operators = *GetTechnicsManager()->GetTehcnisItemVector();
    const auto place = [&](const CTechnics* each) {
        return std::find_if(operators.begin(), operators.end(), [each](CITechnicsOperator* candidate) {
            return candidate->GetTechnicsType() == each->m_nType;
        });
    };
    technics.sort([&](const CTechnics* a, const CTechnics* b) { return place(a) < place(b); });
}

} // namespace

void PathTechnics::RenewPaths(CCadObject& object, const CCadMultiSegments& contour) {
    Paths paths = MakePaths(object, contour);
    RemovePaths(object);
    for (auto& path : paths) {
        m_vecPaths.push_back(path.get());
        object.GetToolPathList().push_back(path.release());
    }
}

void PathTechnics::RemovePaths(CCadObject& object) {
    object.GetToolPathList().remove_if([this](const CCadObject* path) {
        const bool isOwn = std::find(m_vecPaths.begin(), m_vecPaths.end(), path) != m_vecPaths.end();
        if (isOwn) delete path;
        return isOwn;
    });
    m_vecPaths.clear();
}

std::unique_ptr<PathTechnics> PathOperator::Make(CCadObject& object, CLuaAccess& cursor,
                                                 const Surroundings& around, bool isPicked) const {
    const auto contour = ContourOf(object);
    if (!contour || contour->GetSegmentCount() == 0) throw NoRoom("is no contour");
    auto technics = Read(cursor, {object, *contour, around, isPicked});
    technics->RenewPaths(object, *contour);
    RemoveFrom(object);
    SetLostPaths(object, m_szName, "");
    return technics;
}

bool PathOperator::RemoveFrom(CCadObject& object) const {
    const std::unique_ptr<CTechnics> technics(PickOffTechnics(&object, m_nType));
    if (auto* own = dynamic_cast<PathTechnics*>(technics.get())) own->RemovePaths(object);
    if (technics) SetLostPaths(object, m_szName, "");
    return technics != nullptr;
}

std::string PathOperator::Summary(const char* done, std::size_t changed, std::size_t all) const {
    return std::string(m_szShown) + " " + done + " " + std::to_string(changed) + " of " + std::to_string(all)
           + " objects";
}

bool PathOperator::AddTechnicsByLua(const Objects* objects, CLuaAccess* cursor, Objects* changed,
                                    Objects* refused, std::string& message) {
    const Surroundings around(GetTechnicsManager()->GetDrawing());
    std::size_t count = 0;
    std::string reasons;
    for (CCadObject* object : *objects) {
        try {
            object->AddTechnics(Make(*object, *cursor, around, object == objects->front()).release());
            Sort(object->GetTechnicsList());
            if (changed) changed->push_back(object);
            ++count;
        } catch (const NoRoom& why) {
            reasons += std::string("\n  ") + why.what(); // a line that begins with a blank
            if (refused) refused->push_back(object);
        }
    }
    message = Summary("added to", count, objects->size()) + reasons;
    return count > 0;
}

CTechnics* PathOperator::CreateTechnics(CCadObject* object, CLuaAccess* cursor) {
    std::string reason;
    try {
        return Make(*object, *cursor, Surroundings(GetTechnicsManager()->GetDrawing()), false).release();
    } catch (const NoRoom& why) {
        reason = why.what();
    }
    cursor->ErrorHandle("", nullptr, reason.c_str());
}

bool PathOperator::RemoveTechnicsOf(const Objects* objects, int, Objects* changed, Objects* refused,
                                    std::string& message) {
    std::size_t count = 0;
    for (CCadObject* object : *objects) {
        const bool removed = RemoveFrom(*object);
        if (removed) ++count;
        if (Objects* const out = removed ? changed : refused) out->push_back(object);
    }
    message = Summary("removed from", count, objects->size());
    return count > 0;
}

void PathOperator::UpdateViewData(CCadObject* object) {
    auto* const technics = dynamic_cast<PathTechnics*>(GetTechnics(object, m_nType, -1));
    const auto contour = technics ? ContourOf(*object) : nullptr;
    if (!contour || contour->GetSegmentCount() == 0) return;
    try {
        technics->RenewPaths(*object, *contour);
        SetLostPaths(*object, m_szName, "");
    } catch (const NoRoom& why) {
        technics->RemovePaths(*object);
        SetLostPaths(*object, m_szName, why.what());
    }
}

} // namespace qev::kit
