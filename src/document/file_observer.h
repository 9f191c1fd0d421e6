#pragma once
#include "editor/update_hint.h"

class TeskFile;

/// Something that must hear about changes to a document: windows, the
/// preview builder. Attached to at most one document at a time.
class TeskFileObserver : public ZoEditor::ZoEditUpdateTarget {
  public:
    TeskFileObserver() = default;
    TeskFileObserver(const TeskFileObserver&) = delete;
    TeskFileObserver& operator=(const TeskFileObserver&) = delete;
    /// Derived observers detach in their own destructor; detaching here is a
    /// last resort that can no longer reach their OnTeskFileDetach.
    ~TeskFileObserver() override;

    /// Attaches to `file` (leaving any other document first); nothing
    /// happens when already attached to `file`.
    void AttachToFile(TeskFile* file);
    /// Leaves the current document, if any.
    void DetachFromFile();
    TeskFile* GetFile() const noexcept { return file_; }

  protected:
    virtual void OnTeskFileAttach() {}
    virtual void OnTeskFileDetach() {}

  private:
    TeskFile* file_ = nullptr;
};
