#pragma once
// A movie's frames as text, for silver files: every placement with its depth,
// its shape (numbered as first met), its matrix and its colour transformation.
#include <cstdio>
#include <map>
#include <string>

#include "effects/effect.h"
#include "effects/light_model.h"
#include "flash/swf_sequence.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"

namespace effect_test {

template <typename... Values>
std::string Format(const char* format, Values... values) {
    char buffer[200];
    std::snprintf(buffer, sizeof buffer, format, values...);
    return buffer;
}

/// The placements of every frame of scene 0 of `movie`.
inline std::string RecordPlacements(const TeskSWFMovie& movie) {
    std::map<const void*, int> shapes;
    std::string text;
    const ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    for (int32_t f = 0; f < scene.TotalFrames(); ++f) {
        text += Format("frame %d\n", f);
        for (const auto& p : scene.GetFrame(f)->GetPlacements()) {
            const int shape = shapes.emplace(p.object.Get(), shapes.size()).first->second;
            const auto& m = p.matrix;
            const auto& x = p.cxform;
            text += Format(
                "  depth %d shape %d matrix %d %d %d %d %d %d mult %d %d %d %d add %d %d %d %d\n",
                p.depth, shape, m.scaleX.raw, m.rotateSkew0.raw, m.rotateSkew1.raw, m.scaleY.raw,
                m.translateX.value, m.translateY.value, x.redMult, x.greenMult, x.blueMult,
                x.alphaMult, x.redAdd, x.greenAdd, x.blueAdd, x.alphaAdd);
        }
    }
    return text;
}

/// Brighter, less contrasting and coloured, from the lower left and higher.
inline TeskLighting ColouredLight() {
    TeskLighting lighting;
    lighting.brightness = 70;
    lighting.contrast = 30;
    lighting.lightColour = 0x40FFFF;
    lighting.darkColour = 0x800000;
    lighting.lightDirection = 300;
    lighting.lightAngle = 50;
    return lighting;
}

/// `effect` alone, `lengthMs` long, over a 100 × 80 movie at 12 frames per
/// second, with a blue solid object in slot 0.
inline std::string RecordEffect(TeskEffect& effect, int32_t lengthMs) {
    TeskSWFMovie movie;
    movie.SetWidth(100);
    movie.SetHeight(80);
    movie.SetFrameRate(12);
    effect.SetEffectTime(lengthMs, nullptr);
    ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>(0x3366CC);
    effect.SetObject(object, 0);
    effect.CompileAlone(movie);
    return RecordPlacements(movie);
}

}  // namespace effect_test
