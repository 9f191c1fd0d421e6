#pragma once
#include "effects/grid_effect.h"
#include "effects/light_model.h"
#include "effects/light_triangles.h"
#include "platform/zo_colour.h"

/// A grid effect that moves its mesh through 3D space, projects it in
/// perspective (geometry/perspective.h) and shades it with a light: flat,
/// through each triangle's colour transformation (TeskLightModel::ApplyLight),
/// or smooth, with gradient triangles laid over the mesh (TeskLightTriangles).
class Tesk3DEffect : public TeskGridEffect {
  public:
    using Lighting = TeskLighting;

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
    /// The light the settings describe, for one compilation.
    TeskLightModel GetLightModel() const noexcept { return TeskLightModel(GetLighting()); }
    /// The gradient triangles of smooth shading for one compilation. Effects
    /// place each over its object triangle at the object triangle's depth
    /// plus the number of object triangles, so that all lie above the mesh.
    TeskLightTriangles BuildLightShapes() const {
        return TeskLightTriangles(GetLightModel(), GetGridSettings().roundMovedLightPoints);
    }
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
