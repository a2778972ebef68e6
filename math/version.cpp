#include <qev/version.h>

namespace qev {

const char* GetVersion() noexcept {
    return QEV_VERSION_STRING;
}

} // namespace qev
