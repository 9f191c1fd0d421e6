#include "effects/rotate_3d_effect.h"

#include "effects/mesh_frames.h"
#include "effects/rotate_3d_motion.h"
#include "geometry/perspective.h"
#include "geometry/triangulation.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

TeskRotate3DEffect::Rotate3DState::Rotate3DState()
    : object(std::make_unique<TeskImageObject>("<PreviewImage1>")) {}

TeskRotate3DEffect::Rotate3DState::Rotate3DState(const Rotate3DState& other)
    : ThreeDState(other),
      object(TeskCloneObject(other.object)),
      axisDirection(other.axisDirection),
      rotateReserved(other.rotateReserved) {}

ZoAutoPtr<TeskEffect::State> TeskRotate3DEffect::Rotate3DState::Clone() const {
    return std::make_unique<Rotate3DState>(*this);
}

void TeskRotate3DEffect::Rotate3DState::VisitFields(TeskFieldVisitor& visitor) {
    ThreeDState::VisitFields(visitor);
    visitor.Object("object", object);
    visitor.Field("axisDirection", axisDirection);
    visitor.Field("rotateReserved", rotateReserved);
}

TeskRotate3DEffect::TeskRotate3DEffect() : Tesk3DEffect(std::make_unique<Rotate3DState>()) {}

const TeskEffectInfo& TeskRotate3DEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{D2278C60-1537-4081-80D1-159FED8C7C3F}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskRotate3DEffect>(); },
        160,
        "Rotate 3D",
        6,
        "::/html/Effects/Rotate3DEffect.htm",
    };
    return info;
}

void TeskRotate3DEffect::SetRotateObject(ZoAutoPtr<TeskObject>& object,
                                         ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskRotate3DEffect::SetAxisDirection(int32_t degrees,
                                          ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&Rotate3DState::axisDirection, degrees, transaction);
}

TeskMeshEffect::MeshTriangleList TeskRotate3DEffect::BuildMesh(TeskSWFMovie& movie,
                                                               const ZoRect& rect) {
    ZoAutoPtr<TeskTriangulation> triangulation;
    BuildTriangulation(rect, triangulation, GetAxisDirection() + 90, 1);
    MeshTriangleList mesh;
    TeskObject* object = GetRotateObject();
    if (object && triangulation) {
        const GridSettings& grid = GetGridSettings();
        BuildMeshTriangles(mesh, movie, *object, rect, *triangulation, 0, grid.expand,
                           grid.roundPoints, kDepthBase);
    }
    return mesh;
}

void TeskRotate3DEffect::MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                                  int32_t frameCount) const {
    const TeskRotate3DMotion motion(GetAxisDirection(), rect);
    const double turn = TeskRotate3DMotion::TurnAt(frame, frameCount);
    const TeskLightModel light = GetLightModel();
    ZoFlash::ZoSWFColourTransformation shade;
    if (light.IsOn())
        light.ApplyLight(light.LightFactor(motion.Normal(turn)), shade);
    for (MeshTriangle& triangle : mesh) {
        for (size_t k = 0; k < 3; ++k)
            triangle.corners[k] = TeskProject(motion.At(triangle.restCorners[k], turn), rect);
        triangle.colourTransformation = shade;
    }
}

void TeskRotate3DEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    TeskCompileMovingMesh(*this, movie, ignoreMovieClipOffset);
}

void TeskRotate3DEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        Tesk3DEffect::Read(file);
        Rotate3DState& state = static_cast<Rotate3DState&>(GetState());
        ReadObject(file, state.object);
        state.axisDirection = file.ReadInt32();
        state.rotateReserved = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskRotate3DEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    Tesk3DEffect::Write(file);
    const Rotate3DState& state = GetRotate3DState();
    WriteObject(file, state.object.get());
    file.WriteInt32(state.axisDirection);
    file.WriteInt32(state.rotateReserved);
}

ZoAutoPtr<TeskObject>& TeskRotate3DEffect::ObjectSlot(State& state, int) const {
    return static_cast<Rotate3DState&>(state).object;
}
