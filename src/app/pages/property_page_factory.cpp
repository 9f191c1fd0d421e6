#include "app/pages/page_makers.h"
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

namespace {

// The effects below the editor know nothing of pages, so the editor finds
// the page of each type here.
template <typename E>
TeskPagePtr MakeIf(TeskEffect& effect, const TeskPageContext& context, QWidget* parent) {
    auto* typed = dynamic_cast<E*>(&effect);
    return typed ? TeskMakePage(*typed, context, parent) : nullptr;
}

template <typename... Effects>
TeskPagePtr MakeFirst(TeskEffect& effect, const TeskPageContext& context, QWidget* parent) {
    TeskPagePtr page;
    (void)((page = MakeIf<Effects>(effect, context, parent)) || ...);
    return page;
}

}  // namespace

std::unique_ptr<TeskEffectPropertyPage> TeskCreatePropertyPage(TeskEffect& effect,
                                                               const TeskPageContext& context,
                                                               QWidget* parent) {
    return MakeFirst<TeskCrossFadeEffect, TeskCubeEffect, TeskCurlUpEffect, TeskExplodeEffect,
                     TeskLensEffect, TeskMorphEffect, TeskRotate3DEffect, TeskSpiralEffect,
                     TeskTestEffect, TeskTwistEffect, TeskWaveEffect>(effect, context, parent);
}
