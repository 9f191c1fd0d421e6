#include "effects/twist_effect.h"

#include <cassert>

#include "effects/twist_surface.h"
#include "flash/swf_sequence.h"
#include "geometry/perspective.h"
#include "geometry/triangulation.h"
#include "media/swf_movie.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

TeskTwistEffect::TwistState::TwistState()
    : object(std::make_unique<TeskImageObject>("<PreviewImage1>")) {}

TeskTwistEffect::TwistState::TwistState(const TwistState& other)
    : ThreeDState(other),
      object(TeskCloneObject(other.object)),
      twistAngle(other.twistAngle),
      twistStyle(other.twistStyle) {}

ZoAutoPtr<TeskEffect::State> TeskTwistEffect::TwistState::Clone() const {
    return std::make_unique<TwistState>(*this);
}

void TeskTwistEffect::TwistState::VisitFields(TeskFieldVisitor& visitor) {
    ThreeDState::VisitFields(visitor);
    visitor.Object("object", object);
    visitor.Field("twistAngle", twistAngle);
    visitor.Field("twistStyle", twistStyle);
}

TeskTwistEffect::TeskTwistEffect() : Tesk3DEffect(std::make_unique<TwistState>()) {}

const TeskEffectInfo& TeskTwistEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{E31E5955-B1A7-4BC5-A269-6B14360988A2}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskTwistEffect>(); },
        167,
        "Twist",
        9,
        "::/html/Effects/TwistEffect.htm",
    };
    return info;
}

void TeskTwistEffect::SetTwistObject(ZoAutoPtr<TeskObject>& object,
                                     ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskTwistEffect::SetTwistAngle(int32_t degrees, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&TwistState::twistAngle, degrees, transaction);
}
void TeskTwistEffect::SetTwistStyle(int32_t style, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&TwistState::twistStyle, style, transaction);
}

TeskMeshEffect::MeshTriangleList TeskTwistEffect::BuildMesh(TeskSWFMovie& movie,
                                                            const ZoRect& rect) {
    const TwistState& state = GetTwistState();
    return BuildObjectMesh(movie, rect, state.object.get(), state.twistAngle + 90, kDepthBase);
}

void TeskTwistEffect::MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                               int32_t frameCount, CornerLights& light) const {
    const TwistState& state = GetTwistState();
    const TeskTwistSurface surface(state.twistAngle, state.twistStyle, rect);
    const TeskLightModel model = GetLightModel();
    const double progress = surface.Progress(frame, frameCount);
    light.resize(mesh.size());
    for (size_t i = 0; i < mesh.size(); ++i) {
        for (size_t k = 0; k < 3; ++k) {
            const TeskSurfacePoint point = surface.At(mesh[i].restCorners[k], progress);
            mesh[i].corners[k] = TeskProject(point.position, rect);
            light[i][k] = model.LightFactor(point.normal);
        }
    }
}

void TeskTwistEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    assert(movie.GetScene(0) && "the caller adds the movie's scene first");
    const ZoRect rect = GetMovieRect(movie.GetWidth(), movie.GetHeight(), ignoreMovieClipOffset);
    MeshTriangleList mesh = BuildMesh(movie, rect);
    const TeskLightTriangles lights = BuildLightShapes();
    const auto above = static_cast<int32_t>(mesh.size());
    CornerLights light;
    ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    const int32_t frameCount = GetFrameCount(movie.GetFrameRate());
    for (int32_t i = 0; i < frameCount; ++i) {
        ZoFlash::ZoSWFFrame& frame = *scene.AddFrame();
        MoveMesh(mesh, rect, i, frameCount, light);
        PlaceMeshTriangles(mesh, frame);
        for (size_t t = 0; t < mesh.size(); ++t)
            lights.Place(mesh[t].corners, light[t], frame, mesh[t].depth + above);
    }
}

void TeskTwistEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        Tesk3DEffect::Read(file);
        TwistState& state = static_cast<TwistState&>(GetState());
        ReadObject(file, state.object);
        state.twistAngle = file.ReadInt32();
        state.twistStyle = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskTwistEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    Tesk3DEffect::Write(file);
    const TwistState& state = GetTwistState();
    WriteObject(file, state.object.get());
    file.WriteInt32(state.twistAngle);
    file.WriteInt32(state.twistStyle);
}

ZoAutoPtr<TeskObject>& TeskTwistEffect::ObjectSlot(State& state, int) const {
    return static_cast<TwistState&>(state).object;
}
