// What the editor's preview costs: drawing one frame of the default-size
// document, and the memory a built, loaded and drawn preview holds.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include "flash/byte_stream.h"
#include "media/swf_movie.h"
#include "objects/image_object.h"
#include "publish/cross_fade_document.h"
#include "publish/movie_compiler.h"
#include "render/movie_player.h"

namespace {

std::vector<uint8_t> MovieBytes(const TeskFile& file) {
    ZoFlash::ZoFMemorySink sink;
    TeskBuildMovie(file)->WriteMovie(sink);
    return {sink.Bytes().begin(), sink.Bytes().end()};
}

void SetImageObjects(CrossFadeDocument& doc) {
    ZoAutoPtr<TeskObject> from = std::make_unique<TeskImageObject>("<PreviewImage1>");
    ZoAutoPtr<TeskObject> to = std::make_unique<TeskImageObject>("<PreviewImage2>");
    doc.fade->SetStartObject(from, nullptr);
    doc.fade->SetEndObject(to, nullptr);
}

// The default document's size (182 x 202), halfway through a cross fade.
void RenderFadeFrame(benchmark::State& state, bool images) {
    CrossFadeDocument doc;
    if (images)
        SetImageObjects(doc);
    const ZoMoviePlayer player(MovieBytes(doc.file));
    ZoRgbaImage image;
    for (auto _ : state) {
        player.RenderFrameInto(player.FrameCount() / 2, 1.0, image);
        benchmark::DoNotOptimize(image.rgba.data());
    }
    state.counters["pixels"] = image.width * image.height;
}
BENCHMARK_CAPTURE(RenderFadeFrame, solid_objects, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(RenderFadeFrame, image_objects, true)->Unit(benchmark::kMillisecond);

size_t HeapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// Heap held at once by a preview: the compiled movie's bytes, the loaded
// player with its decoded pictures, and one drawn frame.
void PreviewMemory(benchmark::State& state, bool images) {
    size_t held = 0;
    for (auto _ : state) {
        const size_t before = HeapInUse();
        CrossFadeDocument doc;
        if (images)
            SetImageObjects(doc);
        const std::vector<uint8_t> bytes = MovieBytes(doc.file);
        const ZoMoviePlayer player(bytes);
        const ZoRgbaImage frame = player.RenderFrame(0);
        held = HeapInUse() - before;
        benchmark::DoNotOptimize(frame.rgba.data());
    }
    state.counters["heap_MB"] = static_cast<double>(held) / (1 << 20);
}
BENCHMARK_CAPTURE(PreviewMemory, solid_objects, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PreviewMemory, image_objects, true)->Unit(benchmark::kMillisecond);

}  // namespace
