// The preview lays text out again after every edit, and every save and clone
// goes through RTF; these keep an eye on both for a page of text.
#include <benchmark/benchmark.h>

#include "text/rich_text.h"

namespace {

// About 3.6 KB in two paragraphs with a bold Arial stretch.
ZoRichText PageOfText() {
    ZoString paragraph;
    for (int i = 0; i < 40; ++i) {
        paragraph += "The quick brown fox jumps over the lazy dog. ";
    }
    ZoRichText document;
    document.InsertText(0, paragraph + "\n" + paragraph);
    document.ModifyFormat(0, 100, [](ZoTextFormat& f) {
        f.SetFontName("Arial");
        f.SetFlag(kZoTextBold, true);
    });
    return document;
}

void LayOutPage(benchmark::State& state) {
    ZoRichText document = PageOfText();
    int32_t width = 400;
    for (auto _ : state) {
        document.SetPageSize(width, 300);  // a new width forces a new layout
        width = width == 400 ? 401 : 400;
        benchmark::DoNotOptimize(document.Lines().size());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(document.Length()));
}
BENCHMARK(LayOutPage);

void WriteRtf(benchmark::State& state) {
    ZoRichText document = PageOfText();
    ZoString rtf;
    for (auto _ : state) {
        document.GetRTF(rtf);
        benchmark::DoNotOptimize(rtf.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(rtf.size()));
}
BENCHMARK(WriteRtf);

void ReadRtf(benchmark::State& state) {
    ZoRichText source = PageOfText();
    ZoString rtf;
    source.GetRTF(rtf);
    ZoRichText document;
    for (auto _ : state) {
        benchmark::DoNotOptimize(document.SetRTF(rtf));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(rtf.size()));
}
BENCHMARK(ReadRtf);

}  // namespace
