#include "effects/curl_up_effect.h"

#include <algorithm>
#include <cassert>

#include "effects/curl_sheet.h"
#include "flash/swf_sequence.h"
#include "geometry/perspective.h"
#include "geometry/triangulation.h"
#include "media/swf_movie.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

TeskCurlUpEffect::CurlUpState::CurlUpState()
    : object(std::make_unique<TeskImageObject>("<PreviewImage1>")) {}

TeskCurlUpEffect::CurlUpState::CurlUpState(const CurlUpState& other)
    : ThreeDState(other),
      object(TeskCloneObject(other.object)),
      direction(other.direction),
      radius(other.radius),
      style(other.style) {}

ZoAutoPtr<TeskEffect::State> TeskCurlUpEffect::CurlUpState::Clone() const {
    return std::make_unique<CurlUpState>(*this);
}

void TeskCurlUpEffect::CurlUpState::VisitFields(TeskFieldVisitor& visitor) {
    ThreeDState::VisitFields(visitor);
    visitor.Object("object", object);
    visitor.Field("direction", direction);
    visitor.Field("radius", radius);
    visitor.Field("style", style);
}

TeskCurlUpEffect::TeskCurlUpEffect() : Tesk3DEffect(std::make_unique<CurlUpState>()) {}

const TeskEffectInfo& TeskCurlUpEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{AC28161D-D4EB-4DD0-BBE3-B73B00E7FA25}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskCurlUpEffect>(); },
        159,
        "Curl Up",
        8,
        "::/html/Effects/CurlUpEffect.htm",
    };
    return info;
}

void TeskCurlUpEffect::SetCurlObject(ZoAutoPtr<TeskObject>& object,
                                     ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskCurlUpEffect::SetDirection(int32_t degrees, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&CurlUpState::direction, degrees, transaction);
}
void TeskCurlUpEffect::SetRadius(int32_t percent, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&CurlUpState::radius, percent, transaction);
}
void TeskCurlUpEffect::SetStyle(uint32_t style, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&CurlUpState::style, style, transaction);
}

TeskMeshEffect::MeshTriangleList TeskCurlUpEffect::BuildMesh(TeskSWFMovie& movie,
                                                             const ZoRect& rect) {
    const CurlUpState& state = GetCurlUpState();
    return BuildObjectMesh(movie, rect, state.object.get(), state.direction + 90, kDepthBase);
}

void TeskCurlUpEffect::MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                                int32_t frameCount, LightOverlays& overlays) const {
    const CurlUpState& state = GetCurlUpState();
    const TeskCurlSheet sheet(state.direction, state.radius, state.style, rect,
                              TeskCurlSheet::Progress(state.style, frame, frameCount));
    const TeskLightModel model = GetLightModel();
    overlays.resize(mesh.size());
    // Each triangle and its light triangle, just above it, sort by their
    // nearest corner.
    std::vector<double> depths(2 * mesh.size());
    for (size_t i = 0; i < mesh.size(); ++i) {
        double nearest = -1000000.0;
        for (size_t k = 0; k < 3; ++k) {
            const TeskSurfacePoint point = sheet.At(mesh[i].restCorners[k]);
            mesh[i].corners[k] = TeskProject(point.position, rect);
            overlays[i].light[k] = model.LightFactor(point.normal);
            nearest = std::max(nearest, point.position.z);
        }
        overlays[i].corners = mesh[i].corners;
        depths[2 * i] = nearest;
        depths[2 * i + 1] = nearest + sheet.Radius() / 20.0;
    }
    const std::vector<int32_t> order = TeskBackToFront(depths);
    // Two depths per place in the order, the light triangle taking the
    // upper one.
    for (size_t p = 0; p < order.size(); ++p) {
        const auto i = static_cast<size_t>(order[p] / 2);
        const bool overlay = order[p] % 2 == 1;
        (overlay ? overlays[i].depth : mesh[i].depth) =
            kDepthBase + 2 * static_cast<int32_t>(p) + (overlay ? 1 : 0);
    }
}

void TeskCurlUpEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    assert(movie.GetScene(0) && "the caller adds the movie's scene first");
    const ZoRect rect = GetMovieRect(movie.GetWidth(), movie.GetHeight(), ignoreMovieClipOffset);
    MeshTriangleList mesh = BuildMesh(movie, rect);
    const TeskLightTriangles lights = BuildLightShapes();
    LightOverlays overlays;
    ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    const int32_t frameCount = GetFrameCount(movie.GetFrameRate());
    for (int32_t i = 0; i < frameCount; ++i) {
        ZoFlash::ZoSWFFrame& frame = *scene.AddFrame();
        MoveMesh(mesh, rect, i, frameCount, overlays);
        PlaceMeshTriangles(mesh, frame);
        for (const LightOverlay& overlay : overlays)
            lights.Place(overlay.corners, overlay.light, frame, overlay.depth);
    }
}

void TeskCurlUpEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        Tesk3DEffect::Read(file);
        CurlUpState& state = static_cast<CurlUpState&>(GetState());
        ReadObject(file, state.object);
        state.direction = file.ReadInt32();
        state.radius = file.ReadInt32();
        state.style = file.ReadUInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskCurlUpEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    Tesk3DEffect::Write(file);
    const CurlUpState& state = GetCurlUpState();
    WriteObject(file, state.object.get());
    file.WriteInt32(state.direction);
    file.WriteInt32(state.radius);
    file.WriteUInt32(state.style);
}

ZoAutoPtr<TeskObject>& TeskCurlUpEffect::ObjectSlot(State& state, int) const {
    return static_cast<CurlUpState&>(state).object;
}
