#include "flash/fixed_point.h"

#include <cmath>

#include "platform/zo_exception.h"
#include "platform/zo_string.h"

namespace ZoFlash {
namespace {

// Halves away from zero; NaN and infinities fail the range check below.
int64_t RoundToNearest(double value, double limit, const char* what) {
    if (!(std::fabs(value) <= limit))
        throw ZoException(ZoFormat("The SWF %s value %g is out of range.", what, value));
    return static_cast<int64_t>(std::llround(value));
}

}  // namespace

Twips ZoToTwips(double twips) {
    return ZoCheckedTwips(
        RoundToNearest(twips, static_cast<double>(kZoSWFMaxSignedField), "coordinate"));
}

Twips ZoCheckedTwips(int64_t twips) {
    if (twips > kZoSWFMaxSignedField || twips < -kZoSWFMaxSignedField)
        throw ZoException(ZoFormat("The SWF coordinate %lld twips is out of range.",
                                   static_cast<long long>(twips)));
    return Twips{static_cast<int32_t>(twips)};
}

Fixed16 ZoToFixed16(double value) {
    const int64_t raw =
        RoundToNearest(value * 65536.0, static_cast<double>(kZoSWFMaxSignedField), "matrix");
    return Fixed16{static_cast<int32_t>(raw)};
}

Fixed8 ZoToFixed8(double value) {
    const int64_t raw = RoundToNearest(value * 256.0, 32767.0, "fixed-point");
    return Fixed8{static_cast<int16_t>(raw)};
}

}  // namespace ZoFlash
