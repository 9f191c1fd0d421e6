#include "effects/wave_effect.h"

#include <array>
#include <cassert>
#include <vector>

#include "effects/wave_surface.h"
#include "flash/swf_sequence.h"
#include "geometry/perspective.h"
#include "geometry/triangulation.h"
#include "media/swf_movie.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

TeskWaveEffect::WaveState::WaveState()
    : object(std::make_unique<TeskImageObject>("<PreviewImage1>")) {}

TeskWaveEffect::WaveState::WaveState(const WaveState& other)
    : ThreeDState(other),
      object(TeskCloneObject(other.object)),
      wavelength(other.wavelength),
      amplitude(other.amplitude),
      direction(other.direction),
      waveStyle(other.waveStyle) {}

ZoAutoPtr<TeskEffect::State> TeskWaveEffect::WaveState::Clone() const {
    return std::make_unique<WaveState>(*this);
}

void TeskWaveEffect::WaveState::VisitFields(TeskFieldVisitor& visitor) {
    ThreeDState::VisitFields(visitor);
    visitor.Object("object", object);
    visitor.Field("wavelength", wavelength);
    visitor.Field("amplitude", amplitude);
    visitor.Field("direction", direction);
    visitor.Field("waveStyle", waveStyle);
}

TeskWaveEffect::TeskWaveEffect() : Tesk3DEffect(std::make_unique<WaveState>()) {}

const TeskEffectInfo& TeskWaveEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{8859A138-2D10-4985-B2D1-B3374EA20129}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskWaveEffect>(); },
        135,
        "Wave",
        4,
        "::/html/Effects/WaveEffect.htm",
    };
    return info;
}

void TeskWaveEffect::SetWaveObject(ZoAutoPtr<TeskObject>& object,
                                   ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskWaveEffect::SetWavelength(int32_t wavelength, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&WaveState::wavelength, wavelength, transaction);
}
void TeskWaveEffect::SetAmplitude(int32_t amplitude, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&WaveState::amplitude, amplitude, transaction);
}
void TeskWaveEffect::SetDirection(int32_t degrees, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&WaveState::direction, degrees, transaction);
}
void TeskWaveEffect::SetWaveStyle(int32_t style, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&WaveState::waveStyle, style, transaction);
}

TeskMeshEffect::MeshTriangleList TeskWaveEffect::BuildMesh(TeskSWFMovie& movie,
                                                           const ZoRect& rect) {
    // An automatic grid is cut across the wave direction.
    const WaveState& state = GetWaveState();
    return BuildObjectMesh(movie, rect, state.object.get(), state.direction + 90, kDepthBase);
}

void TeskWaveEffect::MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                              int32_t frameCount, CornerLights& light) const {
    const WaveState& state = GetWaveState();
    const TeskWaveSurface surface(state.wavelength, state.amplitude, state.direction,
                                  state.waveStyle, rect);
    const TeskLightModel model = GetLightModel();
    const double progress = static_cast<double>(frame) / frameCount;
    light.resize(mesh.size());
    for (size_t i = 0; i < mesh.size(); ++i) {
        for (size_t k = 0; k < 3; ++k) {
            const TeskSurfacePoint point = surface.At(mesh[i].restCorners[k], progress);
            mesh[i].corners[k] = TeskProject(point.position, rect);
            light[i][k] = model.LightFactor(point.normal);
        }
    }
}

void TeskWaveEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    assert(movie.GetScene(0) && "the caller adds the movie's scene first");
    const ZoRect rect = GetMovieRect(movie.GetWidth(), movie.GetHeight(), ignoreMovieClipOffset);
    MeshTriangleList mesh = BuildMesh(movie, rect);
    const TeskLightTriangles lights = BuildLightShapes();
    const bool roundMovedPoints = GetGridSettings().roundMovedPoints;
    // The light triangles lie above the whole mesh, each over its own piece.
    const auto above = static_cast<int32_t>(mesh.size());
    CornerLights light;
    ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    const int32_t frameCount = GetFrameCount(movie.GetFrameRate());
    for (int32_t i = 0; i < frameCount; ++i) {
        ZoFlash::ZoSWFFrame& frame = *scene.AddFrame();
        MoveMesh(mesh, rect, i, frameCount, light);
        // The mesh first, so that the frame's depths come in ascending order.
        PlaceMeshTriangles(mesh, frame, roundMovedPoints);
        for (size_t t = 0; t < mesh.size(); ++t)
            lights.Place(mesh[t].corners, light[t], frame, mesh[t].depth + above);
    }
}

void TeskWaveEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        Tesk3DEffect::Read(file);
        WaveState& state = static_cast<WaveState&>(GetState());
        ReadObject(file, state.object);
        state.wavelength = file.ReadInt32();
        state.amplitude = file.ReadInt32();
        state.direction = file.ReadInt32();
        state.waveStyle = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskWaveEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    Tesk3DEffect::Write(file);
    const WaveState& state = GetWaveState();
    WriteObject(file, state.object.get());
    for (int32_t value : {state.wavelength, state.amplitude, state.direction, state.waveStyle})
        file.WriteInt32(value);
}

ZoAutoPtr<TeskObject>& TeskWaveEffect::ObjectSlot(State& state, int) const {
    return static_cast<WaveState&>(state).object;
}
