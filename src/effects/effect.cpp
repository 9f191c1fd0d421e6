#include "effects/effect.h"

#include <cassert>
#include <typeinfo>

#include "editor/edit_transaction.h"
#include "effects/effect_update_hint.h"
#include "effects/modify_effect_state_action.h"
#include "effects/record_fallback.h"
#include "media/swf_movie.h"
#include "objects/field_visitor.h"
#include "objects/object.h"
#include "platform/folder_file.h"
#include "platform/zo_units.h"

ZoAutoPtr<TeskObject> TeskCloneObject(const ZoAutoPtr<TeskObject>& object) {
    return object ? object->Clone() : nullptr;
}

void TeskEffect::State::VisitFields(TeskFieldVisitor& visitor) {
    visitor.Group("reservedBlock", [&] {
        visitor.Field("reservedFlags", reservedBlock.reservedFlags);
        visitor.Field("reservedRect", reservedBlock.reservedRect);
    });
    visitor.Group("timing", [&] {
        visitor.Field("timingReserved", timing.timingReserved);
        visitor.Field("startTime", timing.startTime);
        visitor.Field("endTime", timing.endTime);
        visitor.Field("startHold", timing.startHold);
        visitor.Field("finishHold", timing.finishHold);
    });
}

TeskEffect::TeskEffect(ZoAutoPtr<State> state) : state_(std::move(state)) {
    assert(state_);
}

TeskEffect::~TeskEffect() = default;

void TeskEffect::Clone(ZoAutoPtr<TeskEffect>& out) const {
    out = GetInfo().factory();
    ZoAutoPtr<State> copy = state_->Clone();
    out->SwapState(copy);
    out->SetFile(file_);
}

void TeskEffect::CompileAlone(TeskSWFMovie& movie) {
    movie.AddScene();
    Compile(movie, true);
}

namespace {

TeskEffect::ReservedBlock ReadReservedBlock(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, true);
    TeskEffect::ReservedBlock block;
    block.reservedFlags = file.ReadUInt32();
    block.reservedRect.left = file.ReadInt32();
    block.reservedRect.top = file.ReadInt32();
    block.reservedRect.right = file.ReadInt32();
    block.reservedRect.bottom = file.ReadInt32();
    return block;
}

void ReadTiming(ZoFolderFile& file, TeskEffect::Timing& timing) {
    ZoFolderGuard folder(file, false, true);
    timing.timingReserved = file.ReadInt32();
    timing.startTime = file.ReadInt32();
    timing.endTime = file.ReadInt32();
    // Older files end here.
    timing.startHold = TeskReadOr(0, [&] { return file.ReadInt32(); });
    timing.finishHold = TeskReadOr(0, [&] { return file.ReadInt32(); });
}

}  // namespace

void TeskEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard common(file, false, false);
    state_->reservedBlock = TeskReadOr(ReservedBlock{}, [&] { return ReadReservedBlock(file); });
    ReadTiming(file, state_->timing);
}

void TeskEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard common(file, true);
    {
        ZoFolderGuard reserved(file, true);
        const ReservedBlock& block = state_->reservedBlock;
        file.WriteUInt32(block.reservedFlags);
        file.WriteInt32(block.reservedRect.left);
        file.WriteInt32(block.reservedRect.top);
        file.WriteInt32(block.reservedRect.right);
        file.WriteInt32(block.reservedRect.bottom);
    }
    ZoFolderGuard timing(file, true);
    const Timing& t = state_->timing;
    for (int32_t value : {t.timingReserved, t.startTime, t.endTime, t.startHold, t.finishHold})
        file.WriteInt32(value);
}

void TeskEffect::SwapState(ZoAutoPtr<State>& other) {
    if (!other)
        return;
    // Bound to references first: typeid on a dereference reads as a side effect.
    const State& incoming = *other;
    const State& current = *state_;
    if (typeid(incoming) == typeid(current))
        std::swap(state_, other);
}

void TeskEffect::CopyFrom(const TeskEffect& other) {
    state_->reservedBlock = other.state_->reservedBlock;
    state_->timing = other.state_->timing;
    const int shared = std::min(GetObjectCount(), other.GetObjectCount());
    for (int i = 0; i < shared; ++i) {
        ZoAutoPtr<TeskObject> copy = TeskCloneObject(other.ObjectSlot(*other.state_, i));
        SetObject(copy, i);
    }
}

TeskObject* TeskEffect::GetObject(int index) const {
    return ObjectSlot(*state_, index).get();
}

void TeskEffect::SetObject(ZoAutoPtr<TeskObject>& object, int index) {
    ObjectSlot(*state_, index) = std::move(object);
}

void TeskEffect::SetObject(ZoAutoPtr<TeskObject>& object, int index,
                           ZoEditor::ZoEditTransaction* transaction) {
    ChangeState<State>([&](State& state) { ObjectSlot(state, index) = std::move(object); },
                       transaction);
}

void TeskEffect::SetReservedBlock(const ReservedBlock& block,
                                  ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&State::reservedBlock, block, transaction);
}

void TeskEffect::SetTiming(const Timing& timing, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&State::timing, timing, transaction);
}

void TeskEffect::SetEffectTime(int32_t length, ZoEditor::ZoEditTransaction* transaction) {
    ChangeState<State>(
        [&](State& state) {
            state.timing.startTime = 0;
            state.timing.endTime = length;
        },
        transaction);
}

int32_t TeskEffect::GetFrameCount(int32_t frameRate) const noexcept {
    return ZoEffectFrames(ZoMilliseconds(state_->timing.GetLength()), frameRate);
}

void TeskEffect::ModifyState(ZoAutoPtr<State>& newState, ZoEditor::ZoEditTransaction* transaction) {
    if (!transaction) {
        SwapState(newState);
        return;
    }
    ZoAutoPtr<ZoEditor::ZoEditAction> action =
        std::make_unique<TeskModifyEffectStateAction>(*this, std::move(newState));
    transaction->AddAction(action);
    ZoAutoPtr<ZoEditor::ZoUpdateHint> hint =
        std::make_unique<TeskEffectUpdateHint>(this, kTeskEffectChanged, -1);
    if (file_)
        file_->NotifyObservers(*hint);
    transaction->AddHint(hint);
}

ZoRect TeskEffect::GetMovieRect(int32_t widthPixels, int32_t heightPixels,
                                bool ignoreMovieClipOffset) const {
    const int32_t width = ZoPixelsToTwips(widthPixels);
    const int32_t height = ZoPixelsToTwips(heightPixels);
    ZoRect rect{0, 0, width, height};
    if (!ignoreMovieClipOffset && file_ && file_->GetOffsetForMovieClip())
        rect.Offset(-(width / 2), -(height / 2));
    return rect;
}

void TeskEffect::ResetState() {
    ZoAutoPtr<State> defaults = std::move(GetInfo().factory()->state_);
    std::swap(state_, defaults);
}
