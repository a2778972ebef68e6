// Searches in an object's list of technics, which is short: a plain walk from its front, and the first match
// is the answer, because the order of the list is the order in which the technics were added. Two searches
// for each question would differ only in what they compare, so that the comparison is handed in.

#include <algorithm>
#include <list>
#include <vector>

#include <qev/technics/queries.h>
#include <qevdata/cad_object.h>

namespace qev {
namespace {

auto OfType(int type) {
    return [type](const CTechnics* technics) { return technics && technics->m_nType == type; };
}

auto OfTypes(int type, int subType) {
    return [type, subType](const CTechnics* technics) {
        return technics && technics->m_nType == type && technics->m_nSubType == subType;
    };
}

template <class Wanted>
CTechnics* Find(const CCadObject* object, Wanted wanted) {
    if (!object) return nullptr;
    const auto& technics = object->GetTechnicsList();
    const auto found = std::find_if(technics.begin(), technics.end(), wanted);
    return found == technics.end() ? nullptr : *found;
}

template <class Wanted>
CTechnics* PickOff(CCadObject* object, Wanted wanted) {
    CTechnics* const found = Find(object, wanted);
    if (!found) return nullptr;
    auto& technics = object->GetTechnicsList();
    technics.erase(std::find(technics.begin(), technics.end(), found));
    return found;
}

} // namespace

bool HasTechnics(const CCadObject* object) {
    return object && !object->GetTechnicsList().empty();
}

bool HasTechnics(const CCadObject* object, int type, bool) {
    return Find(object, OfType(type)) != nullptr;
}

bool HasTechnics(const CCadObject* object, int type, int subType) {
    return Find(object, OfTypes(type, subType)) != nullptr;
}

CTechnics* GetTechnics(const CCadObject* object, int type, int subType) {
    return Find(object, OfTypes(type, subType == -1 ? type : subType));
}

CTechnics* PickOffTechnics(CCadObject* object, int type) {
    return PickOff(object, OfType(type));
}

CTechnics* PickOffTechnics(CCadObject* object, int type, int subType) {
    return PickOff(object, OfTypes(type, subType));
}

bool RefreshCadObject(const CCadObject* object, int type, int subType, void* data) {
    if (!object) return false;
    if (type >= 0) {
        CTechnics* const technics = GetTechnics(object, type, subType);
        return technics && technics->Refresh(object, data);
    }
    bool refreshed = false;
    const std::list<CTechnics*>& now = object->GetTechnicsList();
    for (CTechnics* each : std::vector<CTechnics*>(now.begin(), now.end())) {
        const bool isThere = each && std::find(now.begin(), now.end(), each) != now.end();
        if (isThere && each->Refresh(object, data)) refreshed = true; // it may take itself and others off
    }
    return refreshed;
}

} // namespace qev
