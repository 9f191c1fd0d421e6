#pragma once
#include <array>
#include <vector>

#include "effects/three_d_effect.h"

/// A sine wave that travels across one object along a direction, lifting
/// its surface towards the viewer and away, in perspective and lit.
class TeskWaveEffect : public Tesk3DEffect {
  public:
    enum WaveStyle : int32_t {
        kContinuous = 0,
        kPulse = 1,
        kRiseAndFall = 2,
    };

    class WaveState : public ThreeDState {
      public:
        WaveState();
        WaveState(const WaveState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        ZoAutoPtr<TeskObject> object;
        int32_t wavelength = 140;  // hundredths of the object's extent along the wave
        int32_t amplitude = 100;   // thousandths of that extent
        int32_t direction = 135;   // degrees on the screen, 0 up, clockwise
        int32_t waveStyle = kContinuous;
    };

    /// Names of the undoable changes the property page makes; the object
    /// change carries no name of its own.
    static constexpr const char* kWavelengthName = "Edit Wavelength";
    static constexpr const char* kAmplitudeName = "Edit Amplitude";
    static constexpr const char* kDirectionName = "Edit Direction";
    static constexpr const char* kWaveStyleName = "Edit Wave Style";
    static constexpr const char* kPropertiesName = "Edit Wave Effect";

    TeskWaveEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const WaveState& GetWaveState() const noexcept {
        return static_cast<const WaveState&>(GetState());
    }
    TeskObject* GetWaveObject() const noexcept { return GetWaveState().object.get(); }
    int32_t GetWavelength() const noexcept { return GetWaveState().wavelength; }
    int32_t GetAmplitude() const noexcept { return GetWaveState().amplitude; }
    int32_t GetDirection() const noexcept { return GetWaveState().direction; }
    int32_t GetWaveStyle() const noexcept { return GetWaveState().waveStyle; }
    void SetWaveObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetWavelength(int32_t wavelength, ZoEditor::ZoEditTransaction* transaction);
    void SetAmplitude(int32_t amplitude, ZoEditor::ZoEditTransaction* transaction);
    void SetDirection(int32_t degrees, ZoEditor::ZoEditTransaction* transaction);
    void SetWaveStyle(int32_t style, ZoEditor::ZoEditTransaction* transaction);

    /// Depth of the first mesh triangle; the light triangles follow the mesh.
    static constexpr int32_t kDepthBase = 100;

    /// The light factor at each corner of each mesh triangle.
    using CornerLights = std::vector<std::array<double, 3>>;

    /// The mesh of one compilation over `rect` (twips): the object cut along
    /// a grid that runs across the wave, triangle i at depth kDepthBase + i.
    /// Settings that clamp are stored back (see BuildTriangulation).
    MeshTriangleList BuildMesh(TeskSWFMovie& movie, const ZoRect& rect);
    /// Moves every triangle of `mesh` to where the wave carries it in frame
    /// `frame` of `frameCount`, seen in perspective; `light` receives the
    /// light at each corner.
    void MoveMesh(MeshTriangleList& mesh, const ZoRect& rect, int32_t frame, int32_t frameCount,
                  CornerLights& light) const;

    /// One frame per effect frame: the mesh, cut across the wave direction,
    /// moved and projected for that frame's progress, with a gradient
    /// triangle over each mesh triangle for the light. Scene 0 must exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    int GetObjectCount() const override { return 1; }
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Every index addresses the one object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;
};
