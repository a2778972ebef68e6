// What every object carries: identity, attributes, machining and its defaults as an outline. A copy is made
// by the copy constructors, which leave out what belongs to the one object alone (technics, tool paths), and
// numbered by Clone.
#include <atomic>

#include <qevdata/cad_object.h>
#include <qevmath/tolerance.h>

#include "bounds_of.h"

namespace qev {
namespace {

unsigned int FreshId() {
    static std::atomic<unsigned int> last{0};
    return ++last;
}

} // namespace

CCadObject::CCadObject(bool newId) : m_nID(newId ? FreshId() : 0) {}

CCadObject::CCadObject(const CCadObject& other)
    : m_pInner(other.m_pInner ? other.m_pInner->Clone(true) : nullptr), m_mapKeys(other.m_mapKeys),
      m_strTechnics(other.m_strTechnics), m_nID(other.m_nID), m_nParamIndex(other.m_nParamIndex),
      m_bSelected(other.m_bSelected), m_bFilled(other.m_bFilled), m_bMachining(other.m_bMachining),
      m_bOverturned(other.m_bOverturned) {}

CCadObject::~CCadObject() {
    for (const CTechnics* technics : m_listTechnics) delete technics;
    for (const CCadObject* path : m_listToolPaths) delete path;
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
    return {};
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
