#include <qev/technics/technics_operator.h>

namespace qev {

TarvelEnvContext CITechnicsOperator::m_TarvelEnvContext;

CITechnicsOperator::CITechnicsOperator() = default;
CITechnicsOperator::CITechnicsOperator(const CITechnicsOperator&) = default;
CITechnicsOperator& CITechnicsOperator::operator=(const CITechnicsOperator&) = default;

void CITechnicsOperator::CadMultipleModifyEventTenchnicsCollect(const std::list<CCadObject*>*,
                                                                std::list<CCadObject*>*, int,
                                                                std::map<CCadObject*, CCadObject*>&) {}

bool CITechnicsOperator::IncrementalAdd(const CCadObject*, CTechnics*) {
    return false;
}

} // namespace qev
