#pragma once
#include <array>
#include <vector>

#include "effects/three_d_effect.h"

/// Wrings one object like a ribbon about an axis in the screen plane, in
/// perspective and smoothly lit.
class TeskTwistEffect : public Tesk3DEffect {
  public:
    enum TwistStyle : int32_t {
        kContinuous = 0,
        kPulse = 1,
    };

    class TwistState : public ThreeDState {
      public:
        TwistState();
        TwistState(const TwistState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        ZoAutoPtr<TeskObject> object;
        int32_t twistAngle = 0;  // the axis, degrees on the screen, 0 up, clockwise
        int32_t twistStyle = kContinuous;
    };

    /// Names of the undoable changes the property page makes; the object
    /// change carries no name of its own.
    static constexpr const char* kTwistAngleName = "Twist Angle";
    static constexpr const char* kTwistStyleName = "Twist Style";
    static constexpr const char* kPropertiesName = "Twist Effect";

    TeskTwistEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const TwistState& GetTwistState() const noexcept {
        return static_cast<const TwistState&>(GetState());
    }
    TeskObject* GetTwistObject() const noexcept { return GetTwistState().object.get(); }
    int32_t GetTwistAngle() const noexcept { return GetTwistState().twistAngle; }
    int32_t GetTwistStyle() const noexcept { return GetTwistState().twistStyle; }
    void SetTwistObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetTwistAngle(int32_t degrees, ZoEditor::ZoEditTransaction* transaction);
    void SetTwistStyle(int32_t style, ZoEditor::ZoEditTransaction* transaction);

    /// Depth of the first mesh triangle; the light triangles follow the mesh.
    static constexpr int32_t kDepthBase = 100;

    /// The light factor at each corner of each mesh triangle.
    using CornerLights = std::vector<std::array<double, 3>>;

    /// The mesh of one compilation over `rect` (twips): the object cut along
    /// a grid that runs across the axis, triangle i at depth kDepthBase + i.
    MeshTriangleList BuildMesh(TeskSWFMovie& movie, const ZoRect& rect);
    /// Moves every triangle of `mesh` to where the twist carries it in frame
    /// `frame` of `frameCount`, seen in perspective; `light` receives the
    /// light at each corner.
    void MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame, int32_t frameCount,
                  CornerLights& light) const;

    /// One frame per effect frame: the mesh in its list order, each triangle
    /// under a gradient triangle for its light. Scene 0 must exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    int GetObjectCount() const override { return 1; }
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Every index addresses the one object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;
};
