#include "document/file.h"

#include <algorithm>
#include <cassert>

#include "document/effect_actions.h"
#include "document/file_observer.h"
#include "document/file_update_hint.h"
#include "document/modify_file_state_action.h"
#include "effects/effect_update_hint.h"
#include "effects/wave_effect.h"
#include "objects/field_visitor.h"
#include "objects/object.h"

TeskFile::RealState::RealState(const RealState& other)
    : State(other),
      width(other.width),
      height(other.height),
      frameRate(other.frameRate),
      backgroundColour(other.backgroundColour),
      resizeMode(other.resizeMode),
      disableRightClick(other.disableRightClick),
      clipToMovieSize(other.clipToMovieSize),
      publishSettings(other.publishSettings),
      foregroundObject(TeskCloneObject(other.foregroundObject)),
      backgroundObject(TeskCloneObject(other.backgroundObject)),
      linkEnabled(other.linkEnabled),
      linkURL(other.linkURL),
      linkTarget(other.linkTarget) {}

void TeskFile::RealState::VisitFields(TeskFieldVisitor& visitor) {
    visitor.Field("width", width);
    visitor.Field("height", height);
    visitor.Field("frameRate", frameRate);
    visitor.Colour("backgroundColour", backgroundColour);
    visitor.Field("resizeMode", resizeMode);
    visitor.Field("disableRightClick", disableRightClick);
    visitor.Field("clipToMovieSize", clipToMovieSize);
    visitor.Group("publishSettings", [&] { publishSettings.VisitFields(visitor); });
    visitor.Object("foregroundObject", foregroundObject);
    visitor.Object("backgroundObject", backgroundObject);
    visitor.Field("linkEnabled", linkEnabled);
    visitor.Field("linkURL", linkURL);
    visitor.Field("linkTarget", linkTarget);
}

TeskFile::TeskFile() : state_(std::make_unique<RealState>()), undoList_(*this) {
    ZoAutoPtr<TeskEffect> wave = std::make_unique<TeskWaveEffect>();
    InsertEffect(wave, 0, nullptr);
}

TeskFile::~TeskFile() {
    DetachObservers();
}

// Effects

TeskEffect* TeskFile::GetEffect(int index) const {
    assert(index >= 0 && index < GetEffectCount());
    return effects_[static_cast<size_t>(index)].get();
}

int TeskFile::GetEffectIndex(const TeskEffect* effect) const noexcept {
    for (size_t i = 0; i < effects_.size(); ++i) {
        if (effects_[i].get() == effect)
            return static_cast<int>(i);
    }
    return -1;
}

int TeskFile::GetSelectedEffectIndex() const noexcept {
    return selection_.GetCount() > 0 ? GetEffectIndex(selection_.GetItem(0)) : -1;
}

void TeskFile::InsertEffectAt(ZoAutoPtr<TeskEffect>& effect, int index) {
    assert(effect && index >= 0 && index <= GetEffectCount());
    effect->SetFile(this);
    effects_.insert(effects_.begin() + index, std::move(effect));
}

ZoAutoPtr<TeskEffect> TeskFile::TakeEffectAt(int index) {
    assert(index >= 0 && index < GetEffectCount());
    ZoAutoPtr<TeskEffect> effect = std::move(effects_[static_cast<size_t>(index)]);
    effects_.erase(effects_.begin() + index);
    return effect;
}

void TeskFile::ExchangeEffectAt(ZoAutoPtr<TeskEffect>& effect, int index) {
    assert(effect && index >= 0 && index < GetEffectCount());
    effect->SetFile(this);
    std::swap(effects_[static_cast<size_t>(index)], effect);
}

void TeskFile::QueueHint(ZoAutoPtr<ZoEditor::ZoUpdateHint> hint, Transaction& transaction) {
    NotifyObservers(*hint);
    transaction.AddHint(hint);
}

void TeskFile::RecordEffectChange(ZoAutoPtr<ZoEditor::ZoEditAction> action, TeskEffect* effect,
                                  uint32_t kind, int index, Transaction& transaction) {
    transaction.AddAction(action);
    QueueHint(std::make_unique<TeskEffectUpdateHint>(effect, kind, index), transaction);
}

void TeskFile::InsertEffect(ZoAutoPtr<TeskEffect>& effect, int index, Transaction* transaction) {
    if (!transaction) {
        InsertEffectAt(effect, index);
        ValidateSelection();
        return;
    }
    TeskEffect* inserted = effect.get();
    RecordEffectChange(std::make_unique<TeskAddEffectAction>(*this, std::move(effect), index),
                       inserted, kTeskEffectInserted, index, *transaction);
}

void TeskFile::RemoveEffect(int index, Transaction* transaction) {
    if (!transaction) {
        // Kept alive until the selection has let go of it.
        ZoAutoPtr<TeskEffect> removed;
        TakeEffect(removed, index);
        return;
    }
    RecordEffectChange(std::make_unique<TeskRemoveEffectAction>(*this, index), GetEffect(index),
                       kTeskEffectRemoved, index, *transaction);
}

void TeskFile::TakeEffect(ZoAutoPtr<TeskEffect>& out, int index) {
    out = TakeEffectAt(index);
    ValidateSelection();
}

void TeskFile::ReplaceEffect(ZoAutoPtr<TeskEffect>& effect, int index, Transaction* transaction) {
    if (!transaction) {
        ExchangeEffectAt(effect, index);
        ValidateSelection();
        return;
    }
    TeskEffect* replacement = effect.get();
    RecordEffectChange(std::make_unique<TeskReplaceEffectAction>(*this, std::move(effect), index),
                       replacement, kTeskEffectReplaced, index, *transaction);
}

void TeskFile::ValidateSelection() {
    if (selection_.GetCount() > 0 && GetEffectIndex(selection_.GetItem(0)) >= 0)
        return;
    if (selection_.GetCount() == 0 && effects_.empty())
        return;
    ZoEditor::ZoUpdateHintList hints;
    ZoEditor::ZoUpdateHintList* held = selection_.GetHintList();
    selection_.SetHintList(&hints);
    selection_.Clear();
    if (!effects_.empty())
        selection_.Select(effects_.front().get(), false);
    selection_.SetHintList(held);
    hints.Deliver(false);
}

// Movie settings

void TeskFile::ChangeState(const std::function<void(RealState&)>& change,
                           Transaction* transaction) {
    if (!transaction) {
        change(*state_);
        return;
    }
    auto copy = std::make_unique<RealState>(*state_);
    change(*copy);
    ZoAutoPtr<State> newState = std::move(copy);
    ApplyState(newState, transaction);
}

void TeskFile::SetWidth(int32_t pixels, Transaction* transaction) {
    SetStateField(&RealState::width, pixels, transaction);
}
void TeskFile::SetHeight(int32_t pixels, Transaction* transaction) {
    SetStateField(&RealState::height, pixels, transaction);
}
void TeskFile::SetFrameRate(int32_t framesPerSecond, Transaction* transaction) {
    SetStateField(&RealState::frameRate, framesPerSecond, transaction);
}
void TeskFile::SetBackgroundColour(COLORREF colour, Transaction* transaction) {
    SetStateField(&RealState::backgroundColour, colour, transaction);
}
void TeskFile::SetResizeMode(int32_t mode, Transaction* transaction) {
    SetStateField(&RealState::resizeMode, mode, transaction);
}
void TeskFile::SetDisableRightClick(bool disable, Transaction* transaction) {
    SetStateField(&RealState::disableRightClick, disable, transaction);
}
void TeskFile::SetClipToMovieSize(bool clip, Transaction* transaction) {
    SetStateField(&RealState::clipToMovieSize, clip, transaction);
}
void TeskFile::SetForegroundObject(ZoAutoPtr<TeskObject>& object, Transaction* transaction) {
    ChangeState([&](RealState& state) { state.foregroundObject = std::move(object); }, transaction);
}
void TeskFile::SetBackgroundObject(ZoAutoPtr<TeskObject>& object, Transaction* transaction) {
    ChangeState([&](RealState& state) { state.backgroundObject = std::move(object); }, transaction);
}
void TeskFile::SetLinkEnabled(bool enabled, Transaction* transaction) {
    SetStateField(&RealState::linkEnabled, enabled, transaction);
}
void TeskFile::SetLinkURL(const ZoString& url, Transaction* transaction) {
    SetStateField(&RealState::linkURL, url, transaction);
}
void TeskFile::SetLinkTarget(const ZoString& target, Transaction* transaction) {
    SetStateField(&RealState::linkTarget, target, transaction);
}

void TeskFile::ApplyState(ZoAutoPtr<State>& newState, Transaction* transaction) {
    if (!transaction) {
        SwapState(newState);
        return;
    }
    ZoAutoPtr<ZoEditor::ZoEditAction> action =
        std::make_unique<TeskModifyFileStateAction>(*this, std::move(newState));
    transaction->AddAction(action);
    QueueHint(std::make_unique<TeskFileUpdateHint>(this, TeskFileUpdateHint::kSettingsChanged, -1),
              *transaction);
}

void TeskFile::SwapState(ZoAutoPtr<State>& other) {
    if (!dynamic_cast<RealState*>(other.get()))
        return;
    ZoAutoPtr<State> mine = std::move(state_);
    state_.reset(static_cast<RealState*>(other.release()));
    other = std::move(mine);
}

// Whole document

void TeskFile::New() {
    const std::vector<TeskFileObserver*> observers = DetachObservers();
    // Let go of the old effects before they are deleted.
    selection_.Clear();
    effects_.clear();
    undoList_.Clear();
    ZoAutoPtr<TeskEffect> wave = std::make_unique<TeskWaveEffect>();
    InsertEffectAt(wave, 0);
    // A new document starts from the defaults, link settings included.
    state_ = std::make_unique<RealState>();
    filename_.clear();
    selection_.Select(effects_.front().get(), false);
    AttachObservers(observers);
}

bool TeskFile::FitToObject() {
    ZoSize largest;
    for (const ZoAutoPtr<TeskEffect>& effect : effects_) {
        for (int i = 0; i < effect->GetObjectCount(); ++i) {
            const TeskObject* object = effect->GetObject(i);
            ZoSize size;
            if (object && object->GetNaturalSize(size)) {
                largest.cx = std::max(largest.cx, size.cx);
                largest.cy = std::max(largest.cy, size.cy);
            }
        }
    }
    if (largest.cx <= 0 || largest.cy <= 0)
        return false;
    auto transaction = std::make_unique<Transaction>("Fit To Object");
    undoList_.Begin(transaction.get());
    SetWidth(largest.cx, transaction.get());
    SetHeight(largest.cy, transaction.get());
    return undoList_.Add(transaction);
}

// Observers

void TeskFile::NotifyObservers(ZoEditor::ZoUpdateHint& hint) {
    for (TeskFileObserver* observer : observers_)
        hint.AddTarget(observer);
}

void TeskFile::AddObserver(TeskFileObserver* observer) {
    if (std::find(observers_.begin(), observers_.end(), observer) == observers_.end())
        observers_.push_back(observer);
}

void TeskFile::RemoveObserver(TeskFileObserver* observer) {
    observers_.erase(std::remove(observers_.begin(), observers_.end(), observer), observers_.end());
}

std::vector<TeskFileObserver*> TeskFile::DetachObservers() {
    std::vector<TeskFileObserver*> detached = observers_;
    for (TeskFileObserver* observer : detached)
        observer->DetachFromFile();
    return detached;
}

void TeskFile::AttachObservers(const std::vector<TeskFileObserver*>& observers) {
    // Attaching one observer may destroy another: a window closes the page
    // of an effect that went with the old document. Those are skipped.
    std::vector<std::weak_ptr<const void>> lifetimes;
    lifetimes.reserve(observers.size());
    for (TeskFileObserver* observer : observers)
        lifetimes.push_back(observer->GetLifetime());
    for (size_t i = 0; i < observers.size(); ++i) {
        if (!lifetimes[i].expired())
            observers[i]->AttachToFile(this);
    }
}
