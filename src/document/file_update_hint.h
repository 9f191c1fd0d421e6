#pragma once
#include <cstdint>

#include "editor/update_hint.h"

class TeskFile;

/// The movie settings or a movie-wide object changed.
class TeskFileUpdateHint : public ZoEditor::ZoUpdateHint {
  public:
    static constexpr int32_t kSettingsChanged = 2;

    TeskFileUpdateHint(TeskFile* document, int32_t kind, int32_t index) noexcept
        : document_(document), kind_(kind), index_(index) {}

    TeskFile* GetDocument() const noexcept { return document_; }
    int32_t GetKind() const noexcept { return kind_; }
    int32_t GetIndex() const noexcept { return index_; }

  private:
    TeskFile* document_;
    int32_t kind_;
    int32_t index_;
};
