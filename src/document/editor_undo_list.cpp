#include "document/editor_undo_list.h"

#include "document/file.h"

/// Routes the document selection's hints into a list while it exists.
class TeskEditorUndoList::SelectionHook {
  public:
    SelectionHook(ZoEditor::ZoSelection<TeskEffect>& selection, ZoEditor::ZoUpdateHintList& hints)
        : selection_(selection) {
        selection_.SetHintList(&hints);
    }
    ~SelectionHook() { selection_.SetHintList(nullptr); }

  private:
    ZoEditor::ZoSelection<TeskEffect>& selection_;
};

TeskEditorUndoList::TeskEditorUndoList(TeskFile& document) : document_(document) {}

TeskEditorUndoList::~TeskEditorUndoList() = default;

bool TeskEditorUndoList::Begin(ZoEditor::ZoEditTransaction* transaction) {
    selectionHook_.reset();
    selectionHints_ = std::make_unique<ZoEditor::ZoUpdateHintList>();
    selectionHook_ = std::make_unique<SelectionHook>(document_.GetSelection(), *selectionHints_);
    return ZoUndoList::Begin(transaction);
}

bool TeskEditorUndoList::Add(ZoAutoPtr<ZoEditor::ZoEditTransaction>& transaction) {
    ReleaseSelectionHints();
    return ZoUndoList::Add(transaction);
}

bool TeskEditorUndoList::Cancel(ZoEditor::ZoEditTransaction* transaction) {
    ReleaseSelectionHints();
    return ZoUndoList::Cancel(transaction);
}

void TeskEditorUndoList::OnUndoRedo() {
    document_.ValidateSelection();
}

void TeskEditorUndoList::ReleaseSelectionHints() {
    selectionHook_.reset();
    if (!selectionHints_)
        return;
    ZoAutoPtr<ZoEditor::ZoUpdateHintList> hints = std::move(selectionHints_);
    hints->Deliver(false);
}
