#pragma once
#include <array>
#include <vector>

#include "effects/three_d_effect.h"

/// Six experimental 3D treatments of one object, chosen by a type number.
/// Only the start object is drawn; the end object and the second parameter
/// are kept and edited but used by no type.
class TeskTestEffect : public Tesk3DEffect {
  public:
    enum TestType : int32_t {
        kExplode = 0,
        kSphere = 1,
        kCurlUp = 2,
        kCube = 3,
        kAlphaBlend = 4,
        kTwist = 5,
    };

    class TestState : public ThreeDState {
      public:
        TestState();
        TestState(const TestState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        ZoAutoPtr<TeskObject> startObject;
        ZoAutoPtr<TeskObject> endObject;
        int32_t testType = kExplode;  // other values compile as kExplode
        int32_t parameter1 = 0;       // 0..100: the twist's direction, 3.6° a unit
        int32_t parameter2 = 0;       // 0..100: used by no type
    };

    /// Names of the undoable changes the property page makes.
    static constexpr const char* kTestTypeName = "Edit Test Type";
    static constexpr const char* kParameter1Name = "Edit Parameter 1";
    static constexpr const char* kParameter2Name = "Edit Parameter 2";
    static constexpr const char* kPropertiesName = "Edit Test Effect";
    /// The page's note on the treatments.
    static constexpr const char* kExplanation =
        "These effects are new ideas being tested out. Many don't use the second object, or all "
        "the controls.";

    TeskTestEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const TestState& GetTestState() const noexcept {
        return static_cast<const TestState&>(GetState());
    }
    TeskObject* GetStartObject() const noexcept { return GetTestState().startObject.get(); }
    TeskObject* GetEndObject() const noexcept { return GetTestState().endObject.get(); }
    int32_t GetTestType() const noexcept { return GetTestState().testType; }
    int32_t GetParameter1() const noexcept { return GetTestState().parameter1; }
    int32_t GetParameter2() const noexcept { return GetTestState().parameter2; }
    void SetStartObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetEndObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetTestType(int32_t type, ZoEditor::ZoEditTransaction* transaction);
    void SetParameter1(int32_t value, ZoEditor::ZoEditTransaction* transaction);
    void SetParameter2(int32_t value, ZoEditor::ZoEditTransaction* transaction);

    /// The type that compiles: testType, or kExplode for unknown values.
    TestType GetCompiledType() const noexcept;

    /// Depth of the first mesh triangle. Every type starts here, clear of
    /// the clipping mask and the background object that the movie puts at
    /// depths 1 and 2.
    static constexpr int32_t kDepthBase = 100;

    /// The mesh of one compilation over `rect` (twips): the start object,
    /// enlarged 40 twips (none for "AlphaBlend"), triangle i at depth
    /// kDepthBase + i.
    MeshTriangleList BuildMesh(TeskSWFMovie& movie, const ZoRect& rect);

    /// The light factor at each corner of each mesh triangle.
    using CornerLights = std::vector<std::array<double, 3>>;
    /// Moves `mesh` for frame `frame` of `frameCount` as every type but
    /// "Cube" (see PlaceCube) does: corners, depths (0 hides a triangle) and
    /// colours; `light` receives the corner lights of the types with smooth
    /// shading.
    void MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame, int32_t frameCount,
                  CornerLights& light) const;
    /// "Cube": places `mesh` in `frame` once on each face of the spun cube
    /// that shows its front.
    void PlaceCube(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame, int32_t frameCount,
                   ZoFlash::ZoSWFFrame& out) const;

    /// One frame per effect frame in the treatment of the chosen type.
    /// Scene 0 must exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    int GetObjectCount() const override { return 2; }
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Index 0 is the start object, any other the end object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;

  private:
    // The types whose gradient triangles light the mesh.
    bool HasSmoothLight() const noexcept;
    // The direction of the "Twist" axis, degrees.
    double TwistDegrees() const noexcept;
};
