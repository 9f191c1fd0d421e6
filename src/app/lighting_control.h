#pragma once
// The lighting of a 3D effect, in a panel that drops down from its page:
// whether to light at all, brightness and contrast, the light and shadow
// colours with their strengths, and where the light comes from. Changes are
// applied together as one step after a pause, at once for the check box and
// the colours, and when the panel closes.
#include <QFrame>

#include "app/delayed_apply.h"
#include "effects/light_model.h"

class QCheckBox;
class TeskAngleDial;
class TeskColourButton;
class TeskFile;
class TeskHelpViewer;
class TeskSliderField;
class Tesk3DEffect;

class TeskLightingControl final : public QFrame {
    Q_OBJECT
  public:
    /// Names of the steps; several changes at once make "Edit Lighting".
    static constexpr const char* kUseLightingName = "Edit Use Lighting";
    static constexpr const char* kBrightnessName = "Edit Brightness";
    static constexpr const char* kContrastName = "Edit Contrast";
    static constexpr const char* kLightColourName = "Edit Light Colour";
    static constexpr const char* kLightStrengthName = "Edit Light Strength";
    static constexpr const char* kDarkColourName = "Edit Dark Colour";
    static constexpr const char* kDarkStrengthName = "Edit Dark Strength";
    static constexpr const char* kLightDirectionName = "Edit Light Direction";
    static constexpr const char* kLightAngleName = "Edit Light Angle";
    static constexpr const char* kLightingName = "Edit Lighting";

    /// The panel's What's This texts.
    static constexpr const char* kContextHelpFile = "::/LightingControl.txt";

    /// With `help`, the panel's fields explain themselves (What's This).
    TeskLightingControl(TeskFile& document, Tesk3DEffect& effect,
                        const TeskHelpViewer* help = nullptr, QWidget* parent = nullptr);

    /// Shows the effect's lighting.
    void Load();
    /// Applies what the panel shows as one step.
    void Apply();
    /// The lighting the controls show.
    TeskLighting GetShownLighting() const;

    /// A lit ball: the face of the button that drops the panel down.
    static QIcon Icon();

    void SetApplyDelay(int ms) { apply_.SetDelay(ms); }

  protected:
    void hideEvent(QHideEvent* event) override;

  private:
    void Edited();
    void UpdateEnabled();

    TeskFile& document_;
    Tesk3DEffect& effect_;
    TeskDelayedApply apply_;
    bool loading_ = false;
    QCheckBox* useLighting_;
    TeskSliderField* brightness_;
    TeskSliderField* contrast_;
    TeskColourButton* lightColour_;
    TeskSliderField* lightStrength_;
    TeskColourButton* darkColour_;
    TeskSliderField* darkStrength_;
    TeskAngleDial* lightDirection_;
    TeskAngleDial* lightAngle_;
};
