#include "render/movie_player.h"

#include <array>
#include <bit>
#include <cmath>
#include <fstream>
#include <iterator>

#include "platform/image_codec.h"
#include "platform/zo_exception.h"
#include "platform/zo_units.h"
#include "render/frame_painter.h"
#include "render/movie_model.h"

using namespace ZoRender;

struct ZoMoviePlayer::Movie : MovieModel {
    /// Each pixel's channels summed over its samples, kept between frames.
    mutable std::vector<uint16_t> sampleSums;
    mutable PaintScratch scratch;
};

namespace {

// Cairo's image surfaces stop at this side.
constexpr int32_t kMaxSide = 32767;

int32_t StagePixels(int32_t twips, double scale) {
    const double pixels = std::ceil(twips * scale / kZoTwipsPerPixel - 1e-9);
    if (!(pixels <= kMaxSide))
        throw ZoException("The frame is too large to draw at this scale.");
    return std::max(1, static_cast<int32_t>(pixels));
}

// Where each pixel is sampled, in pixels from its centre: the standard
// pattern of four-sample multisampling, which Ruffle draws with. Every sample
// keeps its own picture, so pieces that share an edge leave no seam, as they
// do when anti-aliased pieces are blended one over the other.
constexpr std::array<std::array<double, 2>, 4> kSamples = {
    {{-0.125, -0.375}, {0.375, -0.125}, {-0.375, 0.125}, {0.125, 0.375}}};

// The first pass starts the sums; the others add to them.
void AddSamples(const uint8_t* pass, uint16_t* sums, size_t count, bool first) {
    for (size_t i = 0; i < count; ++i)
        sums[i] = static_cast<uint16_t>((first ? 0 : sums[i]) + pass[i]);
}

// Cairo keeps native-endian premultiplied ARGB; the frames are opaque, so
// averaging the samples only has to reorder the bytes.
void AverageSamples(const uint16_t* sums, uint8_t* rgba, size_t pixels) {
    constexpr bool little = std::endian::native == std::endian::little;
    constexpr std::array<int, 4> kFrom = little ? std::array{2, 1, 0, 3} : std::array{1, 2, 3, 0};
    constexpr unsigned n = kSamples.size();
    for (size_t i = 0; i < pixels; ++i, sums += 4, rgba += 4)
        for (int c = 0; c < 4; ++c)
            rgba[c] = static_cast<uint8_t>((sums[kFrom[c]] + n / 2) / n);
}

}  // namespace

ZoMoviePlayer::ZoMoviePlayer(std::span<const uint8_t> bytes) {
    try {
        movie_ = std::make_unique<Movie>(Movie{ParseMovie(bytes), {}, {}});
    } catch (const ParseError& e) {
        throw ZoException(std::string("The movie cannot be played: ") + e.what() + ".");
    }
}

ZoMoviePlayer ZoMoviePlayer::FromFile(const std::filesystem::path& path) {
    const std::vector<uint8_t> bytes = ZoImageCodec::ReadFileBytes(path);
    try {
        return ZoMoviePlayer(bytes);
    } catch (const ZoException& e) {
        throw ZoException(path.string() + ": " + e.what());
    }
}

ZoMoviePlayer::ZoMoviePlayer(ZoMoviePlayer&&) noexcept = default;
ZoMoviePlayer& ZoMoviePlayer::operator=(ZoMoviePlayer&&) noexcept = default;
ZoMoviePlayer::~ZoMoviePlayer() = default;

int32_t ZoMoviePlayer::FrameCount() const noexcept {
    return static_cast<int32_t>(movie_->timeline.frames.size());
}

double ZoMoviePlayer::FrameRate() const noexcept {
    return movie_->frameRate / 256.0;
}

int32_t ZoMoviePlayer::Width() const noexcept {
    const Rect& stage = movie_->frameSize;
    return (stage.xMax - stage.xMin + kZoTwipsPerPixel - 1) / kZoTwipsPerPixel;
}

int32_t ZoMoviePlayer::Height() const noexcept {
    const Rect& stage = movie_->frameSize;
    return (stage.yMax - stage.yMin + kZoTwipsPerPixel - 1) / kZoTwipsPerPixel;
}

ZoRgbaImage ZoMoviePlayer::RenderFrame(int32_t frame, double scale) const {
    ZoRgbaImage image;
    RenderFrameInto(frame, scale, image);
    return image;
}

void ZoMoviePlayer::RenderFrameInto(int32_t frame, double scale, ZoRgbaImage& image) const {
    const Rect& stage = movie_->frameSize;
    image.width = StagePixels(stage.xMax - stage.xMin, scale);
    image.height = StagePixels(stage.yMax - stage.yMin, scale);
    image.rgba.resize(static_cast<size_t>(image.width) * static_cast<size_t>(image.height) * 4);
    std::vector<uint16_t>& sums = movie_->sampleSums;
    sums.resize(image.rgba.size());
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        image.rgba.data(), CAIRO_FORMAT_ARGB32, image.width, image.height, image.width * 4);
    const int32_t count = FrameCount();
    const int32_t shown = (frame % count + count) % count;
    for (const auto& [x, y] : kSamples) {
        const bool first = &x == &kSamples[0][0];
        cairo_t* cr = cairo_create(surface);
        cairo_set_antialias(cr, CAIRO_ANTIALIAS_NONE);
        const Rgba& bg = movie_->background;
        cairo_set_source_rgb(cr, bg.r / 255.0, bg.g / 255.0, bg.b / 255.0);
        cairo_paint(cr);
        cairo_scale(cr, scale / kZoTwipsPerPixel, scale / kZoTwipsPerPixel);
        cairo_translate(cr, -stage.xMin, -stage.yMin);
        FramePainter(*movie_, cr, x, y, movie_->scratch)
            .Paint(*movie_->timeline.frames[shown], shown);
        cairo_destroy(cr);
        cairo_surface_flush(surface);
        AddSamples(image.rgba.data(), sums.data(), sums.size(), first);
    }
    movie_->scratch.centres.Clear();
    cairo_surface_finish(surface);
    cairo_surface_destroy(surface);
    AverageSamples(sums.data(), image.rgba.data(), sums.size() / 4);
}
