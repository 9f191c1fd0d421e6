#include "effects/explode_pieces.h"

#include <cmath>
#include <numbers>

#include "geometry/perspective.h"
#include "platform/zo_random.h"

namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;

// Uniform draws between two bounds (in either order) from the sequence.
class Draws {
  public:
    double Between(double low, double high) noexcept {
        return random_.Next() * (high - low) / static_cast<double>(ZoMsvcRandom::kMax) + low;
    }

  private:
    ZoMsvcRandom random_{1};
};

// The bounds of a share that may differ by `spread` (a fraction) either way.
struct Range {
    double low, high;
};
Range Around(double value, double spread) noexcept {
    return {value * (1.0 - spread), value * (1.0 + spread)};
}

}  // namespace

std::vector<TeskExplodeEffect::TriangleInfo> TeskDrawExplodePieces(
    const TeskExplodeEffect::ExplodeState& state, const TeskMeshEffect::MeshTriangleList& mesh,
    const ZoRect& rect) {
    const double randomness = state.randomness / 100.0;
    const double eye = TeskEyeDistance(rect);
    const Range spread = Around(state.spread / 100.0, randomness);
    const Range swirl = Around(state.swirl / 100.0, randomness);
    // Towards the viewer every piece passes the eye; away from it they
    // shrink into the distance. Pieces only ever travel further than this.
    const double leastTravel = state.inwards ? -10.0 * eye : eye;
    const Range travel{leastTravel, leastTravel * (1.0 + randomness)};
    const double spin = state.spin / 100.0;

    Draws draws;
    std::vector<TeskExplodeEffect::TriangleInfo> pieces(mesh.size());
    for (size_t i = 0; i < mesh.size(); ++i) {
        const TeskTriangle& c = mesh[i].restCorners;
        TeskExplodeEffect::TriangleInfo& piece = pieces[i];
        piece.centreX = (static_cast<double>(c[0].x) + c[1].x + c[2].x) / 3.0;
        piece.centreY = (static_cast<double>(c[0].y) + c[1].y + c[2].y) / 3.0;
        // The order of the draws is part of the movie.
        piece.spreadFactor = draws.Between(spread.low, spread.high);
        piece.swirlAngle = draws.Between(swirl.low, swirl.high);
        piece.travel = draws.Between(travel.low, travel.high);
        const double axis = draws.Between(0.0, kTurn);
        piece.spinX = std::sin(axis) * spin * kTurn;
        piece.spinY = std::cos(axis) * spin * kTurn;
        piece.twist = spin != 0.0 ? draws.Between(0.0, kTurn) : 0.0;
    }
    return pieces;
}

double TeskExplodeProgress(int32_t type, int32_t frame, int32_t frameCount) noexcept {
    const double t = frameCount > 1 ? static_cast<double>(frame) / (frameCount - 1) : 0.0;
    return type == TeskExplodeEffect::kImplode ? 1.0 - t : t;
}

TeskMatrix4 TeskExplodePieceMatrix(const TeskExplodeEffect::TriangleInfo& piece, ZoPoint centre,
                                   double progress) noexcept {
    const double t = progress;
    TeskMatrix4 m = TeskMatrix4::Translation(-piece.centreX, -piece.centreY, 0.0);
    m.Apply(TeskMatrix4::RotationZ(t * piece.twist))
        .Apply(TeskMatrix4::RotationX(t * piece.spinX))
        .Apply(TeskMatrix4::RotationY(t * piece.spinY));
    const double ox = piece.centreX - centre.x, oy = piece.centreY - centre.y;
    const double distance = std::hypot(ox, oy);
    const double reach = distance + distance * t * piece.spreadFactor;
    const double angle = std::atan2(oy, ox) + t * piece.swirlAngle;
    m.Apply(TeskMatrix4::Translation(std::cos(angle) * reach, std::sin(angle) * reach,
                                     t * piece.travel));
    return m;
}
