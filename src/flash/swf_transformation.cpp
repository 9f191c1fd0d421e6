#include "flash/swf_transformation.h"

#include <cmath>

#include "platform/zo_exception.h"
#include "platform/zo_string.h"

namespace ZoFlash {
namespace {

// CXFORM fields have at most 15 signed bits (a 4-bit width field).
constexpr double kMaxCxformTerm = 16383;

int16_t CxformTerm(double value, const char* what) {
    return static_cast<int16_t>(ZoRoundChecked(value, kMaxCxformTerm + 0.49, what));
}

}  // namespace

void ZoSWFTransformation::SetTranslate(double tx, double ty) noexcept {
    *this = ZoSWFTransformation();
    tx_ = tx;
    ty_ = ty;
}

void ZoSWFTransformation::AppendTranslate(double tx, double ty) noexcept {
    tx_ += tx;
    ty_ += ty;
}

void ZoSWFTransformation::AppendMatrix(double a, double b, double c, double d, double tx,
                                       double ty) noexcept {
    const ZoSWFTransformation old = *this;
    a_ = a * old.a_ + b * old.c_;
    b_ = a * old.b_ + b * old.d_;
    c_ = c * old.a_ + d * old.c_;
    d_ = c * old.b_ + d * old.d_;
    tx_ = a * old.tx_ + b * old.ty_ + tx;
    ty_ = c * old.tx_ + d * old.ty_ + ty;
}

ZoFMatrixRecord ZoSWFTransformation::ToRecord() const {
    ZoFMatrixRecord r;
    r.scaleX = ZoToFixed16(a_);
    r.scaleY = ZoToFixed16(d_);
    r.hasScale = r.scaleX.raw != 65536 || r.scaleY.raw != 65536;
    r.rotateSkew0 = ZoToFixed16(c_);
    r.rotateSkew1 = ZoToFixed16(b_);
    r.hasRotate = r.rotateSkew0.raw != 0 || r.rotateSkew1.raw != 0;
    r.translateX = ZoToTwips(tx_);
    r.translateY = ZoToTwips(ty_);
    return r;
}

void ZoSWFColourTransformation::SetScale(double r, double g, double b, double a) noexcept {
    scale_[0] = r;
    scale_[1] = g;
    scale_[2] = b;
    scale_[3] = a;
}

void ZoSWFColourTransformation::SetOffset(double r, double g, double b, double a) noexcept {
    offset_[0] = r;
    offset_[1] = g;
    offset_[2] = b;
    offset_[3] = a;
}

ZoFCxformRecord ZoSWFColourTransformation::ToRecord() const {
    ZoFCxformRecord r;
    r.redMult = CxformTerm(scale_[0] * 256.0, "colour multiply");
    r.greenMult = CxformTerm(scale_[1] * 256.0, "colour multiply");
    r.blueMult = CxformTerm(scale_[2] * 256.0, "colour multiply");
    r.alphaMult = CxformTerm(scale_[3] * 256.0, "colour multiply");
    r.redAdd = CxformTerm(offset_[0], "colour add");
    r.greenAdd = CxformTerm(offset_[1], "colour add");
    r.blueAdd = CxformTerm(offset_[2], "colour add");
    r.alphaAdd = CxformTerm(offset_[3], "colour add");
    r.hasMult = r.redMult != 256 || r.greenMult != 256 || r.blueMult != 256 || r.alphaMult != 256;
    r.hasAdd = (r.redAdd | r.greenAdd | r.blueAdd | r.alphaAdd) != 0;
    return r;
}

}  // namespace ZoFlash
