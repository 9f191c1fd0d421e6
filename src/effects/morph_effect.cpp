#include "effects/morph_effect.h"

#include <algorithm>
#include <cassert>

#include "effects/morph_frames.h"
#include "effects/morph_grid_fields.h"
#include "flash/swf_frame.h"
#include "flash/swf_sequence.h"
#include "flash/swf_shape.h"
#include "geometry/edit_grid_triangulation.h"
#include "media/swf_movie.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

namespace {

constexpr int32_t kPointSets = 2;  // the start object's and the end object's
constexpr int32_t kGridCells = 5;
constexpr int32_t kEditGridKind = 1;
// The start mesh lies underneath and is drawn opaque, so it is enlarged to
// close the hairline gaps between its triangles; the end mesh fades in over it.
constexpr double kStartExpand = 20.0;
constexpr int32_t kDeepest = 65535;

ZoAutoPtr<TeskTriangulation> DefaultGrid() {
    auto grid = std::make_unique<TeskEditGridTriangulation>(kPointSets);
    grid->Root().Resize(kGridCells, kGridCells);
    return grid;
}

// The mesh as a grid of the morph's two point sets, or null.
TeskEditGridTriangulation* MorphGrid(const ZoAutoPtr<TeskTriangulation>& mesh) noexcept {
    auto* grid = dynamic_cast<TeskEditGridTriangulation*>(mesh.get());
    return grid && grid->GetPointSetCount() == kPointSets ? grid : nullptr;
}

}  // namespace

TeskMorphEffect::MorphState::MorphState()
    : startObject(std::make_unique<TeskImageObject>("<PreviewImage1>")),
      endObject(std::make_unique<TeskImageObject>("<PreviewImage2>")),
      triangulation(DefaultGrid()) {}

TeskMorphEffect::MorphState::MorphState(const MorphState& other)
    : State(other),
      startObject(TeskCloneObject(other.startObject)),
      endObject(TeskCloneObject(other.endObject)),
      triangulation(other.triangulation->Clone()),
      returnToStart(other.returnToStart),
      returnHoldTime(other.returnHoldTime) {}

ZoAutoPtr<TeskEffect::State> TeskMorphEffect::MorphState::Clone() const {
    return std::make_unique<MorphState>(*this);
}

void TeskMorphEffect::MorphState::VisitFields(TeskFieldVisitor& visitor) {
    State::VisitFields(visitor);
    visitor.Object("startObject", startObject);
    visitor.Object("endObject", endObject);
    visitor.Group("triangulation", [&] {
        if (!MorphGrid(triangulation) && visitor.IsReading())
            triangulation = DefaultGrid();
        if (TeskEditGridTriangulation* grid = MorphGrid(triangulation))
            TeskVisitMorphGrid(visitor, *grid);
    });
    visitor.Field("returnToStart", returnToStart);
    visitor.Field("returnHoldTime", returnHoldTime);
}

TeskMorphEffect::TeskMorphEffect() : TeskMeshEffect(std::make_unique<MorphState>()) {}

const TeskEffectInfo& TeskMorphEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{F53F53C9-1FF2-438F-B955-A27D14CC0C9E}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskMorphEffect>(); },
        119,
        "Morph",
        3,
        "::/html/Effects/MorphEffect.htm",
    };
    return info;
}

const TeskEditGridTriangulation* TeskMorphEffect::GetEditGrid() const noexcept {
    return dynamic_cast<const TeskEditGridTriangulation*>(&GetTriangulation());
}

void TeskMorphEffect::SetStartObject(ZoAutoPtr<TeskObject>& object,
                                     ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskMorphEffect::SetEndObject(ZoAutoPtr<TeskObject>& object,
                                   ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 1, transaction);
}
void TeskMorphEffect::SetTriangulation(ZoAutoPtr<TeskTriangulation>& triangulation,
                                       ZoEditor::ZoEditTransaction* transaction) {
    if (!triangulation)
        return;
    ChangeState<MorphState>(
        [&](MorphState& state) { state.triangulation = std::move(triangulation); }, transaction);
}
void TeskMorphEffect::SetReturnToStart(bool returnToStart,
                                       ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&MorphState::returnToStart, returnToStart, transaction);
}
void TeskMorphEffect::SetReturnHoldTime(int32_t milliseconds,
                                        ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&MorphState::returnHoldTime, milliseconds, transaction);
}

void TeskMorphEffect::Reverse(ZoEditor::ZoEditTransaction* transaction) {
    ChangeState<MorphState>(
        [](MorphState& state) {
            TeskTriangulation& mesh = *state.triangulation;
            if (mesh.GetPointSetCount() >= kPointSets) {
                for (int32_t i = 0; i < mesh.GetPointCount(); ++i) {
                    const TeskPoint2D start = mesh.GetPoint(i, 0);
                    const TeskPoint2D end = mesh.GetPoint(i, 1);
                    mesh.SetPoint(i, 0, end);
                    mesh.SetPoint(i, 1, start);
                }
            }
            std::swap(state.startObject, state.endObject);
        },
        transaction);
}

int32_t TeskMorphEffect::GetEndObjectDepth() const noexcept {
    return kMaskDepth + 2 * GetTriangulation().GetTriangleCount() + 2;
}

void TeskMorphEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    assert(movie.GetScene(0) && "the caller adds the movie's scene first");
    const MorphState& state = GetMorphState();
    const int32_t frameCount = GetFrameCount(movie.GetFrameRate());
    if (frameCount <= 0)
        return;
    const TeskTriangulation& mesh = *state.triangulation;
    const int32_t triangles = mesh.GetTriangleCount();
    if (GetEndObjectDepth() > kDeepest) {
        throw ZoException(ZoFormat("The morph mesh has %d triangles; a movie holds at most %d",
                                   triangles, (kDeepest - kMaskDepth - 2) / 2));
    }
    const ZoRect rect = GetMovieRect(movie.GetWidth(), movie.GetHeight(), ignoreMovieClipOffset);
    const int32_t endSet = std::min(1, mesh.GetPointSetCount() - 1);
    MeshTriangleList start;
    MeshTriangleList end;
    if (state.startObject) {
        BuildMeshTriangles(start, movie, *state.startObject, rect, mesh, 0, kStartExpand, true,
                           kMaskDepth + 1);
    }
    if (state.endObject) {
        BuildMeshTriangles(end, movie, *state.endObject, rect, mesh, endSet, 0.0, false,
                           kMaskDepth + 1 + triangles);
    }
    const ZoAutoInterface2<ZoFlash::ZoSWFObject> endShape =
        state.endObject ? state.endObject->MakeShape(movie, rect) : nullptr;
    const std::vector<TeskMorphTrack> tracks = TeskMorphTracks(mesh, rect, endSet);

    ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    const int32_t first = scene.TotalFrames();
    for (int32_t i = 0; i < frameCount; ++i) {
        ZoFlash::ZoSWFFrame& frame = *scene.AddFrame();
        const TeskMorphStep step = TeskMorphStepAt(i, frameCount, state.returnToStart);
        if (step.ShowsEnd()) {
            if (endShape) {
                frame.PlaceObject(endShape, nullptr, GetEndObjectDepth(),
                                  ZoFlash::ZoSWFTransformation(), 0, -1,
                                  ZoFlash::ZoSWFColourTransformation());
            }
            continue;
        }
        const std::vector<TeskTriangle> corners = TeskMorphCorners(tracks, step);
        for (size_t j = 0; j < start.size(); ++j)
            start[j].corners = corners[j];
        for (size_t j = 0; j < end.size(); ++j) {
            end[j].corners = corners[j];
            end[j].colourTransformation.SetScale(1.0, 1.0, 1.0, step.EndAlpha());
        }
        PlaceMeshTriangles(start, frame, true);
        PlaceMeshTriangles(end, frame, false);
    }

    if (state.returnToStart) {
        const int32_t turn = first + frameCount / 2;
        const int32_t holdFrames = movie.GetFrameRate() * state.returnHoldTime / 1000;
        for (int32_t i = 0; i < holdFrames; ++i)
            scene.InsertFrame(turn + 1)->CopyPlacementsFrom(scene.GetFrame(turn));
    }

    // Warped corners may leave the rectangle; the whole end object never does.
    auto mask = ZoMakeCounted<ZoFlash::ZoSWFShape>();
    mask->SetSolidFill(0x000000, 255);
    mask->Rectangle(rect);
    scene.GetFrame(first)->PlaceObjectPermanent(
        mask, nullptr, kMaskDepth, ZoFlash::ZoSWFTransformation(), kMaskDepth + 2 * triangles, -1,
        ZoFlash::ZoSWFColourTransformation());
}

void TeskMorphEffect::CompileAlone(TeskSWFMovie& movie) {
    if (auto* grid = dynamic_cast<TeskEditGridTriangulation*>(MutableState().triangulation.get()))
        grid->ApplyPreset();
    TeskEffect::CompileAlone(movie);
}

void TeskMorphEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        TeskEffect::Read(file);
        MorphState& state = MutableState();
        ReadObject(file, state.startObject);
        ReadObject(file, state.endObject);
        file.ReadInt32();  // the kind: only editable grids are stored
        if (!dynamic_cast<TeskEditGridTriangulation*>(state.triangulation.get()))
            state.triangulation = DefaultGrid();
        state.triangulation->Read(file);
        if (!MorphGrid(state.triangulation)) {
            ResetState();
            return;
        }
        state.returnToStart = file.ReadBool();
        state.returnHoldTime = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskMorphEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    TeskEffect::Write(file);
    const MorphState& state = GetMorphState();
    WriteObject(file, state.startObject.get());
    WriteObject(file, state.endObject.get());
    file.WriteInt32(kEditGridKind);
    state.triangulation->Write(file);
    file.WriteBool(state.returnToStart);
    file.WriteInt32(state.returnHoldTime);
}

ZoAutoPtr<TeskObject>& TeskMorphEffect::ObjectSlot(State& state, int index) const {
    MorphState& morph = static_cast<MorphState&>(state);
    return index == 1 ? morph.endObject : morph.startObject;
}
