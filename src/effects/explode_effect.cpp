#include "effects/explode_effect.h"

#include <cassert>

#include "effects/explode_pieces.h"
#include "flash/swf_sequence.h"
#include "geometry/perspective.h"
#include "geometry/triangulation.h"
#include "media/swf_movie.h"
#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

TeskExplodeEffect::ExplodeState::ExplodeState()
    : object(std::make_unique<TeskImageObject>("<PreviewImage1>")) {}

TeskExplodeEffect::ExplodeState::ExplodeState(const ExplodeState& other)
    : ThreeDState(other),
      object(TeskCloneObject(other.object)),
      type(other.type),
      inwards(other.inwards),
      spread(other.spread),
      spin(other.spin),
      swirl(other.swirl),
      randomness(other.randomness) {}

ZoAutoPtr<TeskEffect::State> TeskExplodeEffect::ExplodeState::Clone() const {
    return std::make_unique<ExplodeState>(*this);
}

void TeskExplodeEffect::ExplodeState::VisitFields(TeskFieldVisitor& visitor) {
    ThreeDState::VisitFields(visitor);
    visitor.Object("object", object);
    visitor.Field("type", type);
    visitor.Field("inwards", inwards);
    visitor.Field("spread", spread);
    visitor.Field("spin", spin);
    visitor.Field("swirl", swirl);
    visitor.Field("randomness", randomness);
}

TeskExplodeEffect::TeskExplodeEffect() : Tesk3DEffect(std::make_unique<ExplodeState>()) {}

const TeskEffectInfo& TeskExplodeEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{12CF1729-67A9-4752-810A-5ACCACA12DEE}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskExplodeEffect>(); },
        156,
        "Explode",
        5,
        "::/html/Effects/ExplodeEffect.htm",
    };
    return info;
}

int32_t TeskExplodeEffect::GetStyleItem() const noexcept {
    const ExplodeState& state = GetExplodeState();
    return (state.type == kImplode ? 2 : 0) + (state.inwards != 0 ? 1 : 0);
}

void TeskExplodeEffect::SetExplodeObject(ZoAutoPtr<TeskObject>& object,
                                         ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskExplodeEffect::SetExplodeType(int32_t type, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&ExplodeState::type, type, transaction);
}
void TeskExplodeEffect::SetInwards(int32_t inwards, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&ExplodeState::inwards, inwards, transaction);
}
void TeskExplodeEffect::SetSpread(int32_t percent, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&ExplodeState::spread, percent, transaction);
}
void TeskExplodeEffect::SetSpin(int32_t hundredths, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&ExplodeState::spin, hundredths, transaction);
}
void TeskExplodeEffect::SetSwirl(int32_t hundredths, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&ExplodeState::swirl, hundredths, transaction);
}
void TeskExplodeEffect::SetRandomness(int32_t percent, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&ExplodeState::randomness, percent, transaction);
}

TeskMeshEffect::MeshTriangleList TeskExplodeEffect::BuildMesh(TeskSWFMovie& movie,
                                                              const ZoRect& rect) {
    ZoAutoPtr<TeskTriangulation> triangulation;
    BuildTriangulationHex(rect, triangulation, 1);
    MeshTriangleList mesh;
    if (GetExplodeObject() && triangulation) {
        // Piece outlines always on whole pixels.
        BuildMeshTriangles(mesh, movie, *GetExplodeObject(), rect, *triangulation, 0,
                           GetGridSettings().expand, kDepthBase);
    }
    return mesh;
}

std::vector<TeskExplodeEffect::TriangleInfo> TeskExplodeEffect::MakeTriangleInfo(
    const MeshTriangleList& mesh, const ZoRect& rect) const {
    return TeskDrawExplodePieces(GetExplodeState(), mesh, rect);
}

void TeskExplodeEffect::MoveMesh(MeshTriangleList& mesh, const std::vector<TriangleInfo>& pieces,
                                 const ZoRect& rect, int32_t frame, int32_t frameCount) const {
    const ExplodeState& state = GetExplodeState();
    const TeskLightModel model = GetLightModel();
    const double progress = TeskExplodeProgress(state.type, frame, frameCount);
    const ZoPoint centre{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    // Pieces this near the eye would fill the view.
    const double nearest = 0.95 * TeskEyeDistance(rect);
    for (size_t i = 0; i < mesh.size(); ++i) {
        MeshTriangle& piece = mesh[i];
        const TeskMatrix4 m = TeskExplodePieceMatrix(pieces[i], centre, progress);
        piece.depth = piece.restDepth;
        for (size_t k = 0; k < 3; ++k) {
            const ZoPoint rest = piece.restCorners[k];
            const TeskPoint3D p =
                m.Transform({static_cast<double>(rest.x), static_cast<double>(rest.y), 0.0});
            if (p.z > nearest)
                piece.depth = 0;
            piece.corners[k] = TeskProject(p, rect);
        }
        if (model.IsOn()) {
            const TeskPoint3D normal =
                TeskNormalise(m.Transform({0, 0, 1}) - m.Transform({0, 0, 0}));
            model.ApplyLight(model.LightFactor(normal), piece.colourTransformation);
        }
    }
}

void TeskExplodeEffect::Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    assert(movie.GetScene(0) && "the caller adds the movie's scene first");
    const ZoRect rect = GetMovieRect(movie.GetWidth(), movie.GetHeight(), ignoreMovieClipOffset);
    MeshTriangleList mesh = BuildMesh(movie, rect);
    const std::vector<TriangleInfo> pieces = MakeTriangleInfo(mesh, rect);
    ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    const int32_t frameCount = GetFrameCount(movie.GetFrameRate());
    for (int32_t i = 0; i < frameCount; ++i) {
        ZoFlash::ZoSWFFrame& frame = *scene.AddFrame();
        MoveMesh(mesh, pieces, rect, i, frameCount);
        PlaceMeshTriangles(mesh, frame);
    }
}

void TeskExplodeEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        Tesk3DEffect::Read(file);
        ExplodeState& state = static_cast<ExplodeState&>(GetState());
        ReadObject(file, state.object);
        state.type = file.ReadInt32();
        state.inwards = file.ReadInt32();
        state.spread = file.ReadInt32();
        state.spin = file.ReadInt32();
        state.swirl = file.ReadInt32();
        state.randomness = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskExplodeEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    Tesk3DEffect::Write(file);
    const ExplodeState& s = GetExplodeState();
    WriteObject(file, s.object.get());
    for (int32_t value : {s.type, s.inwards, s.spread, s.spin, s.swirl, s.randomness})
        file.WriteInt32(value);
}

ZoAutoPtr<TeskObject>& TeskExplodeEffect::ObjectSlot(State& state, int) const {
    return static_cast<ExplodeState&>(state).object;
}
