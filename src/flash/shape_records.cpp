#include "flash/shape_records.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

// Edge records store NumBits - 2 in four bits: at least 2 bits, at most 17.
int EdgeBits(std::initializer_list<int> deltas) {
    int bits = 2;
    for (int d : deltas) {
        if (std::abs(d) > kZoMaxEdgeDelta)
            throw ZoException("A shape edge is longer than an edge record can hold.");
        bits = std::max(bits, ZoSignedBits(d));
    }
    return bits;
}

bool Fits(int d) noexcept {
    return std::abs(d) <= kZoMaxEdgeDelta;
}

}  // namespace

ZoFShapeStyleChangeRecord::ZoFShapeStyleChangeRecord(int fill0, int fill1, int line, bool moveTo,
                                                     int x, int y)
    : fill0_(fill0),
      fill1_(fill1),
      line_(line),
      moveTo_(moveTo),
      x_(ZoCheckedTwips(x)),
      y_(ZoCheckedTwips(y)) {}

void ZoFShapeStyleChangeRecord::Write(ZoFBitWriter& bits, int fillBits, int lineBits) const {
    bits.PutFlag(false);  // not an edge
    bits.PutFlag(false);  // no new styles
    bits.PutFlag(line_ >= 0);
    bits.PutFlag(fill1_ >= 0);
    bits.PutFlag(fill0_ >= 0);
    bits.PutFlag(moveTo_);
    if (moveTo_) {
        const int n = std::max(ZoSignedBits(x_.value), ZoSignedBits(y_.value));
        bits.PutUnsigned(n, 5);
        bits.PutSigned(x_.value, n);
        bits.PutSigned(y_.value, n);
    }
    if (fill0_ >= 0)
        bits.PutUnsigned(fill0_, fillBits);
    if (fill1_ >= 0)
        bits.PutUnsigned(fill1_, fillBits);
    if (line_ >= 0)
        bits.PutUnsigned(line_, lineBits);
}

ZoFShapeStraightEdgeRecord::ZoFShapeStraightEdgeRecord(int dx, int dy) : dx_(dx), dy_(dy) {
    EdgeBits({dx, dy});
}

void ZoFShapeStraightEdgeRecord::Write(ZoFBitWriter& bits, int, int) const {
    const int n = EdgeBits({dx_, dy_});
    bits.PutFlag(true);  // edge
    bits.PutFlag(true);  // straight
    bits.PutUnsigned(n - 2, 4);
    const bool general = dx_ != 0 && dy_ != 0;
    bits.PutFlag(general);
    if (general) {
        bits.PutSigned(dx_, n);
        bits.PutSigned(dy_, n);
        return;
    }
    const bool vertical = dx_ == 0;
    bits.PutFlag(vertical);
    bits.PutSigned(vertical ? dy_ : dx_, n);
}

ZoFShapeCurvedEdgeRecord::ZoFShapeCurvedEdgeRecord(int controlDx, int controlDy, int anchorDx,
                                                   int anchorDy)
    : controlDx_(controlDx), controlDy_(controlDy), anchorDx_(anchorDx), anchorDy_(anchorDy) {
    EdgeBits({controlDx, controlDy, anchorDx, anchorDy});
}

void ZoFShapeCurvedEdgeRecord::Write(ZoFBitWriter& bits, int, int) const {
    const int n = EdgeBits({controlDx_, controlDy_, anchorDx_, anchorDy_});
    bits.PutFlag(true);   // edge
    bits.PutFlag(false);  // curved
    bits.PutUnsigned(n - 2, 4);
    bits.PutSigned(controlDx_, n);
    bits.PutSigned(controlDy_, n);
    bits.PutSigned(anchorDx_, n);
    bits.PutSigned(anchorDy_, n);
}

void ZoFShapeEndRecord::Write(ZoFBitWriter& bits, int, int) const {
    bits.PutUnsigned(0, 6);
}

ZoFShape::ZoFShape(int fillBits, int lineBits) : fillBits_(fillBits), lineBits_(lineBits) {
    if (fillBits < 0 || fillBits > 15 || lineBits < 0 || lineBits > 15)
        throw ZoException("A shape has too many fill or line styles.");
}

void ZoFShape::AddRecord(ZoAutoPtr2<ZoFShapeRecord>& record) {
    records_.push_back(std::move(record));
}

void ZoFShape::AddLine(int dx, int dy) {
    // Equal pieces, so the sum is exact and every piece fits.
    const long long longest = std::max(std::llabs(dx), std::llabs(dy));
    const int pieces = static_cast<int>((longest + kZoMaxEdgeDelta - 1) / kZoMaxEdgeDelta);
    int doneX = 0, doneY = 0;
    for (int i = 1; i <= std::max(pieces, 1); ++i) {
        const int x = static_cast<int>(static_cast<long long>(dx) * i / std::max(pieces, 1));
        const int y = static_cast<int>(static_cast<long long>(dy) * i / std::max(pieces, 1));
        records_.push_back(std::make_unique<ZoFShapeStraightEdgeRecord>(x - doneX, y - doneY));
        doneX = x;
        doneY = y;
    }
}

void ZoFShape::AddCurve(int controlDx, int controlDy, int anchorDx, int anchorDy) {
    if (Fits(controlDx) && Fits(controlDy) && Fits(anchorDx) && Fits(anchorDy)) {
        records_.push_back(
            std::make_unique<ZoFShapeCurvedEdgeRecord>(controlDx, controlDy, anchorDx, anchorDy));
        return;
    }
    // De Casteljau at t = 1/2 in absolute coordinates relative to the start;
    // the midpoint is rounded, the halves stay within a twip of the curve.
    const long long cx = controlDx, cy = controlDy;
    const long long ax = cx + anchorDx, ay = cy + anchorDy;
    const long long q0x = cx / 2, q0y = cy / 2;
    const long long q1x = (cx + ax) / 2, q1y = (cy + ay) / 2;
    const long long mx = (q0x + q1x) / 2, my = (q0y + q1y) / 2;
    AddCurve(static_cast<int>(q0x), static_cast<int>(q0y), static_cast<int>(mx - q0x),
             static_cast<int>(my - q0y));
    AddCurve(static_cast<int>(q1x - mx), static_cast<int>(q1y - my), static_cast<int>(ax - q1x),
             static_cast<int>(ay - q1y));
}

void ZoFShape::Write(ZoFByteBuffer& out) const {
    ZoFBitWriter bits(out);
    bits.PutUnsigned(fillBits_, 4);
    bits.PutUnsigned(lineBits_, 4);
    for (const auto& record : records_)
        record->Write(bits, fillBits_, lineBits_);
    ZoFShapeEndRecord().Write(bits, fillBits_, lineBits_);
}

}  // namespace ZoFlash
