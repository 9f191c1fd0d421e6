#pragma once
#include "effects/grid_effect.h"

/// Swirls one object about its centre in the screen plane: a rocking swirl,
/// or spirals into or out of the centre.
class TeskSpiralEffect : public TeskGridEffect {
  public:
    enum SpiralStyle : int32_t {
        kWashingMachine = 0,
        kScrewUp = 1,
        kUnScrewUp = 2,
        kSpinIn = 3,
        kSpinOut = 4,
    };

    class SpiralState : public GridState {
      public:
        SpiralState();
        SpiralState(const SpiralState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        ZoAutoPtr<TeskObject> object;
        int32_t spiralStyle = kWashingMachine;
        int32_t spiralSpeed = 50;  // 0..100
    };

    /// Names of the undoable changes the property page makes; the object
    /// change carries no name of its own.
    static constexpr const char* kSpiralStyleName = "Edit Spiral Style";
    static constexpr const char* kSpiralSpeedName = "Edit Spiral Speed";
    static constexpr const char* kPropertiesName = "Edit Spiral Effect";

    /// Depth of the first mesh triangle.
    static constexpr int32_t kDepthBase = 100;

    TeskSpiralEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const SpiralState& GetSpiralState() const noexcept {
        return static_cast<const SpiralState&>(GetState());
    }
    TeskObject* GetSpiralObject() const noexcept { return GetSpiralState().object.get(); }
    int32_t GetSpiralStyle() const noexcept { return GetSpiralState().spiralStyle; }
    int32_t GetSpiralSpeed() const noexcept { return GetSpiralState().spiralSpeed; }
    void SetSpiralObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetSpiralStyle(int32_t style, ZoEditor::ZoEditTransaction* transaction);
    void SetSpiralSpeed(int32_t speed, ZoEditor::ZoEditTransaction* transaction);

    /// The mesh of one compilation over `rect` (twips), outlines snapped to
    /// whole pixels and enlarged by twice the grid's `expand`, triangle i at
    /// depth kDepthBase + i.
    MeshTriangleList BuildMesh(TeskSWFMovie& movie, const ZoRect& rect);
    /// Moves every triangle of `mesh` to where the swirl carries it in frame
    /// `frame` of `frameCount`.
    void MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                  int32_t frameCount) const;

    /// One frame per effect frame: the mesh, swirled. Scene 0 must exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    int GetObjectCount() const override { return 1; }
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Every index addresses the one object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;
};
