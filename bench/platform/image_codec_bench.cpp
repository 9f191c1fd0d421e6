// Decoding speed of a typical picture (1024 x 768, a photo-like mix of smooth
// gradients and noise) in each format: the preview builder decodes every new
// picture on its worker thread before the first frame can be shown.
#include <benchmark/benchmark.h>

#include <png.h>

#include "platform/image_codec.h"
#include "platform/image_test_files.h"
#include "platform/zo_random.h"

namespace {

using ImageTestFiles::Bytes;

constexpr int kWidth = 1024;
constexpr int kHeight = 768;

Bytes PhotoLike(int components) {
    ZoMsvcRandom random(7);
    Bytes samples;
    samples.reserve(std::size_t(kWidth) * kHeight * components);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const int noise = random.Next() % 16;
            const int values[] = {x / 4 + noise, y / 3 + noise, (x + y) / 7 + noise, 255};
            for (int c = 0; c < components; ++c) {
                samples.push_back(static_cast<uint8_t>(values[c]));
            }
        }
    }
    return samples;
}

// Bottom-up 24-bit BMP, the form most BMP files take.
Bytes Bmp24() {
    const Bytes rgb = PhotoLike(3);
    const uint32_t stride = kWidth * 3;  // 1024 * 3 is already a multiple of 4
    Bytes file(54, 0);
    const auto put = [&](std::size_t at, uint32_t value) {
        for (int i = 0; i < 4; ++i) {
            file[at + i] = static_cast<uint8_t>(value >> (8 * i));
        }
    };
    file[0] = 'B';
    file[1] = 'M';
    put(10, 54);
    put(14, 40);
    put(18, kWidth);
    put(22, kHeight);
    put(26, 1 | 24 << 16);
    for (int row = kHeight - 1; row >= 0; --row) {
        for (uint32_t i = 0; i < stride; i += 3) {
            const uint8_t* p = &rgb[row * stride + i];
            file.insert(file.end(), {p[2], p[1], p[0]});
        }
    }
    return file;
}

void Decode(benchmark::State& state, const Bytes& file) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZoImageCodec::Decode(file));
    }
    state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
    state.counters["file_kb"] = double(file.size()) / 1024;
}

void BM_DecodePng(benchmark::State& state) {
    static const Bytes file =
        ImageTestFiles::EncodePng({kWidth, kHeight, PNG_COLOR_TYPE_RGB, 8, PhotoLike(3)});
    Decode(state, file);
}

// Argument: 0 baseline, 1 progressive.
void BM_DecodeJpeg(benchmark::State& state) {
    static const Bytes files[] = {
        ImageTestFiles::EncodeJpeg({kWidth, kHeight, 3, false, PhotoLike(3)}),
        ImageTestFiles::EncodeJpeg({kWidth, kHeight, 3, true, PhotoLike(3)})};
    Decode(state, files[state.range(0)]);
}

void BM_DecodeGif(benchmark::State& state) {
    Bytes indices = PhotoLike(1);
    for (uint8_t& index : indices) {
        index &= 0x3F;
    }
    Bytes palette;
    for (int i = 0; i < 64; ++i) {
        palette.insert(palette.end(), {uint8_t(i * 4), uint8_t(255 - i * 4), uint8_t(i * 2)});
    }
    static const Bytes file = ImageTestFiles::EncodeGif(
        {kWidth, kHeight, 0, 0, kWidth, kHeight, false, -1, palette, indices});
    Decode(state, file);
}

void BM_DecodeBmp(benchmark::State& state) {
    static const Bytes file = Bmp24();
    Decode(state, file);
}

}  // namespace

BENCHMARK(BM_DecodePng)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DecodeJpeg)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DecodeGif)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DecodeBmp)->Unit(benchmark::kMillisecond);
