#include "effects/cross_fade_effect.h"

#include <cassert>

#include "flash/swf_frame.h"
#include "flash/swf_sequence.h"
#include "flash/swf_shape.h"
#include "media/swf_movie.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

TeskCrossFadeEffect::CrossFadeState::CrossFadeState()
    : startObject(std::make_unique<TeskImageObject>("<PreviewImage1>")),
      endObject(std::make_unique<TeskImageObject>("<PreviewImage2>")) {}

TeskCrossFadeEffect::CrossFadeState::CrossFadeState(const CrossFadeState& other)
    : State(other),
      startObject(TeskCloneObject(other.startObject)),
      endObject(TeskCloneObject(other.endObject)),
      returnToStart(other.returnToStart),
      returnHold(other.returnHold) {}

ZoAutoPtr<TeskEffect::State> TeskCrossFadeEffect::CrossFadeState::Clone() const {
    return std::make_unique<CrossFadeState>(*this);
}

void TeskCrossFadeEffect::CrossFadeState::VisitFields(TeskFieldVisitor& visitor) {
    State::VisitFields(visitor);
    visitor.Object("startObject", startObject);
    visitor.Object("endObject", endObject);
    visitor.Field("returnToStart", returnToStart);
    visitor.Field("returnHold", returnHold);
}

TeskCrossFadeEffect::TeskCrossFadeEffect() : TeskEffect(std::make_unique<CrossFadeState>()) {}

const TeskEffectInfo& TeskCrossFadeEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{C61852BD-11F7-4250-8F28-CFBB0545D1F1}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskCrossFadeEffect>(); },
        107,
        "Cross Fade",
        1,
        "::/html/Effects/CrossFadeEffect.htm",
    };
    return info;
}

void TeskCrossFadeEffect::SetStartObject(ZoAutoPtr<TeskObject>& object,
                                         ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskCrossFadeEffect::SetEndObject(ZoAutoPtr<TeskObject>& object,
                                       ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 1, transaction);
}
void TeskCrossFadeEffect::SetReturnToStart(bool returnToStart,
                                           ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&CrossFadeState::returnToStart, returnToStart, transaction);
}
void TeskCrossFadeEffect::SetReturnHold(int32_t milliseconds,
                                        ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&CrossFadeState::returnHold, milliseconds, transaction);
}

void TeskCrossFadeEffect::Reverse(ZoEditor::ZoEditTransaction* transaction) {
    ChangeState<CrossFadeState>(
        [](CrossFadeState& state) { std::swap(state.startObject, state.endObject); }, transaction);
}

double TeskCrossFadeAlpha(int32_t frame, int32_t frameCount, bool returnToStart) noexcept {
    int32_t k = frame;
    int32_t d = frameCount - 1;
    if (returnToStart) {
        d = (frameCount - 1) / 2;
        if (k > d)
            k = frameCount - k - 1;
    }
    return d > 0 ? static_cast<double>(k) / d : 0.0;
}

namespace {

using ZoFlash::ZoSWFColourTransformation;
using ZoFlash::ZoSWFObject;
using ZoFlash::ZoSWFTransformation;

void PlaceShape(ZoFlash::ZoSWFFrame& frame, const ZoAutoInterface2<ZoSWFObject>& shape, int depth,
                const ZoSWFColourTransformation& colour) {
    // An empty object slot draws nothing.
    if (shape)
        frame.PlaceObjectPermanent(shape, nullptr, depth, ZoSWFTransformation(), 0, -1, colour);
}

ZoAutoInterface2<ZoSWFObject> MakeShape(TeskObject* object, TeskSWFMovie& movie,
                                        const ZoRect& rect) {
    return object ? object->MakeShape(movie, rect) : nullptr;
}

}  // namespace

void TeskCrossFadeEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    const CrossFadeState& state = GetCrossFadeState();
    const ZoRect rect = GetMovieRect(movie.GetWidth(), movie.GetHeight(), ignoreMovieClipOffset);
    const ZoAutoInterface2<ZoSWFObject> startShape =
        MakeShape(state.startObject.get(), movie, rect);
    const ZoAutoInterface2<ZoSWFObject> endShape = MakeShape(state.endObject.get(), movie, rect);
    const int32_t frameRate = movie.GetFrameRate();
    const int32_t frameCount = GetFrameCount(frameRate);
    assert(movie.GetScene(0) && "the caller adds the movie's scene first");
    ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    const int32_t first = scene.TotalFrames();

    for (int32_t i = 0; i < frameCount; ++i) {
        ZoFlash::ZoSWFFrame& frame = *scene.AddFrame();
        PlaceShape(frame, startShape, kStartDepth, ZoSWFColourTransformation());
        ZoSWFColourTransformation fade;
        fade.SetScale(1.0, 1.0, 1.0, TeskCrossFadeAlpha(i, frameCount, state.returnToStart));
        PlaceShape(frame, endShape, kEndDepth, fade);
    }

    if (!state.returnToStart || frameCount == 0)
        return;
    const int32_t middle = first + frameCount / 2;
    const int32_t holdFrames = state.returnHold * frameRate / 1000;
    for (int32_t i = 0; i < holdFrames; ++i)
        scene.InsertFrame(middle + 1)->CopyPlacementsFrom(scene.GetFrame(middle));
}

void TeskCrossFadeEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        TeskEffect::Read(file);
        CrossFadeState& state = static_cast<CrossFadeState&>(GetState());
        ReadObject(file, state.startObject);
        ReadObject(file, state.endObject);
        state.returnToStart = file.ReadBool();
        state.returnHold = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskCrossFadeEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    TeskEffect::Write(file);
    const CrossFadeState& state = GetCrossFadeState();
    WriteObject(file, state.startObject.get());
    WriteObject(file, state.endObject.get());
    file.WriteBool(state.returnToStart);
    file.WriteInt32(state.returnHold);
}

ZoAutoPtr<TeskObject>& TeskCrossFadeEffect::ObjectSlot(State& state, int index) const {
    CrossFadeState& fade = static_cast<CrossFadeState&>(state);
    return index == 1 ? fade.endObject : fade.startObject;
}
