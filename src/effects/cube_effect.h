#pragma once
#include <array>

#include "effects/three_d_effect.h"

/// Folds objects onto the six faces of a cube, tilts the cube and spins it
/// once about an axis, in perspective and with flat light per face.
class TeskCubeEffect : public Tesk3DEffect {
  public:
    enum Face : int32_t { kTop, kBottom, kLeft, kRight, kFront, kBack, kFaceCount };
    /// The face names of the page's tabs, in face order.
    static constexpr std::array<const char*, kFaceCount> kFaceNames{"Top",   "Bottom", "Left",
                                                                    "Right", "Front",  "Back"};
    /// The "Same as" list entries are this followed by a face name.
    static constexpr const char* kSameAsPrefix = "Same as ";
    /// The `sameAs` of a face that shows its own object.
    static constexpr int32_t kOwnObject = 6;

    struct CubeFace {
        ZoAutoPtr<TeskObject> object;  // may be empty
        /// The object's turn on its face: 0 = 0°, 1 = 180°, 2 = 90°, 3 = 270°.
        int32_t objectDirection = 0;
        /// The face whose object this face shows when it has none of its own.
        int32_t sameAs = kOwnObject;
    };

    class CubeState : public ThreeDState {
      public:
        /// Face 0 shows the first preview picture; the others show face 0's.
        CubeState();
        CubeState(const CubeState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        std::array<CubeFace, kFaceCount> faces;
        int32_t rotateX = 45;    // degrees
        int32_t rotateZ = 35;    // degrees
        int32_t rotateAxis = 0;  // degrees the spin axis leans from the vertical
        int32_t scaleSize = 75;  // percent
    };

    /// Names of the undoable changes the property page makes; a new object
    /// for a face carries no name of its own.
    static constexpr const char* kSameAsName = "Object Same As";
    static constexpr const char* kDirectionName = "Object Direction";
    static constexpr const char* kRotateXName = "Rotate X Angle";
    static constexpr const char* kRotateZName = "Rotate Z Angle";
    static constexpr const char* kRotateAxisName = "Rotate Axis Angle";
    static constexpr const char* kScaleSizeName = "Scale Size";
    static constexpr const char* kPropertiesName = "Cube Effect";

    TeskCubeEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const CubeState& GetCubeState() const noexcept {
        return static_cast<const CubeState&>(GetState());
    }
    const CubeFace& GetFace(int32_t face) const noexcept { return GetCubeState().faces[face]; }
    /// The object face `face` shows: its own, or else that of face `sameAs`
    /// when that face has one. Null when neither has.
    TeskObject* GetShownObject(int32_t face) const noexcept;
    int32_t GetRotateX() const noexcept { return GetCubeState().rotateX; }
    int32_t GetRotateZ() const noexcept { return GetCubeState().rotateZ; }
    int32_t GetRotateAxis() const noexcept { return GetCubeState().rotateAxis; }
    int32_t GetScaleSize() const noexcept { return GetCubeState().scaleSize; }

    /// Sets the own object of face `face` (0..5), leaving its `sameAs`.
    void SetFaceObject(int32_t face, ZoAutoPtr<TeskObject>& object,
                       ZoEditor::ZoEditTransaction* transaction);
    void SetFaceDirection(int32_t face, int32_t direction,
                          ZoEditor::ZoEditTransaction* transaction);
    void SetFaceSameAs(int32_t face, int32_t sameAs, ZoEditor::ZoEditTransaction* transaction);
    void SetRotateX(int32_t degrees, ZoEditor::ZoEditTransaction* transaction);
    void SetRotateZ(int32_t degrees, ZoEditor::ZoEditTransaction* transaction);
    void SetRotateAxis(int32_t degrees, ZoEditor::ZoEditTransaction* transaction);
    void SetScaleSize(int32_t percent, ZoEditor::ZoEditTransaction* transaction);

    /// Depth of each face's first triangle at rest; every frame moves the
    /// faces into depth bands of their own.
    static constexpr int32_t kDepthBase = 100;

    using FaceMeshes = std::array<MeshTriangleList, kFaceCount>;
    /// The meshes of one compilation over `rect` (twips): one grid, with the
    /// triangle budget shared by the six faces, cut from each face's shown
    /// object. A face with nothing to show has no triangles; faces that show
    /// the same object share its shapes.
    FaceMeshes BuildMeshes(TeskSWFMovie& movie, const ZoRect& rect);
    /// Moves every face to where the spinning cube carries it in frame
    /// `frame` of `frameCount`: triangles that face the viewer lie above all
    /// that face away, each face in its own band, and each face is lit flat.
    void MoveFaces(FaceMeshes& meshes, const ZoRect& rect, int32_t frame, int32_t frameCount) const;

    /// One frame per effect frame: every face's triangles, in the depth
    /// order MoveFaces gives them. Scene 0 must exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    /// The number of faces with an object of their own.
    int GetObjectCount() const override;
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Slot i is the own object of the i-th face that has one; beyond those,
    /// face 0's.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;

  private:
    template <typename V>
    void SetFaceField(int32_t face, V CubeFace::*field, V value,
                      ZoEditor::ZoEditTransaction* transaction);
};
