#pragma once
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

    /// Not available until the mesh geometry exists: throws ZoException.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    int GetObjectCount() const override { return 1; }
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Every index addresses the one object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;
};
