// 500 rectangles moved, turned, scaled and recoloured in each of 200 frames
// (100,000 placements), written by the movie writer and, as the baseline, by
// the most direct encoding of the same placements into one byte buffer.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <atomic>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <new>
#include <vector>

#include "flash/swf_movie.h"
#include "flash/swf_shape.h"
#include "platform/zo_units.h"

using namespace ZoFlash;

namespace {

std::atomic<size_t> gHeapNow{0}, gHeapPeak{0};

constexpr int kDepths = 500;
constexpr int kFrames = 200;

ZoRect BoxOf(int depth) {
    return {0, 0, 200 + depth, 150 + depth};
}

COLORREF ColourOf(int depth) {
    return ZoRGB(static_cast<uint8_t>(depth), static_cast<uint8_t>(depth * 7), 200);
}

/// The placement of `depth` in `frame`: every term changes every frame.
struct Pose {
    double a, b, c, d, tx, ty;
    double scale[4], offset[4];
};

Pose PoseOf(int depth, int frame) {
    const double angle = (depth * 7 + frame * 3) * kZoDegreesToRadians;
    const double s = 1 + 0.25 * std::sin((depth + frame) * 0.05);
    return {s * std::cos(angle),
            -s * std::sin(angle),
            s * std::sin(angle),
            s * std::cos(angle),
            (depth % 25) * 500 + frame * 3.5,
            (depth / 25) * 500 + frame * 2.25,
            {1, 0.9, 0.8, 0.5 + 0.5 * frame / (kFrames - 1)},
            {10, -10, 5, -static_cast<double>(frame)}};
}

/// Places every box in every frame with the pose `poseOf(depth, frame)`,
/// computed or prepared, as effects do through the ZoFlash API.
template <typename PoseSource>
void BuildFrames(ZoSWFMovie& movie, PoseSource poseOf) {
    std::vector<ZoAutoInterface2<ZoSWFObject>> boxes;
    for (int depth = 1; depth <= kDepths; ++depth) {
        auto shape = ZoMakeCounted<ZoSWFShape>();
        shape->SetSolidFill(ColourOf(depth), 255);
        shape->Rectangle(BoxOf(depth));
        boxes.push_back(shape);
    }
    ZoSWFScene* scene = movie.AddScene();
    ZoSWFTransformation matrix;
    ZoSWFColourTransformation colour;
    for (int frame = 0; frame < kFrames; ++frame) {
        ZoSWFFrame* f = scene->AddFrame();
        for (int depth = 1; depth <= kDepths; ++depth) {
            const Pose& p = poseOf(depth, frame);
            matrix.SetIdentity();
            matrix.AppendMatrix(p.a, p.b, p.c, p.d, p.tx, p.ty);
            colour.SetScale(p.scale[0], p.scale[1], p.scale[2], p.scale[3]);
            colour.SetOffset(p.offset[0], p.offset[1], p.offset[2], p.offset[3]);
            f->PlaceObject(boxes[depth - 1], nullptr, depth, matrix, 0, -1, colour);
        }
    }
}

template <typename PoseSource>
void WriteWithMovie(ZoFByteSink& sink, PoseSource poseOf) {
    ZoSWFMovie movie("", 640, 480, 25, ZoSWFColour(0xFFFFFF, 255));
    BuildFrames(movie, poseOf);
    movie.WriteMovie(sink);
}

/// Every pose of the movie, computed once: the trigonometry then costs
/// neither side.
std::vector<Pose> PreparedPoses() {
    std::vector<Pose> poses;
    poses.reserve(size_t{kFrames} * kDepths);
    for (int frame = 0; frame < kFrames; ++frame)
        for (int depth = 1; depth <= kDepths; ++depth)
            poses.push_back(PoseOf(depth, frame));
    return poses;
}

/// Reads prepared poses in the pose source's form.
auto PoseIn(const std::vector<Pose>& poses) {
    return [&poses](int depth, int frame) -> const Pose& {
        return poses[static_cast<size_t>(frame) * kDepths + depth - 1];
    };
}

// ---- The baseline: hand-rolled encoding straight into one vector. ----

class Direct {
  public:
    std::vector<uint8_t> out;

    void U8(int v) { out.push_back(static_cast<uint8_t>(v)); }
    void U16(int v) {
        U8(v & 0xFF);
        U8(v >> 8 & 0xFF);
    }
    void Bits(int64_t v, int n) {
        acc_ = acc_ << n | (static_cast<uint64_t>(v) & ((uint64_t{1} << n) - 1));
        used_ += n;
        while (used_ >= 8) {
            used_ -= 8;
            U8(static_cast<int>(acc_ >> used_ & 0xFF));
        }
    }
    void Align() {
        if (used_)
            Bits(0, 8 - used_);
    }
    static int Need(int32_t v) {
        const uint32_t m = v < 0 ? ~static_cast<uint32_t>(v) : static_cast<uint32_t>(v);
        return v ? std::bit_width(m) + 1 : 0;
    }
    static int Need(std::initializer_list<int32_t> vs) {
        int n = 0;
        for (int32_t v : vs)
            n = std::max(n, Need(v));
        return n;
    }
    /// Starts a tag whose body is known to stay under 63 bytes.
    size_t ShortTag(int code) {
        U16(code << 6);
        return out.size();
    }
    void EndShortTag(size_t bodyStart) { out[bodyStart - 2] |= out.size() - bodyStart; }

  private:
    uint64_t acc_ = 0;
    int used_ = 0;
};

void Rect(Direct& w, int x0, int x1, int y0, int y1) {
    const int n = Direct::Need({x0, x1, y0, y1});
    w.Bits(n, 5);
    for (int v : {x0, x1, y0, y1})
        w.Bits(v, n);
    w.Align();
}

void DefineBox(Direct& w, int depth) {
    const ZoRect r = BoxOf(depth);
    const COLORREF c = ColourOf(depth);
    const size_t body = w.ShortTag(32);
    w.U16(depth);
    Rect(w, r.left, r.right, r.top, r.bottom);
    for (int v : {1, 0, int{ZoGetRed(c)}, int{ZoGetGreen(c)}, int{ZoGetBlue(c)}, 255, 0})
        w.U8(v);  // one solid fill, no lines
    w.Bits(1, 4);
    w.Bits(0, 4);
    const int n = Direct::Need({r.left, r.top});
    w.Bits(0b000011, 6);  // style change: fill0 and move
    w.Bits(n, 5);
    w.Bits(r.left, n);
    w.Bits(r.top, n);
    w.Bits(1, 1);
    auto edge = [&](int delta, bool vertical) {
        const int bits = std::max(2, Direct::Need(delta));
        w.Bits(0b11, 2);
        w.Bits(bits - 2, 4);
        w.Bits(0, 1);
        w.Bits(vertical, 1);
        w.Bits(delta, bits);
    };
    edge(r.Width(), false);
    edge(r.Height(), true);
    edge(-r.Width(), false);
    edge(-r.Height(), true);
    w.Bits(0, 6);
    w.Align();
    w.EndShortTag(body);
}

void Place(Direct& w, int depth, int frame, const Pose& p) {
    const int32_t sx = static_cast<int32_t>(std::llround(p.a * 65536));
    const int32_t sy = static_cast<int32_t>(std::llround(p.d * 65536));
    const int32_t r0 = static_cast<int32_t>(std::llround(p.c * 65536));
    const int32_t r1 = static_cast<int32_t>(std::llround(p.b * 65536));
    const int32_t tx = static_cast<int32_t>(std::llround(p.tx));
    const int32_t ty = static_cast<int32_t>(std::llround(p.ty));
    const size_t body = w.ShortTag(26);
    w.U8(frame == 0 ? 0x0E : 0x0D);  // cxform, matrix, then character or move
    w.U16(depth);
    if (frame == 0)
        w.U16(depth);
    const bool scaled = sx != 65536 || sy != 65536, turned = r0 != 0 || r1 != 0;
    w.Bits(scaled, 1);
    if (scaled) {
        const int n = Direct::Need({sx, sy});
        w.Bits(n, 5);
        w.Bits(sx, n);
        w.Bits(sy, n);
    }
    w.Bits(turned, 1);
    if (turned) {
        const int n = Direct::Need({r0, r1});
        w.Bits(n, 5);
        w.Bits(r0, n);
        w.Bits(r1, n);
    }
    const int nt = Direct::Need({tx, ty});
    w.Bits(nt, 5);
    w.Bits(tx, nt);
    w.Bits(ty, nt);
    w.Align();
    int32_t terms[8];
    for (int i = 0; i < 4; ++i) {
        terms[i] = static_cast<int32_t>(std::lround(p.scale[i] * 256));
        terms[4 + i] = static_cast<int32_t>(std::lround(p.offset[i]));
    }
    const int n = Direct::Need(
        {terms[0], terms[1], terms[2], terms[3], terms[4], terms[5], terms[6], terms[7]});
    w.Bits(0b11, 2);
    w.Bits(n, 4);
    for (int32_t t : terms)
        w.Bits(t, n);
    w.Align();
    w.EndShortTag(body);
}

/// Poses from `poseOf(depth, frame)`, so the same encoding can start from
/// computed or from prepared poses.
template <typename PoseSource>
std::vector<uint8_t> WriteDirectly(PoseSource poseOf) {
    Direct file;
    for (int v : {int{'F'}, int{'W'}, int{'S'}, 5, 0, 0, 0, 0})
        file.U8(v);
    Rect(file, 0, 640 * 20, 0, 480 * 20);
    file.U16(25 << 8);
    file.U16(kFrames);
    const size_t background = file.ShortTag(9);
    for (int v : {0xFF, 0xFF, 0xFF})
        file.U8(v);
    file.EndShortTag(background);
    for (int depth = 1; depth <= kDepths; ++depth)
        DefineBox(file, depth);
    for (int frame = 0; frame < kFrames; ++frame) {
        for (int depth = 1; depth <= kDepths; ++depth)
            Place(file, depth, frame, poseOf(depth, frame));
        file.ShortTag(1);
    }
    file.ShortTag(0);
    const size_t size = file.out.size();
    for (int i = 0; i < 4; ++i)
        file.out[4 + i] = static_cast<uint8_t>(size >> (8 * i));
    return std::move(file.out);
}

/// Keeps nothing: a file on disk costs the writer no memory either.
class CountingSink : public ZoFByteSink {
  public:
    void Append(std::span<const uint8_t> bytes) override { size_ += bytes.size(); }
    void Overwrite(size_t, std::span<const uint8_t>) override {}
    size_t Size() const noexcept { return size_; }

  private:
    size_t size_ = 0;
};

template <typename Write>
void Measure(benchmark::State& state, Write write) {
    size_t bytes = 0, peak = 0;
    for (auto _ : state) {
        const size_t before = gHeapNow.load();
        gHeapPeak = before;
        bytes = write();
        peak = gHeapPeak.load() - before;
    }
    state.counters["bytes"] = static_cast<double>(bytes);
    state.counters["peak_heap"] = static_cast<double>(peak);
    state.counters["peak_per_byte"] = static_cast<double>(peak) / static_cast<double>(bytes);
}

// Each pair below does the same work on both sides: from the poses (computed
// or prepared) to the finished file's bytes, the writer through the ZoFlash
// API (shapes, frames, placements, writing), the baseline by hand.

void BM_MovieWriter(benchmark::State& state) {
    Measure(state, [] {
        CountingSink sink;
        WriteWithMovie(sink, PoseOf);
        return sink.Size();
    });
}

void BM_DirectBaseline(benchmark::State& state) {
    Measure(state, [] {
        const std::vector<uint8_t> file = WriteDirectly(PoseOf);
        benchmark::DoNotOptimize(file.data());
        return file.size();
    });
}

void BM_MovieWriterFromPoses(benchmark::State& state) {
    const std::vector<Pose> poses = PreparedPoses();
    Measure(state, [&] {
        CountingSink sink;
        WriteWithMovie(sink, PoseIn(poses));
        return sink.Size();
    });
}

void BM_DirectBaselineFromPoses(benchmark::State& state) {
    const std::vector<Pose> poses = PreparedPoses();
    Measure(state, [&] {
        const std::vector<uint8_t> file = WriteDirectly(PoseIn(poses));
        benchmark::DoNotOptimize(file.data());
        return file.size();
    });
}

void BM_MovieWriterWriteOnly(benchmark::State& state) {
    // No counterpart: the frames are built outside, so this is only the part
    // of the work that writing a finished movie again costs.
    ZoSWFMovie movie("", 640, 480, 25, ZoSWFColour(0xFFFFFF, 255));
    BuildFrames(movie, PoseOf);
    Measure(state, [&] {
        CountingSink sink;
        movie.WriteMovie(sink);
        return sink.Size();
    });
}

void BM_SameBytes(benchmark::State& state) {
    bool same = false;
    for (auto _ : state) {
        ZoFMemorySink sink;
        WriteWithMovie(sink, PoseOf);
        same = sink.Bytes() == WriteDirectly(PoseOf);
    }
    state.counters["identical"] = same ? 1 : 0;
    if (!same)
        state.SkipWithError("the writer and the baseline wrote different bytes");
}

}  // namespace

BENCHMARK(BM_MovieWriter)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DirectBaseline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MovieWriterFromPoses)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DirectBaselineFromPoses)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MovieWriterWriteOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SameBytes)->Iterations(1)->Unit(benchmark::kMillisecond);

// Heap accounting for the peak_heap counters.
void* operator new(size_t size) {
    void* p = std::malloc(size ? size : 1);
    if (!p)
        throw std::bad_alloc();
    const size_t now = gHeapNow += malloc_usable_size(p);
    size_t peak = gHeapPeak.load();
    while (now > peak && !gHeapPeak.compare_exchange_weak(peak, now)) {
    }
    return p;
}

void operator delete(void* p) noexcept {
    if (!p)
        return;
    gHeapNow -= malloc_usable_size(p);
    std::free(p);
}

void operator delete(void* p, size_t) noexcept {
    operator delete(p);
}
