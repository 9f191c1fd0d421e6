#pragma once
// A document whose one effect is a cross fade from red to blue: compiles
// without the deforming effects, so publishing can be tested on its own.
#include <memory>

#include "document/file.h"
#include "effects/cross_fade_effect.h"
#include "objects/solid_object.h"

inline constexpr COLORREF kCrossFadeRed = 0x0000FF;
inline constexpr COLORREF kCrossFadeBlue = 0xFF0000;

struct CrossFadeDocument {
    CrossFadeDocument() {
        file.RemoveEffect(0, nullptr);
        auto effect = std::make_unique<TeskCrossFadeEffect>();
        fade = effect.get();
        ZoAutoPtr<TeskObject> red = std::make_unique<TeskSolidObject>(kCrossFadeRed);
        ZoAutoPtr<TeskObject> blue = std::make_unique<TeskSolidObject>(kCrossFadeBlue);
        fade->SetStartObject(red, nullptr);
        fade->SetEndObject(blue, nullptr);
        ZoAutoPtr<TeskEffect> owned = std::move(effect);
        file.InsertEffect(owned, 0, nullptr);
    }
    TeskFile file;
    TeskCrossFadeEffect* fade = nullptr;
};
