#pragma once
#include <vector>

#include "flash/action_records.h"
#include "flash/swf_entity.h"
#include "flash/swf_transformation.h"

namespace ZoFlash {

/// Button state bits of a button record.
inline constexpr int kZoButtonUp = 1;
inline constexpr int kZoButtonOver = 2;
inline constexpr int kZoButtonDown = 4;
inline constexpr int kZoButtonHitTest = 8;
/// BUTTONCONDACTION condition: mouse released over the button.
inline constexpr unsigned kZoButtonOverDownToOverUp = 8;

/// A button, written as DefineButton2.
class ZoSWFButton : public ZoSWFObject {
  public:
    ZoSWFButton();
    ~ZoSWFButton() override;

    /// A button record showing `object` in the `states` given (bit set of
    /// kZoButtonUp .. kZoButtonHitTest).
    void AddObject(int states, ZoAutoInterface2<ZoSWFObject> object, int depth,
                   const ZoSWFTransformation& matrix, const ZoSWFColourTransformation& colour);
    /// Adds a condition with the given bits; returns its index.
    int AddActionRecord(unsigned int conditions);
    /// The action list of condition `index`.
    ZoFActionList& GetActionList(int index);

    void InitialiseForRewriting() override;

  protected:
    void Write(ZoSWFFile& file) override;

  private:
    struct Record {
        int states;
        ZoAutoInterface2<ZoSWFObject> object;
        uint16_t depth;
        ZoFMatrixRecord matrix;
        ZoFCxformRecord cxform;
    };
    struct Condition {
        uint16_t conditions;
        ZoFActionList actions;
    };
    std::vector<Record> records_;
    std::vector<std::unique_ptr<Condition>> conditions_;
};

}  // namespace ZoFlash
