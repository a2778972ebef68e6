#include <qevmath/point.h>

namespace math {

double D2GetDistance(const DPOINT2& p, const DPOINT2& q) {
    return Norm(q - p);
}

} // namespace math
