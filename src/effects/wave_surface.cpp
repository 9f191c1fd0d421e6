#include "effects/wave_surface.h"

#include <cmath>
#include <numbers>

#include "effects/wave_effect.h"
#include "platform/zo_units.h"

namespace {

// One turn of the wave; a shade below 2π, as the wave has always used.
constexpr double kTurn = 6.283184;

}  // namespace

TeskWaveSurface::TeskWaveSurface(int32_t wavelength, int32_t amplitude, int32_t direction,
                                 int32_t style, const ZoRect& rect) noexcept
    : style_(style) {
    const double d = direction * kZoDegreesToRadians;
    dx_ = std::sin(d);
    dy_ = -std::cos(d);
    extent_ = rect.Width() * std::abs(dx_) + rect.Height() * std::abs(dy_);
    centreX_ = (rect.left + rect.right) / 2;
    centreY_ = (rect.top + rect.bottom) / 2;
    startX_ = centreX_ - extent_ / 2.0 * dx_;
    startY_ = centreY_ - extent_ / 2.0 * dy_;
    wavelength_ = wavelength * extent_ / 100.0;
    amplitude_ = amplitude * extent_ / 1000.0;
}

TeskWaveSurface::Height TeskWaveSurface::HeightAt(double along, double progress) const noexcept {
    const double cycles = along / wavelength_;
    double amplitude = amplitude_;
    double phase = 0.0;
    switch (style_) {
        case TeskWaveEffect::kPulse:
            // One crest, from before the start edge to beyond the far edge;
            // flat everywhere else.
            phase = (progress * (extent_ / wavelength_ + 1.0) - cycles) * kTurn;
            if (phase < 0.0 || phase > kTurn)
                return {};
            break;
        case TeskWaveEffect::kRiseAndFall:
            amplitude *= std::sin(std::numbers::pi * progress);
            phase = (2.0 * progress - cycles) * kTurn;
            break;
        default:
            phase = (progress - cycles) * kTurn;
            break;
    }
    return {amplitude * std::sin(phase), std::cos(phase) * kTurn * amplitude / wavelength_};
}

TeskSurfacePoint TeskWaveSurface::At(ZoPoint rest, double progress) const noexcept {
    // A wave without length (a zero wavelength or an empty rectangle) has no
    // shape: the surface stays flat.
    Height h;
    if (wavelength_ > 0.0) {
        const double along = (rest.x - startX_) * dx_ + (rest.y - startY_) * dy_;
        h = HeightAt(along, progress);
    }
    return {{static_cast<double>(rest.x - centreX_), static_cast<double>(rest.y - centreY_), h.z},
            TeskNormalise({dx_ * h.slope, dy_ * h.slope, 1.0})};
}
