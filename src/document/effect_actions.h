#pragma once
// The document's effect-list actions. Each keeps the effect that is out of
// the document, so undo can put it back and the action deletes it last.
#include "editor/edit_action.h"
#include "effects/effect.h"

class TeskFile;

/// Inserts the held effect at index; undo takes it back out.
class TeskAddEffectAction : public ZoEditor::ZoEditAction {
  public:
    TeskAddEffectAction(TeskFile& document, ZoAutoPtr<TeskEffect> effect, int index) noexcept
        : document_(document), effect_(std::move(effect)), index_(index) {}

  protected:
    bool Do() override;
    bool Undo() override;

  private:
    TeskFile& document_;
    ZoAutoPtr<TeskEffect> effect_;
    int index_;
};

/// Takes the effect at index out; undo inserts it again.
class TeskRemoveEffectAction : public ZoEditor::ZoEditAction {
  public:
    TeskRemoveEffectAction(TeskFile& document, int index) noexcept
        : document_(document), index_(index) {}
    /// The removed effect while the action is done.
    TeskEffect* GetEffect() const noexcept { return effect_.get(); }

  protected:
    bool Do() override;
    bool Undo() override;

  private:
    TeskFile& document_;
    ZoAutoPtr<TeskEffect> effect_;
    int index_;
};

/// Exchanges the effect at index with the held one, both ways.
class TeskReplaceEffectAction : public ZoEditor::ZoEditAction {
  public:
    TeskReplaceEffectAction(TeskFile& document, ZoAutoPtr<TeskEffect> effect, int index) noexcept
        : document_(document), effect_(std::move(effect)), index_(index) {}

  protected:
    bool Do() override;
    bool Undo() override;

  private:
    TeskFile& document_;
    ZoAutoPtr<TeskEffect> effect_;
    int index_;
};
