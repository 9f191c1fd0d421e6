#pragma once
#include "document/file.h"
#include "editor/edit_action.h"

/// Swaps the document's state with the held one, both ways.
class TeskModifyFileStateAction : public ZoEditor::ZoEditAction {
  public:
    TeskModifyFileStateAction(TeskFile& document, ZoAutoPtr<TeskFile::State> state) noexcept
        : document_(document), state_(std::move(state)) {}

  protected:
    bool Do() override;
    bool Undo() override;

  private:
    TeskFile& document_;
    ZoAutoPtr<TeskFile::State> state_;
};
