#pragma once
#include <array>
#include <vector>

#include "effects/three_d_effect.h"

/// Peels one object off the movie like a sheet of paper: a fold line sweeps
/// across it and wraps what it has passed round a cylinder, in perspective,
/// smoothly lit and drawn back to front.
class TeskCurlUpEffect : public Tesk3DEffect {
  public:
    /// The bits of `style`.
    enum StyleBits : uint32_t {
        kCurlStyleMask = 0xFF,  // the curl style proper
        kTearAway = 0,          // any style but kRollUp curls like this
        kRollUp = 1,
        kUnderneath = 0x100,  // curl below the screen plane instead of towards the viewer
        kForwards = 0x200,    // clear: the curl runs in reverse
    };

    class CurlUpState : public ThreeDState {
      public:
        CurlUpState();
        CurlUpState(const CurlUpState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        ZoAutoPtr<TeskObject> object;
        int32_t direction = 135;  // where the line travels: degrees, 0 up, clockwise
        int32_t radius = 15;      // percent of the object's larger side
        uint32_t style = kForwards | kRollUp;
    };

    /// Names of the undoable changes the property page makes; the object
    /// change carries no name of its own.
    static constexpr const char* kStyleName = "Edit CurlUp Style";
    static constexpr const char* kDirectionName = "Edit CurlUp Direction";
    static constexpr const char* kRadiusName = "Edit CurlUp Radius";
    static constexpr const char* kPropertiesName = "Edit CurlUp Effect";

    TeskCurlUpEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const CurlUpState& GetCurlUpState() const noexcept {
        return static_cast<const CurlUpState&>(GetState());
    }
    TeskObject* GetCurlObject() const noexcept { return GetCurlUpState().object.get(); }
    int32_t GetDirection() const noexcept { return GetCurlUpState().direction; }
    int32_t GetRadius() const noexcept { return GetCurlUpState().radius; }
    uint32_t GetStyle() const noexcept { return GetCurlUpState().style; }
    void SetCurlObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetDirection(int32_t degrees, ZoEditor::ZoEditTransaction* transaction);
    void SetRadius(int32_t percent, ZoEditor::ZoEditTransaction* transaction);
    void SetStyle(uint32_t style, ZoEditor::ZoEditTransaction* transaction);

    /// The lowest depth of a frame; triangles and light triangles are
    /// stacked above it back to front, two depths apart.
    static constexpr int32_t kDepthBase = 100;

    /// A light triangle to lay over one mesh triangle.
    struct LightOverlay {
        TeskTriangle corners;
        std::array<double, 3> light;
        int32_t depth = 0;
    };
    using LightOverlays = std::vector<LightOverlay>;

    /// The mesh of one compilation over `rect` (twips), cut along a grid
    /// that runs with the fold line.
    MeshTriangleList BuildMesh(TeskSWFMovie& movie, const ZoRect& rect);
    /// Curls the sheet for frame `frame` of `frameCount`: moves every
    /// triangle of `mesh` and gives the triangles and their light triangles
    /// (in `overlays`, each just above its own) depths from back to front.
    void MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame, int32_t frameCount,
                  LightOverlays& overlays) const;

    /// One frame per effect frame: the curled mesh and its light. Scene 0
    /// must exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    int GetObjectCount() const override { return 1; }
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Every index addresses the one object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;
};
