// The explode effect's pieces: their random shares, their motion and what an
// implosion shows.
#include "effects/explode_effect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "effects/explode_pieces.h"
#include "flash/swf_sequence.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"

namespace {

using Explode = TeskExplodeEffect;
const ZoRect kRect{0, 0, 2000, 1600};

Explode::MeshTriangleList Mesh(Explode& explode) {
    TeskSWFMovie movie;
    return explode.BuildMesh(movie, kRect);
}

TEST(ExplodeEffectTest, SharesComeFromTheSequenceSeededWithOne) {
    Explode explode;
    const Explode::MeshTriangleList mesh = Mesh(explode);
    ASSERT_GT(mesh.size(), 2u);
    const auto pieces = explode.MakeTriangleInfo(mesh, kRect);
    // rand() seeded with 1 first gives 41; spread 100 ± 50 %.
    EXPECT_DOUBLE_EQ(pieces[0].spreadFactor, 41 * 1.0 / 32767.0 + 0.5);
    EXPECT_EQ(explode.MakeTriangleInfo(mesh, kRect)[1].travel, pieces[1].travel);

    // Without spin a piece draws four values instead of five.
    explode.SetSpin(0, nullptr);
    const auto still = explode.MakeTriangleInfo(mesh, kRect);
    EXPECT_EQ(still[0].spreadFactor, pieces[0].spreadFactor);
    EXPECT_EQ(still[0].twist, 0.0);
    EXPECT_NE(still[1].spreadFactor, pieces[1].spreadFactor);

    // Without randomness every piece has the same spread, swirl and travel.
    explode.SetSpin(200, nullptr);
    explode.SetRandomness(0, nullptr);
    const auto even = explode.MakeTriangleInfo(mesh, kRect);
    for (const auto& piece : even) {
        EXPECT_EQ(piece.spreadFactor, 1.0);
        EXPECT_EQ(piece.swirlAngle, 2.0);
        EXPECT_EQ(piece.travel, 2 * 2000.0);
    }
    EXPECT_NE(even[0].spinX, even[1].spinX);
}

TEST(ExplodeEffectTest, PiecesStartWholeAndOnlyTravelWithoutSpreadSwirlOrSpin) {
    Explode explode;
    explode.SetSpread(0, nullptr);
    explode.SetSwirl(0, nullptr);
    explode.SetSpin(0, nullptr);
    Explode::MeshTriangleList mesh = Mesh(explode);
    const auto pieces = explode.MakeTriangleInfo(mesh, kRect);
    explode.MoveMesh(mesh, pieces, kRect, 0, 24);
    for (const auto& piece : mesh) {
        // At rest, but for a twip lost to rounding on the way out and back.
        for (size_t k = 0; k < 3; ++k) {
            EXPECT_LE(std::abs(piece.corners[k].x - piece.restCorners[k].x), 1);
            EXPECT_LE(std::abs(piece.corners[k].y - piece.restCorners[k].y), 1);
        }
        EXPECT_EQ(piece.depth, piece.restDepth);
        // Facing the viewer under the default light.
        EXPECT_DOUBLE_EQ(piece.colourTransformation.GetScale(0), 221.0 / 255.0);
    }
    // Towards the viewer every piece grows about the centre, then passes
    // 0.95 of the eye's distance and is left out.
    explode.MoveMesh(mesh, pieces, kRect, 8, 24);
    for (const auto& piece : mesh) {
        const ZoPoint rest = piece.restCorners[0], moved = piece.corners[0];
        EXPECT_GE(std::abs(moved.x - 1000), std::abs(rest.x - 1000));
        EXPECT_GE(std::abs(moved.y - 800), std::abs(rest.y - 800));
        EXPECT_NE(piece.depth, 0);
    }
    explode.MoveMesh(mesh, pieces, kRect, 23, 24);
    for (const auto& piece : mesh)
        EXPECT_EQ(piece.depth, 0);
}

std::vector<std::string> FramePlacements(Explode& explode) {
    TeskSWFMovie movie;
    movie.SetWidth(100);
    movie.SetHeight(80);
    movie.SetFrameRate(12);
    ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>(0x0000FF);
    explode.SetExplodeObject(object, nullptr);
    explode.CompileAlone(movie);
    std::vector<std::string> frames;
    const ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    for (int32_t f = 0; f < scene.TotalFrames(); ++f) {
        std::string text;
        for (const auto& p : scene.GetFrame(f)->GetPlacements()) {
            text += std::to_string(p.depth) + " " + std::to_string(p.matrix.translateX.value) +
                    " " + std::to_string(p.matrix.scaleX.raw) + " " +
                    std::to_string(p.cxform.redMult) + ";";
        }
        frames.push_back(text);
    }
    return frames;
}

TEST(ExplodeEffectTest, AnImplosionIsTheExplosionBackwards) {
    for (const int32_t inwards : {0, 1}) {
        Explode explosion, implosion;
        explosion.SetInwards(inwards, nullptr);
        implosion.SetInwards(inwards, nullptr);
        implosion.SetExplodeType(Explode::kImplode, nullptr);
        std::vector<std::string> forwards = FramePlacements(explosion);
        const std::vector<std::string> backwards = FramePlacements(implosion);
        std::reverse(forwards.begin(), forwards.end());
        EXPECT_EQ(backwards, forwards);
    }
}

TEST(ExplodeEffectTest, StyleItemsFollowTypeAndDirection) {
    Explode explode;
    for (const auto& [type, inwards, item] :
         {std::tuple{0, 0, 0}, {0, 1, 1}, {1, 0, 2}, {1, 5, 3}, {7, 0, 0}}) {
        explode.SetExplodeType(type, nullptr);
        explode.SetInwards(inwards, nullptr);
        EXPECT_EQ(explode.GetStyleItem(), item);
    }
}

}  // namespace
