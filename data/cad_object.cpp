// What every object carries: identity, attributes, machining and its defaults as an outline. A copy is made
// by the copy constructors, which leave out what belongs to the one object alone (technics, tool paths), and
// numbered by Clone.
//
// Objects own others to any depth: members, inner objects, tool paths. They are deleted in two passes: first
// everything that is owned is strung together, each object once, by a pointer that every object has for that
// purpose; then the row is deleted, when nothing in it owns anything any more. So neither the depth of a
// drawing nor an object that holds itself does harm, and deleting needs no memory.
#include <atomic>
#include <unordered_set>
#include <utility>
#include <vector>

#include <qevdata/cad_object.h>
#include <qevmath/tolerance.h>

#include "bounds_of.h"

namespace qev {
namespace {

unsigned int FreshId() {
    static std::atomic<unsigned int> last{0};
    return ++last;
}

// The copies on this thread whose inner objects have still to be copied, in place of recursion: a copy that
// is made while another one is being completed is completed after it. The last comes first, so that those
// whose inner objects are being copied are the ones within which the present one lies.
struct InnerCopies {
    struct Pending {
        const CCadObject* source;
        CCadObject* copy; // null when its inner object has been copied and for a copy that was deleted
    };
    std::vector<Pending> pending;
    std::unordered_set<const CCadObject*> open; // whose inner objects are being copied

    InnerCopies();
    ~InnerCopies();
    InnerCopies(const InnerCopies&) = delete;
    InnerCopies& operator=(const InnerCopies&) = delete;

    void Forget(const CCadObject* copy) {
        for (Pending& one : pending)
            if (one.copy == copy) one.copy = nullptr;
    }
};
thread_local InnerCopies* t_pInnerCopies = nullptr;

InnerCopies::InnerCopies() {
    t_pInnerCopies = this;
}
InnerCopies::~InnerCopies() {
    t_pInnerCopies = nullptr;
}

} // namespace

CCadObject::CCadObject(bool newId) : m_nID(newId ? FreshId() : 0) {}

CCadObject::CCadObject(const CCadObject& other)
    : m_mapKeys(other.m_mapKeys), m_strTechnics(other.m_strTechnics), m_nID(other.m_nID),
      m_nParamIndex(other.m_nParamIndex), m_bSelected(other.m_bSelected), m_bFilled(other.m_bFilled),
      m_bMachining(other.m_bMachining), m_bOverturned(other.m_bOverturned) {
    CloneInner(other);
}

CCadObject::~CCadObject() {
    if (t_pInnerCopies) t_pInnerCopies->Forget(this);
    for (const CTechnics* technics : m_listTechnics) delete technics;
    DeleteOwned();
}

void CCadObject::CloneInner(const CCadObject& other) {
    if (!other.m_pInner) return;
    if (t_pInnerCopies) {
        const bool insideItself = t_pInnerCopies->open.contains(&other);
        if (!insideItself) t_pInnerCopies->pending.push_back({&other, this});
        return;
    }
    InnerCopies copies;
    copies.pending.push_back({&other, this});
    while (!copies.pending.empty()) {
        const CCadObject* source = copies.pending.back().source;
        CCadObject* copy = std::exchange(copies.pending.back().copy, nullptr);
        if (copy) {
            copies.open.insert(source);
            const CCadObject* inner = source->m_pInner.get();
            if (!copies.open.contains(inner)) copy->m_pInner.reset(inner->Clone(true));
        } else {
            copies.open.erase(source);
            copies.pending.pop_back();
        }
    }
}

void CCadObject::Doomed::Add(CCadObject* object) {
    if (!object || object->m_bDoomed) return;
    object->m_bDoomed = true;
    (m_pLast ? m_pLast->m_pNextDoomed : m_pFirst) = object;
    m_pLast = object;
}

void CCadObject::HandOver(Doomed& doomed) {
    m_bDoomed = true;
    for (CCadObject* path : m_listToolPaths) doomed.Add(path);
    m_listToolPaths.clear();
    doomed.Add(m_pInner.release());
}

void CCadObject::DeleteOwned() {
    Doomed doomed;
    // In a destructor this is the class that is being destroyed, whose members are still there: as it should
    // be.
    HandOver(doomed); // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall)
    for (CCadObject* object = doomed.m_pFirst; object; object = object->m_pNextDoomed)
        object->HandOver(doomed);
    while (const CCadObject* object = doomed.m_pFirst) {
        doomed.m_pFirst = object->m_pNextDoomed;
        delete object;
    }
}

CCadObject* CCadObject::Cloned(CCadObject* copy, bool newId) {
    if (newId) copy->m_nID = FreshId();
    return copy;
}

cad_t CCadObject::GetType() const {
    return kCadNone;
}
bool CCadObject::IsClose() const {
    return false;
}
math::DPOINT2 CCadObject::GetStartPoint() const {
    return math::NoPoint();
}
math::DPOINT2 CCadObject::GetEndPoint() const {
    return math::NoPoint();
}
int CCadObject::GetSegmentCount() const {
    return 0;
}
SEGMENT CCadObject::GetSegment(int) const {
    return {};
}
double CCadObject::GetLength() const {
    return 0;
}
CadRect CCadObject::GetBoundRect() const {
    math::Bounds bounds;
    for (int i = 0, count = GetPieceCount(); i < count; ++i)
        bounds.Add(std::visit([](const auto& piece) { return piece.GetBounds(); }, GetPiece(i)));
    return ToRect(bounds);
}
CCadObject* CCadObject::Clone(bool) const {
    return nullptr;
}
int CCadObject::GetPieceCount() const {
    return GetSegmentCount();
}
OutlinePiece CCadObject::GetPiece(int index) const {
    return GetSegment(index);
}
const std::list<CCadObject*>* CCadObject::GetMembers() const {
    return nullptr;
}
CContourDirection::ContourDirection_T CCadObject::GetDirection() const {
    return CContourDirection::NONE;
}

CString CCadObject::GetKey(const char* key) const {
    const auto found = key ? m_mapKeys.find(key) : m_mapKeys.end();
    return found == m_mapKeys.end() ? CString() : CString(found->second.c_str());
}

void CCadObject::SetKey(const char* key, const char* value) {
    if (key) m_mapKeys[key] = value ? value : "";
}

void CCadObject::AddTechnics(CTechnics* technics) {
    if (!technics) return;
    std::unique_ptr<CTechnics> owned(technics); // deleted when the list gets no memory
    m_listTechnics.push_back(technics);
    (void)owned.release();
}

void CCadObject::SetTechnicsString(const char* text) {
    m_strTechnics = text ? text : "";
}

CString CCadObject::GetTechnicsString() const {
    return CString(m_strTechnics.c_str());
}

CadRect CCadObject::GetToolPathBoundRect() const {
    return ToRect(BoundsOf(m_listToolPaths));
}

void CCadObject::SetInnerObject(CCadObject* inner) {
    if (inner != this && inner != m_pInner.get()) m_pInner.reset(inner);
}

bool EndsMeet(const CCadObject& contour) {
    return contour.GetPieceCount() > 0
           && math::D2GetDistance(contour.GetStartPoint(), contour.GetEndPoint()) <= math::kOnCurve;
}

CContourDirection::ContourDirection_T GetContourDirectionEx(const CCadObject* object) {
    return object ? object->GetDirection() : CContourDirection::NONE;
}

bool CTechnics::Refresh(const CCadObject*, void*) {
    return false;
}

void CTechnics::Write(std::ostream&) const {}

CTechnics::~CTechnics() = default;

CITechnicsSerialize::~CITechnicsSerialize() = default;

} // namespace qev
