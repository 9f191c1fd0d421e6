#pragma once
// SHAPE: the bit-packed edge list shared by DefineShape3 and DefineFont2
// glyphs. Each record knows its own encoding.
#include <vector>

#include "flash/swf_records.h"
#include "platform/zo_auto_ptr.h"

namespace ZoFlash {

/// One SHAPERECORD.
class ZoFShapeRecord {
  public:
    virtual ~ZoFShapeRecord() = default;
    /// Writes the record with the shape's current fill and line index widths.
    virtual void Write(ZoFBitWriter& bits, int fillBits, int lineBits) const = 0;
};

/// STYLECHANGERECORD. A style index of -1 leaves that style unchanged; with
/// `moveTo` false the pen stays where it is.
class ZoFShapeStyleChangeRecord : public ZoFShapeRecord {
  public:
    ZoFShapeStyleChangeRecord(int fill0, int fill1, int line, bool moveTo, int x, int y);
    void Write(ZoFBitWriter& bits, int fillBits, int lineBits) const override;

  private:
    int fill0_, fill1_, line_;
    bool moveTo_;
    Twips x_, y_;
};

/// STRAIGHTEDGERECORD; deltas must fit 17 signed bits (ZoFShape splits
/// longer lines before making records).
class ZoFShapeStraightEdgeRecord : public ZoFShapeRecord {
  public:
    ZoFShapeStraightEdgeRecord(int dx, int dy);
    void Write(ZoFBitWriter& bits, int fillBits, int lineBits) const override;

  private:
    int dx_, dy_;
};

/// CURVEDEDGERECORD (quadratic; deltas relative to the previous point).
class ZoFShapeCurvedEdgeRecord : public ZoFShapeRecord {
  public:
    ZoFShapeCurvedEdgeRecord(int controlDx, int controlDy, int anchorDx, int anchorDy);
    void Write(ZoFBitWriter& bits, int fillBits, int lineBits) const override;

  private:
    int controlDx_, controlDy_, anchorDx_, anchorDy_;
};

/// ENDSHAPERECORD.
class ZoFShapeEndRecord : public ZoFShapeRecord {
  public:
    ZoFShapeEndRecord() = default;
    void Write(ZoFBitWriter& bits, int fillBits, int lineBits) const override;
};

/// Largest edge delta a straight or curved edge record can hold.
inline constexpr int kZoMaxEdgeDelta = 65535;

/// SHAPE: style index widths plus records. Write() appends the end record.
class ZoFShape {
  public:
    ZoFShape(int fillBits, int lineBits);
    void AddRecord(ZoAutoPtr2<ZoFShapeRecord>& record);
    /// Adds straight edges from the pen by (dx, dy), split into pieces that
    /// fit an edge record.
    void AddLine(int dx, int dy);
    /// Adds a curve, split in halves while any delta is out of range.
    void AddCurve(int controlDx, int controlDy, int anchorDx, int anchorDy);
    void Write(ZoFByteBuffer& out) const;
    int GetFillBits() const noexcept { return fillBits_; }
    int GetLineBits() const noexcept { return lineBits_; }
    bool IsEmpty() const noexcept { return records_.empty(); }

  private:
    int fillBits_, lineBits_;
    std::vector<ZoAutoPtr2<ZoFShapeRecord>> records_;
};

}  // namespace ZoFlash
