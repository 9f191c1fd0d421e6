// What the editor's preview costs: drawing one frame of the default-size
// document or of a large wave over a photo, and the memory a built, loaded and
// drawn preview holds.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cmath>
#include <fstream>

#include "effects/wave_effect.h"
#include "flash/byte_stream.h"
#include "media/swf_movie.h"
#include "objects/image_object.h"
#include "platform/temp_directory.h"
#include "publish/cross_fade_document.h"
#include "publish/movie_compiler.h"
#include "render/frame_export.h"
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

// A 640 x 480 picture with a photo's variety: smooth light over fine
// texture, so that neighbouring pixels of every piece differ.
std::filesystem::path PhotoFile() {
    ZoRgbaImage photo;
    photo.width = 640;
    photo.height = 480;
    photo.rgba.resize(640 * 480 * 4);
    for (int y = 0; y < photo.height; ++y)
        for (int x = 0; x < photo.width; ++x) {
            uint8_t* p = &photo.rgba[(static_cast<size_t>(y) * photo.width + x) * 4];
            const double texture = 24 * std::sin(x * 0.7) * std::cos(y * 0.9);
            p[0] = static_cast<uint8_t>(std::clamp(x * 0.3 + texture + 40, 0.0, 255.0));
            p[1] = static_cast<uint8_t>(std::clamp(y * 0.4 + texture + 30, 0.0, 255.0));
            p[2] = static_cast<uint8_t>(std::clamp(200 - y * 0.2 + texture, 0.0, 255.0));
            p[3] = 255;
        }
    const std::filesystem::path file = ZoMakeTempFileName(".png");
    const std::vector<uint8_t> png = ZoEncodePng(photo);
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
    return file;
}

// The largest wave a user can ask for (a budget of 200 triangles) over a
// 640 x 480 photo filling a movie of that size, halfway through.
void RenderWaveFrame(benchmark::State& state) {
    TeskFile file;
    file.SetWidth(640, nullptr);
    file.SetHeight(480, nullptr);
    ZoAutoPtr<TeskEffect> wave = std::make_unique<TeskWaveEffect>();
    TeskGridEffect::GridSettings grid;
    grid.maxTriangles = 200;
    static_cast<TeskWaveEffect&>(*wave).SetGridSettings(grid, nullptr);
    const std::filesystem::path photoFile = PhotoFile();
    ZoAutoPtr<TeskObject> photo = std::make_unique<TeskImageObject>(photoFile.string());
    wave->SetObject(photo, 0);
    file.ReplaceEffect(wave, 0, nullptr);
    const ZoMoviePlayer player(MovieBytes(file));  // the movie holds the picture
    std::filesystem::remove(photoFile);
    ZoRgbaImage image;
    for (auto _ : state) {
        player.RenderFrameInto(player.FrameCount() / 2, 1.0, image);
        benchmark::DoNotOptimize(image.rgba.data());
    }
    state.counters["pixels"] = image.width * image.height;
}
BENCHMARK(RenderWaveFrame)->Unit(benchmark::kMillisecond);

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
