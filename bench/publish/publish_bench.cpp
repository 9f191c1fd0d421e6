// Publishing a wave over a full-HD photo: the movie every piece of which
// fills with the same JPEG, which must go into the file once, as it is.
#include <benchmark/benchmark.h>
#include <jpeglib.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "document/file.h"
#include "effects/wave_effect.h"
#include "media/resource_manager.h"
#include "objects/image_object.h"
#include "platform/temp_directory.h"
#include "publish/movie_compiler.h"
#include "support/swf_reader.h"

namespace {

namespace fs = std::filesystem;

constexpr int kPhotoWidth = 1920, kPhotoHeight = 1080;
constexpr int kTriangles = 200;
constexpr int kFrames = 48;  // 4000 ms at 12 frames per second
constexpr uint16_t kDefineBitsJpeg2 = 21;

// A photo-like picture: smooth colour ramps with fine detail, so that the
// JPEG is about as large as a real one.
fs::path WritePhoto() {
    const fs::path path = ZoMakeTempFileName(".jpg");
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    FILE* file = std::fopen(path.c_str(), "wb");
    jpeg_stdio_dest(&info, file);
    info.image_width = kPhotoWidth;
    info.image_height = kPhotoHeight;
    info.input_components = 3;
    info.in_color_space = JCS_RGB;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, 85, TRUE);
    jpeg_start_compress(&info, TRUE);
    std::vector<JSAMPLE> row(kPhotoWidth * 3);
    while (info.next_scanline < info.image_height) {
        const unsigned y = info.next_scanline;
        for (unsigned x = 0; x < kPhotoWidth; ++x) {
            row[x * 3] = static_cast<JSAMPLE>(x * 255 / kPhotoWidth);
            row[x * 3 + 1] = static_cast<JSAMPLE>(y * 255 / kPhotoHeight);
            row[x * 3 + 2] = static_cast<JSAMPLE>((x * 7 + y * 13) % 256);
        }
        JSAMPROW rows[] = {row.data()};
        jpeg_write_scanlines(&info, rows, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    std::fclose(file);
    return path;
}

struct WaveDocument {
    WaveDocument() {
        file.SetWidth(960, nullptr);
        file.SetHeight(540, nullptr);
        file.SetFrameRate(12, nullptr);
        auto* wave = dynamic_cast<TeskWaveEffect*>(file.GetEffect(0));
        ZoAutoPtr<TeskObject> picture = std::make_unique<TeskImageObject>(photo.string());
        wave->SetWaveObject(picture, nullptr);
        auto grid = wave->GetGridSettings();
        grid.maxTriangles = kTriangles;
        wave->SetGridSettings(grid, nullptr);
        wave->SetTiming({0, 0, kFrames * 1000 / 12, 0, 0}, nullptr);
    }
    const fs::path photo = WritePhoto();
    const fs::path movie = ZoMakeTempFileName(".swf");
    TeskFile file;
};

std::vector<uint8_t> ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The claim measured is only worth anything if the movie is what it should
// be: valid, with the photo's JPEG defined once.
bool EmbedsThePhotoOnce(const WaveDocument& document, benchmark::State& state) {
    const SwfTest::Validation validation = SwfTest::ValidateSwf(ReadAll(document.movie));
    if (!validation.problems.empty()) {
        state.SkipWithError(validation.problems.front().c_str());
        return false;
    }
    const auto& tags = validation.movie.characterTags;
    const auto jpegs = std::count_if(
        tags.begin(), tags.end(), [](const auto& tag) { return tag.second == kDefineBitsJpeg2; });
    if (jpegs != 1 || validation.movie.bitmaps.size() != 1) {
        state.SkipWithError("the photo is not defined exactly once as a JPEG");
        return false;
    }
    state.counters["frames"] = validation.movie.frameCount;
    state.counters["movie_kB"] = static_cast<double>(fs::file_size(document.movie)) / 1000;
    state.counters["photo_kB"] = static_cast<double>(fs::file_size(document.photo)) / 1000;
    return true;
}

// Warm: the picture is decoded already, as when the preview has shown it.
// Cold: every publish decodes the photo first, as `vimbo publish` does.
void BM_PublishWaveOverPhoto(benchmark::State& state) {
    const bool cold = state.range(0) != 0;
    WaveDocument document;
    TeskWriteMovie(document.file, document.movie);
    if (!EmbedsThePhotoOnce(document, state))
        return;
    for (auto _ : state) {
        if (cold) {
            state.PauseTiming();
            TeskResourceManager& manager = TeskGetResourceManager();
            manager.RemoveResource(
                manager.FindResource(ZoResourceKey(document.photo.string()), true).Get());
            state.ResumeTiming();
        }
        TeskWriteMovie(document.file, document.movie);
    }
}
BENCHMARK(BM_PublishWaveOverPhoto)->ArgName("cold")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
