#pragma once
#include "editor/undo_list.h"
#include "editor/update_hint.h"

class TeskFile;

/// The document's undo list. While a transaction is pending, the document's
/// selection hints are held back and delivered just before the transaction's
/// own; after every add, undo and redo the selection is made valid again.
class TeskEditorUndoList : public ZoEditor::ZoUndoList {
  public:
    explicit TeskEditorUndoList(TeskFile& document);
    ~TeskEditorUndoList() override;

    bool Begin(ZoEditor::ZoEditTransaction* transaction) override;
    bool Add(ZoAutoPtr<ZoEditor::ZoEditTransaction>& transaction) override;
    bool Cancel(ZoEditor::ZoEditTransaction* transaction) override;

  protected:
    void OnUndoRedo() override;

  private:
    class SelectionHook;
    void ReleaseSelectionHints();

    TeskFile& document_;
    ZoAutoPtr<SelectionHook> selectionHook_;
    ZoAutoPtr<ZoEditor::ZoUpdateHintList> selectionHints_;
};
