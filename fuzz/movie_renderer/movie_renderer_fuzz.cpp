// The player must refuse any bytes with a ZoException, never crash, and draw
// whatever it accepted.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/zo_exception.h"
#include "render/movie_player.h"

namespace {

// Big stages are drawn smaller, so the fuzzer explores records, not memory.
constexpr double kMaxPixels = 256.0 * 256.0;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    try {
        const ZoMoviePlayer player(std::span(data, size));
        const double pixels = double(player.Width()) * double(player.Height());
        const double scale = pixels > kMaxPixels ? std::sqrt(kMaxPixels / pixels) : 1.0;
        player.RenderFrame(0, scale);
        player.RenderFrame(player.FrameCount() - 1, scale);
    } catch (const ZoException&) {
    }
    return 0;
}
