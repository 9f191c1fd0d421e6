#include "flash/fixed_point.h"

#include <cmath>

#include "platform/zo_exception.h"
#include "platform/zo_string.h"

namespace ZoFlash {

// NaN and infinities fail the range check. Rounded by hand because the
// library rounding calls cost more than the rest of a placement.
int64_t ZoRoundChecked(double value, double limit, const char* what) {
    if (!(std::fabs(value) <= limit))
        throw ZoException(ZoFormat("The SWF %s value %g is out of range.", what, value));
    auto whole = static_cast<int64_t>(value);
    const double fraction = value - static_cast<double>(whole);  // exact below 2^52
    if (fraction >= 0.5)
        ++whole;
    else if (fraction <= -0.5)
        --whole;
    return whole;
}

Twips ZoToTwips(double twips) {
    return ZoCheckedTwips(
        ZoRoundChecked(twips, static_cast<double>(kZoSWFMaxSignedField), "coordinate"));
}

Twips ZoCheckedTwips(int64_t twips) {
    if (twips > kZoSWFMaxSignedField || twips < -kZoSWFMaxSignedField)
        throw ZoException(ZoFormat("The SWF coordinate %lld twips is out of range.",
                                   static_cast<long long>(twips)));
    return Twips{static_cast<int32_t>(twips)};
}

Fixed16 ZoToFixed16(double value) {
    const int64_t raw =
        ZoRoundChecked(value * 65536.0, static_cast<double>(kZoSWFMaxSignedField), "matrix");
    return Fixed16{static_cast<int32_t>(raw)};
}

Fixed8 ZoToFixed8(double value) {
    const int64_t raw = ZoRoundChecked(value * 256.0, 32767.0, "fixed-point");
    return Fixed8{static_cast<int16_t>(raw)};
}

}  // namespace ZoFlash
