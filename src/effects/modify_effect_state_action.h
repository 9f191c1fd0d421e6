#pragma once
#include "editor/edit_action.h"
#include "effects/effect.h"

/// Swaps an effect's state with the held one; being its own inverse, the
/// state not in use always lives in the action.
class TeskModifyEffectStateAction : public ZoEditor::ZoEditAction {
  public:
    TeskModifyEffectStateAction(TeskEffect& effect, ZoAutoPtr<TeskEffect::State> state) noexcept
        : effect_(effect), state_(std::move(state)) {}

  protected:
    bool Do() override;
    bool Undo() override;

  private:
    TeskEffect& effect_;
    ZoAutoPtr<TeskEffect::State> state_;
};
