#pragma once
// What the fixed grids share: one point set, nothing to edit, no lines, and a
// record of a few 32-bit integers.
#include <initializer_list>

#include "geometry/triangulation.h"

/// Base of the triangulations whose triangles follow from a few integers.
class TeskFixedTriangulation : public TeskTriangulation {
  public:
    int32_t GetPointSetCount() const override { return 1; }
    int32_t GetPointCount() const override { return 0; }
    /// The shared origin: a fixed grid has no points of its own.
    const TeskPoint2D& GetPoint(int32_t index, int32_t set) const override;
    void SetPoint(int32_t, int32_t, const TeskPoint2D&) override {}
    bool MovePoint(int32_t, int32_t, TeskPoint2D&) override { return false; }
    int32_t GetLineCount() const override { return 0; }
    void GetLine(int32_t, int32_t, TeskPoint2D&, TeskPoint2D&) const override {}

  protected:
    /// One stored integer and the value it takes when it cannot be read.
    struct Field {
        int32_t* value;
        int32_t fallback;
    };
    /// Reads `fields` in order from the next unnamed folder. A field the
    /// folder is too short for, and every one after it, takes its fallback;
    /// a record that cannot be read at all leaves every field at its fallback.
    static void ReadFields(ZoFolderFile& file, std::initializer_list<Field> fields) noexcept;
    /// A count read from a file, brought within `minimum` and a bound that
    /// keeps the triangle count of a damaged record within 32 bits.
    static int32_t BoundedCount(int32_t value, int32_t minimum) noexcept;
    /// Writes `values` in order into a new unnamed folder.
    static void WriteFields(ZoFolderFile& file, std::initializer_list<int32_t> values);
};
