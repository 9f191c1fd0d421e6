#include "effects/spiral_effect.h"

#include "effects/mesh_frames.h"
#include "effects/spiral_motion.h"
#include "geometry/triangulation.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

TeskSpiralEffect::SpiralState::SpiralState()
    : object(std::make_unique<TeskImageObject>("<PreviewImage1>")) {}

TeskSpiralEffect::SpiralState::SpiralState(const SpiralState& other)
    : GridState(other),
      object(TeskCloneObject(other.object)),
      spiralStyle(other.spiralStyle),
      spiralSpeed(other.spiralSpeed) {}

ZoAutoPtr<TeskEffect::State> TeskSpiralEffect::SpiralState::Clone() const {
    return std::make_unique<SpiralState>(*this);
}

void TeskSpiralEffect::SpiralState::VisitFields(TeskFieldVisitor& visitor) {
    GridState::VisitFields(visitor);
    visitor.Object("object", object);
    visitor.Field("spiralStyle", spiralStyle);
    visitor.Field("spiralSpeed", spiralSpeed);
}

TeskSpiralEffect::TeskSpiralEffect() : TeskGridEffect(std::make_unique<SpiralState>()) {}

const TeskEffectInfo& TeskSpiralEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{84513D19-FCC5-4A8C-996B-A5B92D37B65D}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskSpiralEffect>(); },
        106,
        "Spiral",
        0,
        "::/html/Effects/SpiralEffect.htm",
    };
    return info;
}

void TeskSpiralEffect::SetSpiralObject(ZoAutoPtr<TeskObject>& object,
                                       ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskSpiralEffect::SetSpiralStyle(int32_t style, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&SpiralState::spiralStyle, style, transaction);
}
void TeskSpiralEffect::SetSpiralSpeed(int32_t speed, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&SpiralState::spiralSpeed, speed, transaction);
}

TeskMeshEffect::MeshTriangleList TeskSpiralEffect::BuildMesh(TeskSWFMovie& movie,
                                                             const ZoRect& rect) {
    ZoAutoPtr<TeskTriangulation> triangulation;
    BuildTriangulation(rect, triangulation);
    MeshTriangleList mesh;
    TeskObject* object = GetSpiralObject();
    if (object && triangulation) {
        // Pieces turn against each other, so their overlap is doubled.
        BuildMeshTriangles(mesh, movie, *object, rect, *triangulation, 0,
                           2.0 * GetGridSettings().expand, kDepthBase);
    }
    return mesh;
}

void TeskSpiralEffect::MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                                int32_t frameCount) const {
    const TeskSpiralMotion motion(GetSpiralStyle(), GetSpiralSpeed(), rect);
    const double progress = motion.Progress(frame, frameCount);
    for (MeshTriangle& triangle : mesh) {
        for (size_t k = 0; k < 3; ++k)
            triangle.corners[k] = motion.At(triangle.restCorners[k], progress);
    }
}

void TeskSpiralEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    TeskCompileMovingMesh(*this, movie, ignoreMovieClipOffset);
}

void TeskSpiralEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        TeskGridEffect::Read(file);
        SpiralState& state = static_cast<SpiralState&>(GetState());
        ReadObject(file, state.object);
        state.spiralStyle = file.ReadInt32();
        state.spiralSpeed = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskSpiralEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    TeskGridEffect::Write(file);
    const SpiralState& state = GetSpiralState();
    WriteObject(file, state.object.get());
    file.WriteInt32(state.spiralStyle);
    file.WriteInt32(state.spiralSpeed);
}

ZoAutoPtr<TeskObject>& TeskSpiralEffect::ObjectSlot(State& state, int) const {
    return static_cast<SpiralState&>(state).object;
}
