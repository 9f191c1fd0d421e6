#include "effects/cube_effect.h"

#include <cassert>
#include <string>

#include "effects/cube_geometry.h"
#include "flash/swf_sequence.h"
#include "geometry/perspective.h"
#include "geometry/triangulation.h"
#include "media/swf_movie.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

namespace {

using CubeFace = TeskCubeEffect::CubeFace;

// JSON keys of the faces: their names in lower case.
constexpr const char* kFaceKeys[] = {"top", "bottom", "left", "right", "front", "back"};

}  // namespace

TeskCubeEffect::CubeState::CubeState() {
    faces[kTop].object = std::make_unique<TeskImageObject>("<PreviewImage1>");
    for (int32_t f = kBottom; f < kFaceCount; ++f)
        faces[f].sameAs = kTop;
}

TeskCubeEffect::CubeState::CubeState(const CubeState& other)
    : ThreeDState(other),
      rotateX(other.rotateX),
      rotateZ(other.rotateZ),
      rotateAxis(other.rotateAxis),
      scaleSize(other.scaleSize) {
    for (int32_t f = 0; f < kFaceCount; ++f) {
        faces[f].object = TeskCloneObject(other.faces[f].object);
        faces[f].objectDirection = other.faces[f].objectDirection;
        faces[f].sameAs = other.faces[f].sameAs;
    }
}

ZoAutoPtr<TeskEffect::State> TeskCubeEffect::CubeState::Clone() const {
    return std::make_unique<CubeState>(*this);
}

void TeskCubeEffect::CubeState::VisitFields(TeskFieldVisitor& visitor) {
    ThreeDState::VisitFields(visitor);
    visitor.Group("faces", [&] {
        for (int32_t f = 0; f < kFaceCount; ++f) {
            visitor.Group(kFaceKeys[f], [&] {
                visitor.Object("object", faces[f].object);
                visitor.Field("objectDirection", faces[f].objectDirection);
                visitor.Field("sameAs", faces[f].sameAs);
            });
        }
    });
    visitor.Field("rotateX", rotateX);
    visitor.Field("rotateZ", rotateZ);
    visitor.Field("rotateAxis", rotateAxis);
    visitor.Field("scaleSize", scaleSize);
}

TeskCubeEffect::TeskCubeEffect() : Tesk3DEffect(std::make_unique<CubeState>()) {}

const TeskEffectInfo& TeskCubeEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{97EF9984-CEC9-4C30-861A-34C9F6E10ABC}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskCubeEffect>(); },
        158,
        "Cube",
        7,
        "::/html/Effects/CubeEffect.htm",
    };
    return info;
}

TeskObject* TeskCubeEffect::GetShownObject(int32_t face) const noexcept {
    const CubeFace& own = GetFace(face);
    if (own.object)
        return own.object.get();
    if (own.sameAs < 0 || own.sameAs >= kFaceCount)
        return nullptr;
    return GetFace(own.sameAs).object.get();
}

template <typename V>
void TeskCubeEffect::SetFaceField(int32_t face, V CubeFace::*field, V value,
                                  ZoEditor::ZoEditTransaction* transaction) {
    ChangeState<CubeState>([&](CubeState& state) { state.faces[face].*field = std::move(value); },
                           transaction);
}

void TeskCubeEffect::SetFaceObject(int32_t face, ZoAutoPtr<TeskObject>& object,
                                   ZoEditor::ZoEditTransaction* transaction) {
    SetFaceField(face, &CubeFace::object, std::move(object), transaction);
}
void TeskCubeEffect::SetFaceDirection(int32_t face, int32_t direction,
                                      ZoEditor::ZoEditTransaction* transaction) {
    SetFaceField(face, &CubeFace::objectDirection, direction, transaction);
}
void TeskCubeEffect::SetFaceSameAs(int32_t face, int32_t sameAs,
                                   ZoEditor::ZoEditTransaction* transaction) {
    SetFaceField(face, &CubeFace::sameAs, sameAs, transaction);
}
void TeskCubeEffect::SetRotateX(int32_t degrees, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&CubeState::rotateX, degrees, transaction);
}
void TeskCubeEffect::SetRotateZ(int32_t degrees, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&CubeState::rotateZ, degrees, transaction);
}
void TeskCubeEffect::SetRotateAxis(int32_t degrees, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&CubeState::rotateAxis, degrees, transaction);
}
void TeskCubeEffect::SetScaleSize(int32_t percent, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&CubeState::scaleSize, percent, transaction);
}

TeskCubeEffect::FaceMeshes TeskCubeEffect::BuildMeshes(TeskSWFMovie& movie, const ZoRect& rect) {
    ZoAutoPtr<TeskTriangulation> triangulation;
    // The triangle budget is shared by the six faces.
    BuildTriangulation(rect, triangulation, 45, kFaceCount);
    FaceMeshes meshes;
    if (!triangulation)
        return meshes;
    const GridSettings& grid = GetGridSettings();
    for (int32_t f = 0; f < kFaceCount; ++f) {
        TeskObject* shown = GetShownObject(f);
        if (!shown)
            continue;
        // A picture shown on several faces is cut into shapes once.
        int32_t same = 0;
        while (same < f && GetShownObject(same) != shown)
            ++same;
        if (same < f) {
            meshes[f] = meshes[same];
            continue;
        }
        BuildMeshTriangles(meshes[f], movie, *shown, rect, *triangulation, 0, grid.expand,
                           grid.roundPoints, kDepthBase);
    }
    return meshes;
}

void TeskCubeEffect::MoveFaces(FaceMeshes& meshes, const ZoRect& rect, int32_t frame,
                               int32_t frameCount) const {
    const CubeState& state = GetCubeState();
    const TeskLightModel model = GetLightModel();
    const TeskMatrix4 spin = TeskCubeSpin(state, frame, frameCount);
    const TeskPoint3D origin{0.0, 0.0, 0.0};
    for (int32_t f = 0; f < kFaceCount; ++f) {
        MeshTriangleList& mesh = meshes[f];
        const auto n = static_cast<int32_t>(mesh.size());
        TeskMatrix4 m = TeskCubeFaceMatrix(state, f, rect);
        m.Apply(spin);
        // Neighbouring faces end on their common edge, where the least gap
        // between their rims lets a hairline of the background through (the
        // object's rim has no enlargement to close it, unlike the seams inside
        // a face). Where both look towards the viewer they overlap instead;
        // faces turned away, and the cube's outline, stay as they are.
        m = TeskOverlappingCubeFace(m, rect, state.scaleSize / 100.0, GetGridSettings().expand);
        const TeskPoint3D normal =
            TeskNormalise(m.Transform({0.0, 0.0, 1.0}) - m.Transform(origin));
        ZoFlash::ZoSWFColourTransformation light;
        if (model.IsOn())
            model.ApplyLight(model.LightFactor(normal), light);
        for (MeshTriangle& triangle : mesh) {
            for (size_t k = 0; k < 3; ++k) {
                const ZoPoint rest = triangle.restCorners[k];
                triangle.corners[k] = TeskProject(
                    m.Transform({static_cast<double>(rest.x), static_cast<double>(rest.y), 0.0}),
                    rect);
            }
            // Faces keep bands of their own; all that face away lie below
            // all that face the viewer.
            const int32_t band = TeskFacesViewer(triangle.corners) ? f + kFaceCount : f;
            triangle.depth = triangle.restDepth + band * n;
            triangle.colourTransformation = light;
        }
    }
}

void TeskCubeEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    assert(movie.GetScene(0) && "the caller adds the movie's scene first");
    const ZoRect rect = GetMovieRect(movie.GetWidth(), movie.GetHeight(), ignoreMovieClipOffset);
    FaceMeshes meshes = BuildMeshes(movie, rect);
    ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    const int32_t frameCount = GetFrameCount(movie.GetFrameRate());
    for (int32_t i = 0; i < frameCount; ++i) {
        ZoFlash::ZoSWFFrame& frame = *scene.AddFrame();
        MoveFaces(meshes, rect, i, frameCount);
        for (const MeshTriangleList& mesh : meshes)
            PlaceMeshTriangles(mesh, frame);
    }
}

int TeskCubeEffect::GetObjectCount() const {
    int count = 0;
    for (const CubeFace& face : GetCubeState().faces)
        count += face.object ? 1 : 0;
    return count;
}

void TeskCubeEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        Tesk3DEffect::Read(file);
        CubeState& state = static_cast<CubeState&>(GetState());
        for (CubeFace& face : state.faces) {
            ReadObject(file, face.object);
            face.objectDirection = file.ReadInt32();
            face.sameAs = file.ReadInt32();
        }
        state.rotateX = file.ReadInt32();
        state.rotateZ = file.ReadInt32();
        state.rotateAxis = file.ReadInt32();
        state.scaleSize = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskCubeEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    Tesk3DEffect::Write(file);
    const CubeState& state = GetCubeState();
    for (const CubeFace& face : state.faces) {
        WriteObject(file, face.object.get());
        file.WriteInt32(face.objectDirection);
        file.WriteInt32(face.sameAs);
    }
    for (int32_t value : {state.rotateX, state.rotateZ, state.rotateAxis, state.scaleSize})
        file.WriteInt32(value);
}

ZoAutoPtr<TeskObject>& TeskCubeEffect::ObjectSlot(State& state, int index) const {
    auto& faces = static_cast<CubeState&>(state).faces;
    for (CubeFace& face : faces) {
        if (face.object && index-- == 0)
            return face.object;
    }
    return faces[kTop].object;
}
