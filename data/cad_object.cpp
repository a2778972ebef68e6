// What every object carries: identity, attributes, machining and its defaults as an outline. A copy is made
// by the copy constructors, which leave out what belongs to the one object alone (technics, tool paths), and
// numbered by Clone.
//
// Objects own others to any depth: members, inner objects, tool paths. They are deleted in two passes: first
// everything that is owned is strung together, each object once, by a pointer that every object has for that
// purpose; then the row is deleted, when nothing in it owns anything any more. So neither the depth of a
// drawing nor an object that holds itself does harm, and deleting needs no memory.
//
// A drawing has a million objects, and most of them are a line on a layer. So what few objects have lies in
// a part of its own that is made when it is first needed, and the attributes, of which an object has one or
// two, lie one behind the other in a single block that is searched from its start. A map of strings was
// rejected: it takes a hundred bytes for an attribute of ten.
#include <algorithm>
#include <atomic>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include <qevdata/cad_object.h>
#include <qevmath/tolerance.h>

#include "bounds_of.h"
#include "object_watch.h"

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

// What an object without machining answers.
const std::list<CTechnics*> kNoTechnics;
const std::list<CCadObject*> kNoToolPaths;

// The text behind one that ends with its NUL.
const char* Behind(const char* text) {
    return text + std::strlen(text) + 1;
}

} // namespace

struct CCadObject::Machining {
    std::list<CTechnics*> technics;
    std::list<CCadObject*> toolPaths;
    std::string text;
};

CCadObject::CCadObject(bool newId) : m_nID(newId ? FreshId() : 0) {}

CCadObject::CCadObject(const CCadObject& other)
    : m_nKeysSize(other.m_nKeysSize), m_nID(other.m_nID), m_nParamIndex(other.m_nParamIndex),
      m_bSelected(other.m_bSelected), m_bFilled(other.m_bFilled), m_bMachining(other.m_bMachining),
      m_bOverturned(other.m_bOverturned) {
    if (m_nKeysSize) m_pKeys = std::make_unique_for_overwrite<char[]>(m_nKeysSize);
    std::copy_n(other.m_pKeys.get(), m_nKeysSize, m_pKeys.get());
    if (other.m_pMachining && !other.m_pMachining->text.empty())
        MadeMachining().text = other.m_pMachining->text;
    CloneInner(other);
}

CCadObject::~CCadObject() {
    ObjectWatch::Forget(this);
    if (t_pInnerCopies) t_pInnerCopies->Forget(this);
    for (const CTechnics* technics : std::as_const(*this).GetTechnicsList()) delete technics;
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
    if (m_pMachining) {
        for (CCadObject* path : m_pMachining->toolPaths) doomed.Add(path);
        m_pMachining->toolPaths.clear();
    }
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

const char* CCadObject::FindKey(const char* key) const {
    const char* const end = m_pKeys.get() + m_nKeysSize;
    for (const char* each = m_pKeys.get(); each != end;) {
        const char* const value = Behind(each);
        if (std::strcmp(each, key) == 0) return value;
        each = Behind(value);
    }
    return nullptr;
}

CString CCadObject::GetKey(const char* key) const {
    const char* const value = key ? FindKey(key) : nullptr;
    return value ? CString(value) : CString();
}

void CCadObject::SetKey(const char* key, const char* value) {
    if (!key) return;
    const std::string_view before(m_pKeys.get(), m_nKeysSize);
    const char* const old = FindKey(key);
    const std::size_t head = old ? old - before.data() : before.size(); // what is before the value
    const std::size_t tail = old ? Behind(old) - before.data() : head;  // and where goes on what is behind it
    std::string after(before.substr(0, head));
    if (!old) (after += key) += '\0';
    (after += value ? value : "") += '\0';
    after += before.substr(tail);
    if (after.size() > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
    auto keys = std::make_unique_for_overwrite<char[]>(after.size());
    std::copy(after.begin(), after.end(), keys.get());
    m_pKeys = std::move(keys);
    m_nKeysSize = static_cast<std::uint32_t>(after.size());
}

CCadObject::Machining& CCadObject::MadeMachining() {
    if (!m_pMachining) m_pMachining = std::make_unique<Machining>();
    return *m_pMachining;
}

std::list<CTechnics*>& CCadObject::GetTechnicsList() {
    return MadeMachining().technics;
}

const std::list<CTechnics*>& CCadObject::GetTechnicsList() const {
    return m_pMachining ? m_pMachining->technics : kNoTechnics;
}

void CCadObject::AddTechnics(CTechnics* technics) {
    if (!technics) return;
    std::unique_ptr<CTechnics> owned(technics); // deleted when the list gets no memory
    GetTechnicsList().push_back(technics);
    (void)owned.release();
}

void CCadObject::SetTechnicsString(const char* text) {
    const bool isEmpty = !text || !*text;
    if (m_pMachining || !isEmpty) MadeMachining().text = isEmpty ? "" : text;
}

CString CCadObject::GetTechnicsString() const {
    return m_pMachining ? CString(m_pMachining->text.c_str()) : CString();
}

std::list<CCadObject*>& CCadObject::GetToolPathList() {
    return MadeMachining().toolPaths;
}

const std::list<CCadObject*>& CCadObject::GetToolPathList() const {
    return m_pMachining ? m_pMachining->toolPaths : kNoToolPaths;
}

CadRect CCadObject::GetToolPathBoundRect() const {
    return ToRect(BoundsOf(GetToolPathList()));
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

CTechnics::~CTechnics() {
    ObjectWatch::Forget(this);
}

CITechnicsSerialize::~CITechnicsSerialize() = default;

} // namespace qev
