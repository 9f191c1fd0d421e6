#include "app/edit_batch.h"

TeskEditBatch::TeskEditBatch(TeskFile& document, std::string_view multiChangeName)
    : document_(document),
      multiChangeName_(multiChangeName),
      transaction_(std::make_unique<TeskFile::Transaction>(multiChangeName)) {
    document_.GetUndoList().Begin(transaction_.get());
}

TeskEditBatch::~TeskEditBatch() {
    if (transaction_)
        document_.GetUndoList().Cancel(transaction_.get());
}

void TeskEditBatch::Note(std::string_view name) {
    ++changes_;
    transaction_->SetName(changes_ == 1 ? name : std::string_view(multiChangeName_));
}

bool TeskEditBatch::Commit() {
    if (changes_ == 0) {
        document_.GetUndoList().Cancel(transaction_.get());
        transaction_.reset();
        return false;
    }
    return document_.GetUndoList().Add(transaction_);
}
