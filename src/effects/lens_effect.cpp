#include "effects/lens_effect.h"

#include "effects/lens_warp.h"
#include "effects/mesh_frames.h"
#include "geometry/triangulation.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

TeskLensEffect::LensState::LensState()
    : object(std::make_unique<TeskImageObject>("<PreviewImage1>")) {}

TeskLensEffect::LensState::LensState(const LensState& other)
    : GridState(other),
      object(TeskCloneObject(other.object)),
      lensRadius(other.lensRadius),
      lensPower(other.lensPower),
      pathAtEnd(other.pathAtEnd),
      pathRepeat(other.pathRepeat),
      path(other.path) {}

ZoAutoPtr<TeskEffect::State> TeskLensEffect::LensState::Clone() const {
    return std::make_unique<LensState>(*this);
}

void TeskLensEffect::LensState::VisitFields(TeskFieldVisitor& visitor) {
    GridState::VisitFields(visitor);
    visitor.Object("object", object);
    visitor.Field("lensRadius", lensRadius);
    visitor.Field("lensPower", lensPower);
    visitor.Field("pathAtEnd", pathAtEnd);
    visitor.Field("pathRepeat", pathRepeat);
    visitor.Group("path", [&] { path.VisitFields(visitor); });
}

TeskLensEffect::TeskLensEffect() : TeskGridEffect(std::make_unique<LensState>()) {}

const TeskEffectInfo& TeskLensEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{67966FDA-EBAE-4867-AC1F-240E78FD4D77}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskLensEffect>(); },
        108,
        "Lens",
        2,
        "::/html/Effects/LensEffect.htm",
    };
    return info;
}

void TeskLensEffect::SetLensObject(ZoAutoPtr<TeskObject>& object,
                                   ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskLensEffect::SetLensRadius(int32_t twips, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&LensState::lensRadius, twips, transaction);
}
void TeskLensEffect::SetLensPower(int32_t power, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&LensState::lensPower, power, transaction);
}
void TeskLensEffect::SetPathAtEnd(int32_t pathAtEnd, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&LensState::pathAtEnd, pathAtEnd, transaction);
}
void TeskLensEffect::SetPathRepeat(int32_t repeat, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&LensState::pathRepeat, repeat, transaction);
}
void TeskLensEffect::SetPath(const TeskAnimationPath& path,
                             ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&LensState::path, path, transaction);
}

TeskMeshEffect::MeshTriangleList TeskLensEffect::BuildMesh(TeskSWFMovie& movie,
                                                           const ZoRect& rect) {
    ZoAutoPtr<TeskTriangulation> triangulation;
    BuildTriangulation(rect, triangulation);
    MeshTriangleList mesh;
    TeskObject* object = GetLensObject();
    if (object && triangulation) {
        BuildMeshTriangles(mesh, movie, *object, rect, *triangulation, 0, GetGridSettings().expand,
                           kDepthBase);
    }
    return mesh;
}

ZoPoint TeskLensEffect::LensCentre(const ZoRect& rect, int32_t frame, int32_t frameCount) const {
    const LensState& state = GetLensState();
    const TeskPoint2D p =
        state.path.Evaluate(TeskLensPathTime(state.pathAtEnd, state.pathRepeat, frame, frameCount));
    return {static_cast<int32_t>(rect.left + rect.Width() * p.x),
            static_cast<int32_t>(rect.top + rect.Height() * p.y)};
}

void TeskLensEffect::MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                              int32_t frameCount) const {
    const TeskLens lens(GetLensRadius(), GetLensPower());
    const ZoPoint centre = LensCentre(rect, frame, frameCount);
    for (MeshTriangle& triangle : mesh) {
        for (size_t k = 0; k < 3; ++k)
            triangle.corners[k] = lens.Apply(triangle.restCorners[k], centre);
    }
}

void TeskLensEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    // Measured once here rather than in every frame; lengths are no setting.
    static_cast<LensState&>(GetState()).path.Prepare();
    TeskCompileMovingMesh(*this, movie, ignoreMovieClipOffset);
}

void TeskLensEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        TeskGridEffect::Read(file);
        LensState& state = static_cast<LensState&>(GetState());
        ReadObject(file, state.object);
        state.lensRadius = file.ReadInt32();
        state.lensPower = file.ReadInt32();
        state.pathAtEnd = file.ReadInt32();
        state.pathRepeat = file.ReadInt32();
        state.path.Read(file);
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskLensEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    TeskGridEffect::Write(file);
    const LensState& state = GetLensState();
    WriteObject(file, state.object.get());
    for (int32_t value : {state.lensRadius, state.lensPower, state.pathAtEnd, state.pathRepeat})
        file.WriteInt32(value);
    state.path.Write(file);
}

ZoAutoPtr<TeskObject>& TeskLensEffect::ObjectSlot(State& state, int) const {
    return static_cast<LensState&>(state).object;
}
