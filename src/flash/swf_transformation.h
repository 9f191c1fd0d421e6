#pragma once
#include "flash/swf_records.h"

namespace ZoFlash {

/// A 2-D affine mapping x' = a·x + b·y + tx, y' = c·x + d·y + ty; identity
/// when constructed. Translations in twips.
class ZoSWFTransformation {
  public:
    ZoSWFTransformation() noexcept = default;

    /// Resets to the pure translation (tx, ty).
    void SetTranslate(double tx, double ty) noexcept;
    /// Follows the current mapping by a translation.
    void AppendTranslate(double tx, double ty) noexcept;
    /// Follows the current mapping by (a b; c d) plus (tx, ty): the new step
    /// is applied to the result of the existing ones.
    void AppendMatrix(double a, double b, double c, double d, double tx, double ty) noexcept;
    void SetIdentity() noexcept { *this = ZoSWFTransformation(); }

    double A() const noexcept { return a_; }
    double B() const noexcept { return b_; }
    double C() const noexcept { return c_; }
    double D() const noexcept { return d_; }
    double Tx() const noexcept { return tx_; }
    double Ty() const noexcept { return ty_; }

    /// The MATRIX record: a is ScaleX, d ScaleY, c RotateSkew0, b
    /// RotateSkew1; rounded to nearest. Throws ZoException when a term is
    /// beyond what the record holds.
    ZoFMatrixRecord ToRecord() const;

  private:
    double a_ = 1, b_ = 0, c_ = 0, d_ = 1, tx_ = 0, ty_ = 0;
};

/// Multiply and add terms per channel (with alpha); identity when
/// constructed.
class ZoSWFColourTransformation {
  public:
    ZoSWFColourTransformation() noexcept = default;

    /// Multiplicative factors, 1.0 leaves a channel unchanged.
    void SetScale(double r, double g, double b, double a) noexcept;
    /// Additive offsets in colour units.
    void SetOffset(double r, double g, double b, double a) noexcept;
    void SetIdentity() noexcept { *this = ZoSWFColourTransformation(); }

    double GetScale(int channel) const noexcept { return scale_[channel]; }
    double GetOffset(int channel) const noexcept { return offset_[channel]; }

    /// CXFORMWITHALPHA: factors written as factor·256, rounded; throws
    /// ZoException when a term does not fit 16 signed bits.
    ZoFCxformRecord ToRecord() const;

  private:
    double scale_[4] = {1, 1, 1, 1};
    double offset_[4] = {0, 0, 0, 0};
};

}  // namespace ZoFlash
