// Searches in an object's list of technics, which is short: a plain walk from its front, and the first match
// is the answer, because the order of the list is the order in which the technics were added. Two searches
// for each question would differ only in what they compare, so that the comparison is handed in.
//
// A technics that is refreshed may take any off the list and delete them, so that before each refresh the
// next one has to be known to be there still. To search for it each time takes n^2 steps for n technics,
// nearly always for nothing. So the list is taken to be as it was while its length and its last technics are,
// which no taking off or adding at the end leaves both. After a change the next few are searched for, which
// costs no more than to take one off did; when nothing changes any more, a set of what is there answers.

#include <algorithm>
#include <list>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include <qev/technics/queries.h>
#include <qevdata/cad_object.h>

#include "data/object_watch.h"

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

// Which of the technics that were on a list are there still. Up to kSearched of them, of which real objects
// have some ten, the list itself is searched each time. A longer one would take quadratic time: there a set
// is made anew when the list has changed in its length or at its end, and what has been destroyed is told by
// a watch.
class StillListed {
public:
    explicit StillListed(const std::list<CTechnics*>& list) : m_list(list) {
        if (list.size() > kSearched) m_optWatch.emplace(std::vector<const void*>(list.begin(), list.end()));
    }

    bool Has(CTechnics* technics) {
        if (!m_optWatch) return std::find(m_list.begin(), m_list.end(), technics) != m_list.end();
        if (!m_optWatch->Lives(technics)) return false;
        if (m_setListed.size() != m_list.size() || m_pLast != m_list.back()) {
            m_setListed = {m_list.begin(), m_list.end()};
            m_pLast = m_list.back();
        }
        return m_setListed.contains(technics);
    }

private:
    static constexpr std::size_t kSearched = 1024;

    const std::list<CTechnics*>& m_list;
    std::optional<ObjectWatch> m_optWatch;
    std::unordered_multiset<CTechnics*> m_setListed; // a technics may stand on the list twice
    CTechnics* m_pLast = nullptr;
};

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
    StillListed listed(now);
    for (CTechnics* each : std::vector<CTechnics*>(now.begin(), now.end()))
        if (each && listed.Has(each) && each->Refresh(object, data)) refreshed = true;
    return refreshed;
}

} // namespace qev
