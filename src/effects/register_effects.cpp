#include "effects/register_effects.h"

#include "effects/cross_fade_effect.h"
#include "effects/wave_effect.h"

void TeskRegisterEffects() {
    for (const TeskEffectInfo* info : {&TeskCrossFadeEffect::Info(), &TeskWaveEffect::Info()}) {
        if (!TeskEffect::FindInfo(info->guid))
            TeskEffect::Register(*info);
    }
}
