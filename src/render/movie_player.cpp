#include "render/movie_player.h"

#include <array>
#include <bit>
#include <cmath>
#include <fstream>
#include <iterator>
#include <span>

#include "platform/image_codec.h"
#include "platform/zo_exception.h"
#include "platform/zo_units.h"
#include "render/frame_painter.h"
#include "render/movie_model.h"

using namespace ZoRender;

struct ZoMoviePlayer::Movie : MovieModel {
    /// The pictures of every sample but the first, which is drawn into the
    /// frame itself; kept between frames with the painter's scratch memory.
    mutable std::array<SurfaceRef, 3> samplePictures;
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

// A sample's picture of the frame's size, made anew only when it changes.
cairo_surface_t* SamplePicture(SurfaceRef& kept, int width, int height) {
    if (!kept || cairo_image_surface_get_width(kept.get()) != width ||
        cairo_image_surface_get_height(kept.get()) != height)
        kept.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height),
                   cairo_surface_destroy);
    return kept.get();
}

// A context drawing the stage's twips at `scale` onto the movie's background.
cairo_t* StartPicture(cairo_surface_t* picture, const MovieModel& movie, double scale) {
    cairo_t* cr = cairo_create(picture);
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_NONE);
    const Rgba& bg = movie.background;
    cairo_set_source_rgb(cr, bg.r / 255.0, bg.g / 255.0, bg.b / 255.0);
    cairo_paint(cr);
    cairo_scale(cr, scale / kZoTwipsPerPixel, scale / kZoTwipsPerPixel);
    cairo_translate(cr, -movie.frameSize.xMin, -movie.frameSize.yMin);
    return cr;
}

// Cairo keeps native-endian premultiplied ARGB; the frames are opaque, so
// averaging the samples only has to reorder the bytes. The first sample's
// picture is the frame's memory: each pixel is read before it is written.
void AverageSamples(std::span<cairo_surface_t* const, 4> pictures, uint8_t* rgba, size_t pixels) {
    constexpr bool little = std::endian::native == std::endian::little;
    constexpr std::array<int, 4> kFrom = little ? std::array{2, 1, 0, 3} : std::array{1, 2, 3, 0};
    std::array<const uint8_t*, 4> in;
    for (size_t i = 0; i < in.size(); ++i) {
        cairo_surface_flush(pictures[i]);
        in[i] = cairo_image_surface_get_data(pictures[i]);
    }
    for (size_t p = 0; p < pixels * 4; p += 4) {
        std::array<unsigned, 4> sums{};
        for (int c = 0; c < 4; ++c)
            sums[c] = in[0][p + kFrom[c]] + in[1][p + kFrom[c]] + in[2][p + kFrom[c]] +
                      in[3][p + kFrom[c]];
        for (int c = 0; c < 4; ++c)
            rgba[p + c] = static_cast<uint8_t>((sums[c] + 2) / 4);
    }
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
    SurfaceRef first(
        cairo_image_surface_create_for_data(image.rgba.data(), CAIRO_FORMAT_ARGB32, image.width,
                                            image.height, image.width * 4),
        cairo_surface_destroy);
    std::array<cairo_surface_t*, kSamples.size()> pictures = {first.get()};
    std::array<SampleContext, kSamples.size()> samples;
    for (size_t i = 0; i < kSamples.size(); ++i) {
        if (i > 0)
            pictures[i] = SamplePicture(movie_->samplePictures[i - 1], image.width, image.height);
        samples[i] = MakeSampleContext(StartPicture(pictures[i], *movie_, scale), kSamples[i][0],
                                       kSamples[i][1]);
    }
    const int32_t count = FrameCount();
    const int32_t shown = (frame % count + count) % count;
    FramePainter(*movie_, samples, movie_->scratch).Paint(*movie_->timeline.frames[shown], shown);
    for (const SampleContext& sample : samples)
        cairo_destroy(sample.cr);
    AverageSamples(pictures, image.rgba.data(), image.rgba.size() / 4);
    cairo_surface_finish(first.get());
}
