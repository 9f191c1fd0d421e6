#pragma once
#include <vector>

#include "effects/three_d_effect.h"

/// Breaks one object into its mesh triangles and flings them apart (or,
/// imploding, together): each piece moves away from the centre, swirls round
/// it, flies along the viewing axis and tumbles, each by its own random share.
class TeskExplodeEffect : public Tesk3DEffect {
  public:
    enum Type : int32_t {
        kExplode = 0,  // any type but kImplode explodes
        kImplode = 1,  // the explosion played backwards
    };

    class ExplodeState : public ThreeDState {
      public:
        ExplodeState();
        ExplodeState(const ExplodeState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        ZoAutoPtr<TeskObject> object;
        int32_t type = kExplode;
        int32_t inwards = 0;      // non-zero: pieces fly away from the viewer
        int32_t spread = 100;     // percent of a piece's distance from the centre
        int32_t spin = 200;       // hundredths of a turn
        int32_t swirl = 200;      // hundredths of a radian
        int32_t randomness = 50;  // percent by which pieces may differ
    };

    /// Names of the undoable changes the property page makes; the object
    /// change carries no name of its own.
    static constexpr const char* kTypeName = "Edit Explode Type";
    static constexpr const char* kInwardsName = "Edit Explode Direction";
    static constexpr const char* kSpreadName = "Edit Explode Spread";
    static constexpr const char* kSpinName = "Edit Explode Spin";
    static constexpr const char* kSwirlName = "Edit Explode Swirl";
    static constexpr const char* kRandomnessName = "Edit Explode Randomness";
    static constexpr const char* kPropertiesName = "Edit Explode Effect";

    /// The style list's items: item = 2·implode + inwards.
    static constexpr const char* kStyleItems[] = {"Explode Outwards", "Explode Inwards",
                                                  "Implode Outwards", "Implode Inwards"};

    /// One piece's share of the motion, drawn once per compilation.
    struct TriangleInfo {
        double centreX = 0.0, centreY = 0.0;  // the rest corners' centroid, twips
        double spreadFactor = 0.0;            // radial factor over the effect
        double swirlAngle = 0.0;              // radians about the centre over the effect
        double travel = 0.0;                  // twips along z over the effect
        double spinX = 0.0, spinY = 0.0;      // tumbling radians about x and y
        double twist = 0.0;                   // radians about the piece's own z axis
    };

    TeskExplodeEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const ExplodeState& GetExplodeState() const noexcept {
        return static_cast<const ExplodeState&>(GetState());
    }
    TeskObject* GetExplodeObject() const noexcept { return GetExplodeState().object.get(); }
    int32_t GetExplodeType() const noexcept { return GetExplodeState().type; }
    int32_t GetInwards() const noexcept { return GetExplodeState().inwards; }
    int32_t GetSpread() const noexcept { return GetExplodeState().spread; }
    int32_t GetSpin() const noexcept { return GetExplodeState().spin; }
    int32_t GetSwirl() const noexcept { return GetExplodeState().swirl; }
    int32_t GetRandomness() const noexcept { return GetExplodeState().randomness; }
    /// The style list's item for the type and direction.
    int32_t GetStyleItem() const noexcept;
    void SetExplodeObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetExplodeType(int32_t type, ZoEditor::ZoEditTransaction* transaction);
    void SetInwards(int32_t inwards, ZoEditor::ZoEditTransaction* transaction);
    void SetSpread(int32_t percent, ZoEditor::ZoEditTransaction* transaction);
    void SetSpin(int32_t hundredths, ZoEditor::ZoEditTransaction* transaction);
    void SetSwirl(int32_t hundredths, ZoEditor::ZoEditTransaction* transaction);
    void SetRandomness(int32_t percent, ZoEditor::ZoEditTransaction* transaction);

    /// Depth of the first piece; pieces keep their mesh order.
    static constexpr int32_t kDepthBase = 100;

    /// The pieces of one compilation over `rect` (twips): the object cut
    /// along a staggered triangular grid unless the settings fix another.
    MeshTriangleList BuildMesh(TeskSWFMovie& movie, const ZoRect& rect);
    /// Each piece's share of the motion, from the random sequence seeded
    /// with 1, so that every compilation draws the same.
    std::vector<TriangleInfo> MakeTriangleInfo(const MeshTriangleList& mesh,
                                               const ZoRect& rect) const;
    /// Moves every piece to its place in frame `frame` of `frameCount`;
    /// pieces that come too near the eye are left out of the frame.
    void MoveMesh(MeshTriangleList& mesh, const std::vector<TriangleInfo>& pieces,
                  const ZoRect& rect, int32_t frame, int32_t frameCount) const;

    /// One frame per effect frame: the pieces in mesh order, each lit flat.
    /// Scene 0 must exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    int GetObjectCount() const override { return 1; }
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Every index addresses the one object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;
};
