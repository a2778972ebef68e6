#include <qevdata/technics.h>

namespace qev {

bool CTechnics::Refresh(const CCadObject*, void*) {
    return false;
}

void CTechnics::Write(std::ostream&) const {}

CTechnics::~CTechnics() = default;

CITechnicsSerialize::~CITechnicsSerialize() = default;

} // namespace qev
