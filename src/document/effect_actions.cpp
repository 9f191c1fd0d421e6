#include "document/effect_actions.h"

#include "document/file.h"

bool TeskAddEffectAction::Do() {
    document_.InsertEffectAt(effect_, index_);
    return true;
}

bool TeskAddEffectAction::Undo() {
    effect_ = document_.TakeEffectAt(index_);
    return true;
}

bool TeskRemoveEffectAction::Do() {
    effect_ = document_.TakeEffectAt(index_);
    return true;
}

bool TeskRemoveEffectAction::Undo() {
    document_.InsertEffectAt(effect_, index_);
    return true;
}

bool TeskReplaceEffectAction::Do() {
    document_.ExchangeEffectAt(effect_, index_);
    return true;
}

bool TeskReplaceEffectAction::Undo() {
    return Do();
}
