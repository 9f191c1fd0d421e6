// Compiling the largest wave a user can ask for: the budget's top of 200
// triangles over the longest effect, 10 s at 24 frames per second. Every frame
// places every mesh triangle and its light triangle.
#include <benchmark/benchmark.h>

#include "effects/wave_effect.h"
#include "flash/byte_stream.h"
#include "flash/swf_sequence.h"
#include "media/swf_movie.h"

namespace {

constexpr int kFrameRate = 24;
constexpr int kLengthMs = 10000;

void MakeLargest(TeskWaveEffect& wave) {
    TeskGridEffect::GridSettings grid;
    grid.maxTriangles = 200;
    wave.SetGridSettings(grid, nullptr);
    wave.SetEffectTime(kLengthMs, nullptr);
}

ZoAutoPtr<TeskSWFMovie> CompiledMovie(TeskWaveEffect& wave) {
    auto movie = std::make_unique<TeskSWFMovie>();
    movie->SetWidth(182);
    movie->SetHeight(202);
    movie->SetFrameRate(kFrameRate);
    movie->AddScene();
    wave.Compile(*movie, true);
    return movie;
}

int64_t Placements(const TeskSWFMovie& movie) {
    int64_t count = 0;
    const ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    for (int i = 0; i < scene.TotalFrames(); ++i)
        count += static_cast<int64_t>(scene.GetFrame(i)->GetPlacements().size());
    return count;
}

void BM_CompileWave(benchmark::State& state) {
    TeskWaveEffect wave;
    MakeLargest(wave);
    for (auto _ : state)
        benchmark::DoNotOptimize(CompiledMovie(wave));
}
BENCHMARK(BM_CompileWave)->Unit(benchmark::kMillisecond);

// What a preview build or a publish pays: compiling and writing the file.
void BM_CompileAndWriteWave(benchmark::State& state) {
    TeskWaveEffect wave;
    MakeLargest(wave);
    size_t bytes = 0;
    int64_t placements = 0;
    for (auto _ : state) {
        ZoAutoPtr<TeskSWFMovie> movie = CompiledMovie(wave);
        ZoFlash::ZoFMemorySink sink;
        movie->WriteMovie(sink);
        bytes = sink.Bytes().size();
        placements = Placements(*movie);
    }
    // Mesh triangles alone are half of the placements; each has a light triangle.
    state.counters["file_bytes"] = static_cast<double>(bytes);
    state.counters["placements"] = static_cast<double>(placements);
    state.counters["bytes_per_placement"] = static_cast<double>(bytes) / placements;
    state.counters["bytes_per_mesh_placement"] = 2.0 * static_cast<double>(bytes) / placements;
}
BENCHMARK(BM_CompileAndWriteWave)->Unit(benchmark::kMillisecond);

}  // namespace
