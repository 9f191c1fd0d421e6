#pragma once
#include "effects/animation_path.h"
#include "effects/grid_effect.h"

/// Moves a round magnifying (or reducing) lens across one object along an
/// animation path.
class TeskLensEffect : public TeskGridEffect {
  public:
    /// What the lens does at the end of its path.
    enum PathAtEnd : int32_t {
        kResetToBeginning = 0,
        kReturnToBeginning = 1,
    };

    class LensState : public GridState {
      public:
        LensState();
        LensState(const LensState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        ZoAutoPtr<TeskObject> object;
        int32_t lensRadius = 4000;  // twips
        int32_t lensPower = 30;     // −100 (reduce) to 100 (magnify)
        int32_t pathAtEnd = kResetToBeginning;
        int32_t pathRepeat = 1;  // runs along the path; no control sets it
        TeskAnimationPath path = TeskAnimationPath::Preset(0);
    };

    /// Names of the undoable changes the property page makes; the object
    /// change carries no name of its own.
    static constexpr const char* kLensRadiusName = "Edit Lens Radius";
    static constexpr const char* kLensPowerName = "Edit Lens Power";
    static constexpr const char* kPathAtEndName = "Edit Lens Path At End";
    static constexpr const char* kPathName = "Edit Lens Path";
    static constexpr const char* kPropertiesName = "Edit Lens Properties";

    /// Depth of the first mesh triangle.
    static constexpr int32_t kDepthBase = 100;

    TeskLensEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const LensState& GetLensState() const noexcept {
        return static_cast<const LensState&>(GetState());
    }
    TeskObject* GetLensObject() const noexcept { return GetLensState().object.get(); }
    int32_t GetLensRadius() const noexcept { return GetLensState().lensRadius; }
    int32_t GetLensPower() const noexcept { return GetLensState().lensPower; }
    int32_t GetPathAtEnd() const noexcept { return GetLensState().pathAtEnd; }
    int32_t GetPathRepeat() const noexcept { return GetLensState().pathRepeat; }
    const TeskAnimationPath& GetPath() const noexcept { return GetLensState().path; }
    void SetLensObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetLensRadius(int32_t twips, ZoEditor::ZoEditTransaction* transaction);
    void SetLensPower(int32_t power, ZoEditor::ZoEditTransaction* transaction);
    void SetPathAtEnd(int32_t pathAtEnd, ZoEditor::ZoEditTransaction* transaction);
    void SetPathRepeat(int32_t repeat, ZoEditor::ZoEditTransaction* transaction);
    void SetPath(const TeskAnimationPath& path, ZoEditor::ZoEditTransaction* transaction);

    /// The mesh of one compilation over `rect` (twips), outlines snapped to
    /// whole pixels, triangle i at depth kDepthBase + i.
    MeshTriangleList BuildMesh(TeskSWFMovie& movie, const ZoRect& rect);
    /// The lens centre (twips) in frame `frame` of `frameCount`.
    ZoPoint LensCentre(const ZoRect& rect, int32_t frame, int32_t frameCount) const;
    /// Moves every corner of `mesh` through the lens of frame `frame`.
    void MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame,
                  int32_t frameCount) const;

    /// One frame per effect frame: the mesh seen through the lens. Scene 0
    /// must exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    int GetObjectCount() const override { return 1; }
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Every index addresses the one object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;
};
