#pragma once
#include <cstdint>

namespace ZoEditor {

/// One reversible elementary change. Perform and Revert guard against being
/// applied twice in the same direction.
class ZoEditAction {
  public:
    ZoEditAction() = default;
    ZoEditAction(const ZoEditAction&) = delete;
    ZoEditAction& operator=(const ZoEditAction&) = delete;
    virtual ~ZoEditAction() = default;

    /// Applies the change unless it is already done; false when it was done
    /// already or Do failed.
    bool Perform();
    /// Reverses the change if it is done; false when it was not done or Undo failed.
    bool Revert();

    bool IsDone() const noexcept { return done_; }
    /// How many times the change has been applied (first time and redos).
    int32_t GetPerformCount() const noexcept { return performCount_; }

  protected:
    virtual bool Do() = 0;
    virtual bool Undo() = 0;

  private:
    bool done_ = false;
    int32_t performCount_ = 0;
};

}  // namespace ZoEditor
