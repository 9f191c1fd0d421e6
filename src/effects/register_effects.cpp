#include "effects/register_effects.h"

#include "effects/cross_fade_effect.h"
#include "effects/wave_effect.h"

void TeskRegisterEffects() {
    for (const TeskEffectInfo* info : {&TeskCrossFadeEffect::Info()}) {
        if (!TeskEffect::FindInfo(info->guid))
            TeskEffect::Register(*info);
    }
}

void TeskCreateStoredEffect(const ZoGuid& guid, ZoAutoPtr<TeskEffect>& out) {
    TeskEffect::Create(guid, out);
    if (!out && guid == TeskWaveEffect::Info().guid)
        out = TeskWaveEffect::Info().factory();
}
