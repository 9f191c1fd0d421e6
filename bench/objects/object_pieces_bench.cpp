// Cutting objects into mesh pieces and writing them: what a mesh effect asks
// of an object for every preview build.
#include <benchmark/benchmark.h>

#include "flash/byte_stream.h"
#include "flash/swf_shape.h"
#include "media/swf_image.h"
#include "media/swf_movie.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"
#include "objects/text_object.h"

namespace {

constexpr ZoRect kRect{0, 0, 6400, 4800};

/// The triangles of a columns x rows grid over kRect, two per cell.
std::vector<TeskTriangle> Grid(int columns, int rows) {
    std::vector<TeskTriangle> triangles;
    const int w = kRect.Width() / columns, h = kRect.Height() / rows;
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x) {
            const ZoPoint a{x * w, y * h}, b{a.x + w, a.y}, c{a.x + w, a.y + h}, d{a.x, a.y + h};
            triangles.push_back({a, b, c});
            triangles.push_back({a, c, d});
        }
    return triangles;
}

/// Every piece of `object` in one frame of a new movie, written to memory.
void CutAndWrite(benchmark::State& state, TeskObject& object) {
    const auto triangles = Grid(20, 15);
    for (auto _ : state) {
        TeskSWFMovie movie;
        auto* frame = movie.AddScene()->AddFrame();
        int depth = 1;
        // As a mesh effect asks: text builds its glyph outlines here.
        object.PrepareOutput();
        for (const auto& triangle : triangles)
            frame->PlaceObject(object.MakeTriangleShape(movie, kRect, triangle), nullptr, depth++,
                               {}, 0, -1, {});
        object.ReleaseOutput();
        ZoFlash::ZoFMemorySink sink;
        movie.WriteMovie(sink);
        benchmark::DoNotOptimize(sink.TakeBytes());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(triangles.size()));
}

void BM_SolidPieces(benchmark::State& state) {
    TeskSolidObject solid;
    CutAndWrite(state, solid);
}
BENCHMARK(BM_SolidPieces)->Unit(benchmark::kMillisecond);

// The picture is encoded once, by the first build; later builds reuse it.
void BM_ImagePieces(benchmark::State& state) {
    TeskImageObject image;
    CutAndWrite(state, image);
}
BENCHMARK(BM_ImagePieces)->Unit(benchmark::kMillisecond);

// A paragraph of 18-point text filling most of the page, in two faces.
TeskTextObject Paragraph() {
    TeskTextObject text;
    ZoString rtf = R"({\rtf1\ansi{\fonttbl{\f0 Arial;}{\f1 Times New Roman;}}\f0\fs36 )";
    for (int i = 0; i < 6; ++i)
        rtf += R"(The quick brown fox jumps over the {\i\f1 lazy dog}. )";
    text.GetRichText().SetRTF(rtf + "}");
    text.SetPageSize({kRect.Width() / 20, kRect.Height() / 20});
    return text;
}

void BM_TextPieces(benchmark::State& state) {
    TeskTextObject text = Paragraph();
    CutAndWrite(state, text);
}
BENCHMARK(BM_TextPieces)->Unit(benchmark::kMillisecond);

// The whole text as one SWF text, with its two fonts' glyphs outlined.
void BM_TextWhole(benchmark::State& state) {
    TeskTextObject text = Paragraph();
    for (auto _ : state) {
        TeskSWFMovie movie;
        movie.AddScene()->AddFrame()->PlaceObject(text.MakeShape(movie, kRect), nullptr, 1, {}, 0,
                                                  -1, {});
        ZoFlash::ZoFMemorySink sink;
        movie.WriteMovie(sink);
        benchmark::DoNotOptimize(sink.TakeBytes());
    }
}
BENCHMARK(BM_TextWhole)->Unit(benchmark::kMillisecond);

// What the first build of a picture pays: the lossless encoding.
void BM_EncodeBuiltInPicture(benchmark::State& state) {
    auto picture = ZoMakeCounted<ZoReferenceImage>(&ZoBuiltInPicture("<PreviewImage1>"));
    for (auto _ : state) {
        auto image = ZoMakeCounted<TeskSWFImage>(
            "<PreviewImage1>", picture, ZoFlash::ZoSWFImage::kOutputLossless, kZoNoColour, 0);
        ZoFlash::ZoSWFMovie movie("", 10, 10, 12, ZoFlash::ZoSWFColour(0, 0, 0, 255));
        auto shape = ZoMakeCounted<ZoFlash::ZoSWFShape>();
        shape->SetClippedBitmapFill(image, 0, 0, 20, 20);
        shape->Rectangle({0, 0, 200, 200});
        movie.AddScene()->AddFrame()->PlaceObject(shape, nullptr, 1, {}, 0, -1, {});
        ZoFlash::ZoFMemorySink sink;
        movie.WriteMovie(sink);
        benchmark::DoNotOptimize(sink.TakeBytes());
    }
}
BENCHMARK(BM_EncodeBuiltInPicture)->Unit(benchmark::kMillisecond);

}  // namespace
