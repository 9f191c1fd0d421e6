#include "effects/test_effect.h"

#include <cmath>
#include <numbers>

#include "effects/cube_geometry.h"
#include "effects/mesh_frames.h"
#include "effects/test_effect_geometry.h"
#include "effects/twist_effect.h"
#include "effects/twist_surface.h"
#include "geometry/perspective.h"
#include "geometry/triangulation.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

namespace {

// Twips each piece reaches past its neighbours, so that no hairline of the
// background shows between them.
constexpr double kSeamOverlap = 40.0;

}  // namespace

TeskTestEffect::TestState::TestState()
    : startObject(std::make_unique<TeskImageObject>("<PreviewImage1>")),
      endObject(std::make_unique<TeskImageObject>("<PreviewImage2>")) {}

TeskTestEffect::TestState::TestState(const TestState& other)
    : ThreeDState(other),
      startObject(TeskCloneObject(other.startObject)),
      endObject(TeskCloneObject(other.endObject)),
      testType(other.testType),
      parameter1(other.parameter1),
      parameter2(other.parameter2) {}

ZoAutoPtr<TeskEffect::State> TeskTestEffect::TestState::Clone() const {
    return std::make_unique<TestState>(*this);
}

void TeskTestEffect::TestState::VisitFields(TeskFieldVisitor& visitor) {
    ThreeDState::VisitFields(visitor);
    visitor.Object("startObject", startObject);
    visitor.Object("endObject", endObject);
    visitor.Field("testType", testType);
    visitor.Field("parameter1", parameter1);
    visitor.Field("parameter2", parameter2);
}

TeskTestEffect::TeskTestEffect() : Tesk3DEffect(std::make_unique<TestState>()) {}

const TeskEffectInfo& TeskTestEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{F016D613-8536-4F74-A3C1-F4F8C9527A40}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskTestEffect>(); },
        157,
        "Test Effect",
        6,
        "::/html/Dialogs/TestEffectsDialog.htm",
    };
    return info;
}

void TeskTestEffect::SetStartObject(ZoAutoPtr<TeskObject>& object,
                                    ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskTestEffect::SetEndObject(ZoAutoPtr<TeskObject>& object,
                                  ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 1, transaction);
}
void TeskTestEffect::SetTestType(int32_t type, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&TestState::testType, type, transaction);
}
void TeskTestEffect::SetParameter1(int32_t value, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&TestState::parameter1, value, transaction);
}
void TeskTestEffect::SetParameter2(int32_t value, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&TestState::parameter2, value, transaction);
}

TeskTestEffect::TestType TeskTestEffect::GetCompiledType() const noexcept {
    const int32_t type = GetTestType();
    return type >= kExplode && type <= kTwist ? static_cast<TestType>(type) : kExplode;
}

bool TeskTestEffect::HasSmoothLight() const noexcept {
    const TestType type = GetCompiledType();
    return type == kSphere || type == kCurlUp || type == kTwist;
}

double TeskTestEffect::TwistDegrees() const noexcept {
    return GetParameter1() * 3.6;
}

TeskMeshEffect::MeshTriangleList TeskTestEffect::BuildMesh(TeskSWFMovie& movie,
                                                           const ZoRect& rect) {
    const TestType type = GetCompiledType();
    // The twist's automatic grid is cut across its axis (taken within one
    // turn, so that no stored parameter overflows the whole degrees).
    const int32_t angle =
        type == kTwist ? static_cast<int32_t>(std::fmod(TwistDegrees(), 360.0) + 90.0) : 45;
    ZoAutoPtr<TeskTriangulation> triangulation;
    BuildTriangulation(rect, triangulation, angle, 1);
    MeshTriangleList mesh;
    TeskObject* object = GetStartObject();
    if (object && triangulation) {
        BuildMeshTriangles(mesh, movie, *object, rect, *triangulation, 0,
                           type == kAlphaBlend ? 0.0 : kSeamOverlap, true, kDepthBase);
    }
    return mesh;
}

namespace {

using MeshTriangleList = TeskMeshEffect::MeshTriangleList;

// i / N, or i / (N − 1) for the types that reach their end state.
double TimeOf(TeskTestEffect::TestType type, int32_t frame, int32_t frameCount) noexcept {
    const bool reachesEnd = type == TeskTestEffect::kAlphaBlend || type == TeskTestEffect::kTwist;
    const int32_t steps = reachesEnd ? frameCount - 1 : frameCount;
    return steps > 0 ? static_cast<double>(frame) / steps : 0.0;
}

// Sets the triangle's corners to its rest corners carried by `m`, projected.
void MoveThrough(TeskMeshEffect::MeshTriangle& triangle, const TeskMatrix4& m, const ZoRect& rect) {
    for (size_t k = 0; k < 3; ++k) {
        const ZoPoint p = triangle.restCorners[k];
        triangle.corners[k] = TeskProject(
            m.Transform({static_cast<double>(p.x), static_cast<double>(p.y), 0.0}), rect);
    }
}

void Explode(MeshTriangleList& mesh, const TeskTestFrame& frame, double t) {
    for (size_t j = 0; j < mesh.size(); ++j) {
        MoveThrough(mesh[j],
                    TeskTestExplodeMatrix(frame, mesh[j].restCorners, static_cast<int32_t>(j), t),
                    frame.rect);
    }
}

void Fade(MeshTriangleList& mesh, const TeskTestFrame& frame, double t) {
    for (auto& triangle : mesh)
        triangle.colourTransformation.SetScale(1.0, 1.0, 1.0,
                                               TeskTestFadeAlpha(frame, triangle.restCorners, t));
}

}  // namespace

void TeskTestEffect::MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                              int32_t frameCount, CornerLights& light) const {
    const TestType type = GetCompiledType();
    const TeskTestFrame testFrame(rect);
    const double t = TimeOf(type, frame, frameCount);
    if (type == kExplode) {
        Explode(mesh, testFrame, t);
        return;
    }
    if (type == kCube)
        return;
    if (type == kAlphaBlend) {
        Fade(mesh, testFrame, t);
        return;
    }
    const TeskTwistSurface twist(TwistDegrees(), TeskTwistEffect::kPulse, rect);
    const TeskLightModel model = GetLightModel();
    light.resize(mesh.size());
    for (size_t j = 0; j < mesh.size(); ++j) {
        MeshTriangle& triangle = mesh[j];
        for (size_t k = 0; k < 3; ++k) {
            const ZoPoint rest = triangle.restCorners[k];
            const TeskSurfacePoint p = type == kSphere   ? TeskTestSpherePoint(testFrame, rest, t)
                                       : type == kCurlUp ? TeskTestCurlPoint(testFrame, rest, t)
                                                         : twist.At(rest, t);
            triangle.corners[k] = TeskProject(p.position, rect);
            light[j][k] = model.LightFactor(p.normal);
        }
        // The globe's far side is left out.
        const bool shown = type != kSphere || TeskFacesViewer(triangle.corners);
        triangle.depth = shown ? triangle.restDepth : 0;
    }
}

void TeskTestEffect::PlaceCube(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                               int32_t frameCount, ZoFlash::ZoSWFFrame& out) const {
    const TeskTestFrame testFrame(rect);
    const double spin = frameCount > 0 ? 2.0 * std::numbers::pi * frame / frameCount : 0.0;
    const auto count = static_cast<int32_t>(mesh.size());
    for (int32_t face = 0; face < 6; ++face) {
        TeskMatrix4 m = TeskTestCubeFace(testFrame, face).Apply(TeskMatrix4::RotationY(spin));
        // Neighbouring faces meet at the object's rim, which has no piece
        // enlargement to close the seam: faces both in view overlap there.
        m = TeskOverlappingCubeFace(m, rect, 1.0, kSeamOverlap);
        bool facing = true;
        // A face is shown whole or not at all.
        for (size_t j = 0; j < mesh.size() && facing; ++j) {
            MoveThrough(mesh[j], m, rect);
            facing = TeskFacesViewer(mesh[j].corners);
        }
        if (!facing)
            continue;
        for (MeshTriangle& triangle : mesh)
            triangle.depth = triangle.restDepth + face * count;
        PlaceMeshTriangles(mesh, out);
    }
}

void TeskTestEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    const ZoRect rect = GetMovieRect(movie.GetWidth(), movie.GetHeight(), ignoreMovieClipOffset);
    MeshTriangleList mesh = BuildMesh(movie, rect);
    const TeskLightTriangles lights = BuildLightShapes();
    const bool smooth = HasSmoothLight();
    // The light triangles lie above the whole mesh, each over its own piece.
    const auto above = static_cast<int32_t>(mesh.size());
    CornerLights light;
    const int32_t frameCount = GetFrameCount(movie.GetFrameRate());
    TeskAddMeshFrames(movie, frameCount, [&](int32_t i, ZoFlash::ZoSWFFrame& frame) {
        if (GetCompiledType() == kCube) {
            PlaceCube(mesh, rect, i, frameCount, frame);
            return;
        }
        MoveMesh(mesh, rect, i, frameCount, light);
        PlaceMeshTriangles(mesh, frame);
        for (size_t j = 0; smooth && j < mesh.size(); ++j) {
            if (mesh[j].depth != 0)
                lights.Place(mesh[j].corners, light[j], frame, mesh[j].depth + above);
        }
    });
}

void TeskTestEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        Tesk3DEffect::Read(file);
        TestState& state = static_cast<TestState&>(GetState());
        ReadObject(file, state.startObject);
        ReadObject(file, state.endObject);
        state.testType = file.ReadInt32();
        state.parameter1 = file.ReadInt32();
        state.parameter2 = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskTestEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    Tesk3DEffect::Write(file);
    const TestState& state = GetTestState();
    WriteObject(file, state.startObject.get());
    WriteObject(file, state.endObject.get());
    for (int32_t value : {state.testType, state.parameter1, state.parameter2})
        file.WriteInt32(value);
}

ZoAutoPtr<TeskObject>& TeskTestEffect::ObjectSlot(State& state, int index) const {
    TestState& s = static_cast<TestState&>(state);
    return index != 0 ? s.endObject : s.startObject;
}
