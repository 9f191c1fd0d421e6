#pragma once
// The page of each effect type; TeskCreatePropertyPage picks among them.
#include <memory>

#include "app/pages/effect_property_page.h"

class TeskCrossFadeEffect;
class TeskCubeEffect;
class TeskCurlUpEffect;
class TeskExplodeEffect;
class TeskLensEffect;
class TeskMorphEffect;
class TeskRotate3DEffect;
class TeskSpiralEffect;
class TeskTestEffect;
class TeskTwistEffect;
class TeskWaveEffect;

using TeskPagePtr = std::unique_ptr<TeskEffectPropertyPage>;

TeskPagePtr TeskMakePage(TeskCrossFadeEffect& effect, const TeskPageContext& context,
                         QWidget* parent);
TeskPagePtr TeskMakePage(TeskCubeEffect& effect, const TeskPageContext& context, QWidget* parent);
TeskPagePtr TeskMakePage(TeskCurlUpEffect& effect, const TeskPageContext& context, QWidget* parent);
TeskPagePtr TeskMakePage(TeskExplodeEffect& effect, const TeskPageContext& context,
                         QWidget* parent);
TeskPagePtr TeskMakePage(TeskLensEffect& effect, const TeskPageContext& context, QWidget* parent);
TeskPagePtr TeskMakePage(TeskMorphEffect& effect, const TeskPageContext& context, QWidget* parent);
TeskPagePtr TeskMakePage(TeskRotate3DEffect& effect, const TeskPageContext& context,
                         QWidget* parent);
TeskPagePtr TeskMakePage(TeskSpiralEffect& effect, const TeskPageContext& context, QWidget* parent);
TeskPagePtr TeskMakePage(TeskTestEffect& effect, const TeskPageContext& context, QWidget* parent);
TeskPagePtr TeskMakePage(TeskTwistEffect& effect, const TeskPageContext& context, QWidget* parent);
TeskPagePtr TeskMakePage(TeskWaveEffect& effect, const TeskPageContext& context, QWidget* parent);
