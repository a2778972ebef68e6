#include <qevdata/adobe.h>

namespace qev {

Adobe::Adobe(int kind) : m_nKind(kind) {}

Adobe::~Adobe() = default;

} // namespace qev
