#include "effects/register_effects.h"

#include "effects/cross_fade_effect.h"
#include "effects/cube_effect.h"
#include "effects/curl_up_effect.h"
#include "effects/explode_effect.h"
#include "effects/lens_effect.h"
#include "effects/morph_effect.h"
#include "effects/rotate_3d_effect.h"
#include "effects/spiral_effect.h"
#include "effects/test_effect.h"
#include "effects/twist_effect.h"
#include "effects/wave_effect.h"

void TeskRegisterEffects() {
    // In the order of the effect chooser.
    for (const TeskEffectInfo* info : {
             &TeskCrossFadeEffect::Info(),
             &TeskCubeEffect::Info(),
             &TeskCurlUpEffect::Info(),
             &TeskExplodeEffect::Info(),
             &TeskLensEffect::Info(),
             &TeskMorphEffect::Info(),
             &TeskRotate3DEffect::Info(),
             &TeskSpiralEffect::Info(),
             &TeskTestEffect::Info(),
             &TeskTwistEffect::Info(),
             &TeskWaveEffect::Info(),
         }) {
        if (!TeskEffect::FindInfo(info->guid))
            TeskEffect::Register(*info);
    }
}
