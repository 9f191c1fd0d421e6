#pragma once
#include "effects/three_d_effect.h"

/// Turns one object once, rigidly, about an axis in the screen plane through
/// its centre, in perspective and shaded flat. The back shows mirrored.
class TeskRotate3DEffect : public Tesk3DEffect {
  public:
    class Rotate3DState : public ThreeDState {
      public:
        Rotate3DState();
        Rotate3DState(const Rotate3DState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        ZoAutoPtr<TeskObject> object;
        int32_t axisDirection = 0;   // degrees on the screen, 0 up, clockwise
        int32_t rotateReserved = 0;  // stored and copied; nothing depends on it
    };

    /// Names of the undoable changes the property page makes; the object
    /// change carries no name of its own.
    static constexpr const char* kAxisDirectionName = "Direction of Axis";
    static constexpr const char* kPropertiesName = "Edit Rotate3D Effect";

    /// Depth of the first mesh triangle.
    static constexpr int32_t kDepthBase = 100;

    TeskRotate3DEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const Rotate3DState& GetRotate3DState() const noexcept {
        return static_cast<const Rotate3DState&>(GetState());
    }
    TeskObject* GetRotateObject() const noexcept { return GetRotate3DState().object.get(); }
    int32_t GetAxisDirection() const noexcept { return GetRotate3DState().axisDirection; }
    void SetRotateObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetAxisDirection(int32_t degrees, ZoEditor::ZoEditTransaction* transaction);

    /// The mesh of one compilation over `rect` (twips), cut along the axis,
    /// triangle i at depth kDepthBase + i.
    MeshTriangleList BuildMesh(TeskSWFMovie& movie, const ZoRect& rect);
    /// Turns `mesh` for frame `frame` of `frameCount`, projects it and gives
    /// every triangle the one flat light of the turned object (or none when
    /// lighting is off).
    void MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                  int32_t frameCount) const;

    /// One frame per effect frame: the mesh, turned and lit. Scene 0 must
    /// exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    int GetObjectCount() const override { return 1; }
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Every index addresses the one object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;
};
