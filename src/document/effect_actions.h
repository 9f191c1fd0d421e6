#pragma once
// The document's effect-list actions. Each keeps the effect that is out of
// the document, so undo can put it back and the action deletes it last.
#include "editor/edit_action.h"
#include "effects/effect.h"

class TeskFile;

/// An action on one position of the document's effect list.
class TeskEffectListAction : public ZoEditor::ZoEditAction {
  protected:
    TeskEffectListAction(TeskFile& document, ZoAutoPtr<TeskEffect> effect, int index) noexcept
        : document_(document), effect_(std::move(effect)), index_(index) {}

    TeskFile& document_;
    ZoAutoPtr<TeskEffect> effect_;  // the effect out of the document
    int index_;
};

/// Inserts the held effect at index; undo takes it back out.
class TeskAddEffectAction : public TeskEffectListAction {
  public:
    TeskAddEffectAction(TeskFile& document, ZoAutoPtr<TeskEffect> effect, int index) noexcept
        : TeskEffectListAction(document, std::move(effect), index) {}

  protected:
    bool Do() override;
    bool Undo() override;
};

/// Takes the effect at index out; undo inserts it again.
class TeskRemoveEffectAction : public TeskEffectListAction {
  public:
    TeskRemoveEffectAction(TeskFile& document, int index) noexcept
        : TeskEffectListAction(document, nullptr, index) {}

  protected:
    bool Do() override;
    bool Undo() override;
};

/// Exchanges the effect at index with the held one, both ways.
class TeskReplaceEffectAction : public TeskEffectListAction {
  public:
    TeskReplaceEffectAction(TeskFile& document, ZoAutoPtr<TeskEffect> effect, int index) noexcept
        : TeskEffectListAction(document, std::move(effect), index) {}

  protected:
    bool Do() override;
    bool Undo() override;
};
