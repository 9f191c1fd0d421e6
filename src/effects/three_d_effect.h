#pragma once
#include "effects/grid_effect.h"
#include "platform/zo_colour.h"

/// A grid effect that moves its mesh through 3D space, projects it in
/// perspective and shades it with a light.
class Tesk3DEffect : public TeskGridEffect {
  public:
    struct Lighting {
        bool useLighting = true;
        int32_t brightness = 50;            // 0..100
        int32_t contrast = 50;              // 0..100
        COLORREF lightColour = 0x00FFFFFF;  // white
        int32_t lightStrength = 10;         // 0..255
        COLORREF darkColour = 0x00000000;   // black
        int32_t darkStrength = 100;         // 0..255
        int32_t lightDirection = 135;       // degrees on the screen, 0 up, clockwise
        int32_t lightAngle = 30;            // degrees away from the viewing axis
        friend bool operator==(const Lighting&, const Lighting&) = default;
    };

    class ThreeDState : public GridState {
      public:
        ThreeDState() = default;
        /// The lighting fields appear flat, beside the grid settings.
        void VisitFields(TeskFieldVisitor& visitor) override;

        Lighting lighting;

      protected:
        ThreeDState(const ThreeDState&) = default;
    };

    ThreeDState& GetThreeDState() noexcept { return static_cast<ThreeDState&>(GetState()); }
    const ThreeDState& GetThreeDState() const noexcept {
        return static_cast<const ThreeDState&>(GetState());
    }
    const Lighting& GetLighting() const noexcept { return GetThreeDState().lighting; }
    /// All lighting fields at once (the lighting control's apply).
    void SetLighting(const Lighting& lighting, ZoEditor::ZoEditTransaction* transaction);
    void SetUseLighting(bool use, ZoEditor::ZoEditTransaction* transaction);
    void SetBrightness(int32_t brightness, ZoEditor::ZoEditTransaction* transaction);
    void SetContrast(int32_t contrast, ZoEditor::ZoEditTransaction* transaction);
    void SetLightColour(COLORREF colour, ZoEditor::ZoEditTransaction* transaction);
    void SetLightStrength(int32_t strength, ZoEditor::ZoEditTransaction* transaction);
    void SetDarkColour(COLORREF colour, ZoEditor::ZoEditTransaction* transaction);
    void SetDarkStrength(int32_t strength, ZoEditor::ZoEditTransaction* transaction);
    void SetLightDirection(int32_t degrees, ZoEditor::ZoEditTransaction* transaction);
    void SetLightAngle(int32_t degrees, ZoEditor::ZoEditTransaction* transaction);

    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    using TeskGridEffect::TeskGridEffect;

  private:
    template <typename V>
    void SetLightingField(V Lighting::*field, V value, ZoEditor::ZoEditTransaction* transaction) {
        ChangeState<ThreeDState>([&](ThreeDState& state) { state.lighting.*field = value; },
                                 transaction);
    }
};
