#include "render/movie_player.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "flash/byte_stream.h"
#include "flash/swf_image.h"
#include "flash/swf_movie.h"
#include "flash/swf_shape.h"
#include "flash/swf_sprite.h"
#include "platform/temp_directory.h"
#include "platform/zo_exception.h"
#include "support/feature_movies.h"

using namespace ZoFlash;

namespace {

constexpr int kPx = 20;

struct Expected {
    int x, y;
    uint8_t r, g, b;
};

testing::AssertionResult ColoursAt(const ZoRgbaImage& image, std::initializer_list<Expected> points,
                                   int tolerance = 2) {
    std::string misses;
    for (const Expected& p : points) {
        const uint8_t* px = &image.rgba[(static_cast<size_t>(p.y) * image.width + p.x) * 4];
        const int d =
            std::max({std::abs(px[0] - p.r), std::abs(px[1] - p.g), std::abs(px[2] - p.b)});
        if (d > tolerance || px[3] != 255)
            misses += " (" + std::to_string(p.x) + "," + std::to_string(p.y) + ") is " +
                      std::to_string(px[0]) + "/" + std::to_string(px[1]) + "/" +
                      std::to_string(px[2]) + "/" + std::to_string(px[3]);
    }
    if (misses.empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "wrong colours:" << misses;
}

ZoMoviePlayer PlayWritten(void (*write)(const std::filesystem::path&)) {
    const std::filesystem::path file = ZoMakeTempFileName(".swf");
    write(file);
    return ZoMoviePlayer::FromFile(file);
}

std::vector<uint8_t> Bytes(ZoSWFMovie& movie) {
    ZoFMemorySink sink;
    movie.WriteMovie(sink);
    return {sink.Bytes().begin(), sink.Bytes().end()};
}

ZoAutoInterface2<ZoSWFShape> Square(const ZoSWFColour& colour, int left, int top, int side) {
    auto shape = ZoMakeCounted<ZoSWFShape>();
    shape->SetSolidFill(colour);
    shape->Rectangle({left * kPx, top * kPx, (left + side) * kPx, (top + side) * kPx});
    return shape;
}

ZoSWFTransformation Moved(int x, int y) {
    ZoSWFTransformation t;
    t.SetTranslate(x * kPx, y * kPx);
    return t;
}

// 40 x 20 on grey: a red square at (0, 0) moved to (20, 0) in frame 1 and
// removed in frame 2; a sprite at (0, 10) whose two frames show green, then
// blue, half transparent through the placement's colour transform.
std::vector<uint8_t> AnimatedMovie() {
    ZoSWFMovie movie("", 40, 20, 10, ZoSWFColour(0x808080, 255));
    ZoSWFScene* scene = movie.AddScene();
    auto red = Square(ZoSWFColour(255, 0, 0, 255), 0, 0, 10);
    auto sprite = ZoMakeCounted<ZoSWFSprite>();
    sprite->AddFrame()->PlaceObject(Square(ZoSWFColour(0, 255, 0, 255), 0, 0, 10), nullptr, 1,
                                    ZoSWFTransformation(), 0, -1, ZoSWFColourTransformation());
    sprite->AddFrame()->PlaceObject(Square(ZoSWFColour(0, 0, 255, 255), 0, 0, 10), nullptr, 1,
                                    ZoSWFTransformation(), 0, -1, ZoSWFColourTransformation());
    ZoSWFColourTransformation half;
    half.SetScale(1, 1, 1, 0.5);
    for (int f = 0; f < 3; ++f) {
        ZoSWFFrame* frame = scene->AddFrame();
        if (f < 2)
            frame->PlaceObject(red, nullptr, 1, Moved(20 * f, 0), 0, -1,
                               ZoSWFColourTransformation());
        frame->PlaceObject(sprite, nullptr, 2, Moved(0, 10), 0, -1, half);
    }
    return Bytes(movie);
}

using Placer = std::function<void(ZoSWFFrame&)>;

// One frame of 20 x 20 pixels on white.
ZoMoviePlayer OneFrame(const Placer& place) {
    ZoSWFMovie movie("", 20, 20, 10, ZoSWFColour(0xFFFFFF, 255));
    place(*movie.AddScene()->AddFrame());
    return ZoMoviePlayer(Bytes(movie));
}

void Place(ZoSWFFrame& frame, ZoAutoInterface2<ZoSWFShape> shape, int depth,
           const ZoSWFTransformation& at = {}) {
    frame.PlaceObject(shape, nullptr, depth, at, 0, -1, ZoSWFColourTransformation());
}

ZoAutoInterface2<ZoSWFShape> Polygon(std::initializer_list<ZoPoint> pixels) {
    auto shape = ZoMakeCounted<ZoSWFShape>();
    shape->SetSolidFill(ZoSWFColour(0, 0, 0, 255));
    shape->MoveTo(pixels.begin()->x, pixels.begin()->y);
    for (const ZoPoint& p : pixels)
        if (&p != pixels.begin())
            shape->LineTo(p.x, p.y);
    shape->LineTo(pixels.begin()->x, pixels.begin()->y);
    return shape;
}

// Red | blue, one pixel each.
ZoAutoInterface2<ZoSWFImage> RedBlue() {
    auto image = ZoMakeCounted<ZoSWFImage>();
    image->SetBitmapBufferImage({2, 1, {255, 0, 0, 255, 0, 0, 255, 255}}, 0xFFFFFFFF, 0);
    return image;
}

// Squeezed onto the line x = y but for `flatness` (the determinant).
ZoSWFTransformation Flattened(double flatness) {
    ZoSWFTransformation t;
    t.AppendMatrix(1, 1, 1, 1 + flatness, 0, 0);
    return t;
}

TEST(MoviePlayer, DrawsTheRestOfTheFrameAfterAPlacementSquashedFlat) {
    // The smallest flatness a MATRIX holds; it needs terms far beyond what
    // the rasteriser takes to reach a gradient's or a picture's own space.
    const double nearlyFlat = 2.0 / 65536;
    const std::vector<ZoSWFColour> stops = {ZoSWFColour(0, 0, 0, 255), ZoSWFColour(0, 0, 255, 255)};
    struct Case {
        const char* name;
        double flatness;
        std::function<ZoAutoInterface2<ZoSWFShape>()> shape;
    };
    const Case cases[] = {
        {"solid, no area", 0, [] { return Square(ZoSWFColour(0, 0, 255, 255), 0, 0, 20); }},
        {"linear gradient", nearlyFlat,
         [&] {
             auto s = ZoMakeCounted<ZoSWFShape>();
             s->SetLinearGradientFill(stops, {0, 0}, {20 * kPx, 0}, 20 * kPx, nullptr);
             s->Rectangle({0, 0, 20 * kPx, 20 * kPx});
             return s;
         }},
        {"radial gradient", nearlyFlat,
         [&] {
             auto s = ZoMakeCounted<ZoSWFShape>();
             s->SetRadialGradientFill(stops, {0, 0}, {20 * kPx, 20 * kPx}, 10 * kPx, nullptr);
             s->Rectangle({0, 0, 20 * kPx, 20 * kPx});
             return s;
         }},
        {"picture", nearlyFlat,
         [] {
             auto s = ZoMakeCounted<ZoSWFShape>();
             s->SetClippedBitmapFill(RedBlue(), 0, 0, 1, 1);
             s->Rectangle({0, 0, 20 * kPx, 20 * kPx});
             return s;
         }},
    };
    for (const Case& c : cases) {
        const ZoMoviePlayer player = OneFrame([&](ZoSWFFrame& frame) {
            Place(frame, c.shape(), 1, Flattened(c.flatness));
            Place(frame, Square(ZoSWFColour(255, 0, 0, 255), 10, 0, 10), 2);
        });
        EXPECT_TRUE(ColoursAt(player.RenderFrame(0), {{15, 5, 255, 0, 0}, {5, 15, 255, 255, 255}}))
            << c.name;
    }
}

// Four samples a pixel, as the reference player takes them: each sample keeps
// its own colour, so edges never blend pieces into their neighbours.
TEST(MoviePlayer, SamplesShapesFourTimesAPixelAndPicturesAtItsCentre) {
    struct Case {
        const char* name;
        Placer place;
        std::initializer_list<Expected> points;
    };
    const Case cases[] = {
        {"two triangles sharing a diagonal leave no seam on it",
         [](ZoSWFFrame& f) {
             Place(f, Polygon({{0, 0}, {20 * kPx, 0}, {0, 20 * kPx}}), 1);
             Place(f, Polygon({{20 * kPx, 0}, {20 * kPx, 20 * kPx}, {0, 20 * kPx}}), 2);
         },
         {{9, 10, 0, 0, 0}, {4, 15, 0, 0, 0}, {15, 4, 0, 0, 0}}},
        {"an edge a twip into a pixel misses every sample",
         [](ZoSWFFrame& f) {
             Place(f, Polygon({{1, 0}, {20 * kPx, 0}, {20 * kPx, 20 * kPx}, {1, 20 * kPx}}), 1);
         },
         {{0, 5, 0, 0, 0}}},
        {"an edge 0.3 pixels into a pixel covers three samples of four",
         [](ZoSWFFrame& f) {
             Place(f, Polygon({{206, 0}, {20 * kPx, 0}, {20 * kPx, 20 * kPx}, {206, 20 * kPx}}), 1);
         },
         {{10, 5, 64, 64, 64}, {11, 5, 0, 0, 0}}},
        {"a picture's pixel boundary 0.2 pixels left of a centre",
         [](ZoSWFFrame& f) {
             auto s = ZoMakeCounted<ZoSWFShape>();
             s->SetClippedBitmapFill(RedBlue(), 0, 0, 206, 20 * kPx);
             s->Rectangle({0, 0, 20 * kPx, 20 * kPx});
             Place(f, s, 1);
         },
         {{9, 5, 255, 0, 0}, {10, 5, 0, 0, 255}}},
    };
    for (const Case& c : cases)
        EXPECT_TRUE(ColoursAt(OneFrame(c.place).RenderFrame(0), c.points, 1)) << c.name;
}

TEST(MoviePlayer, DrawsEveryKindOfFillMaskSpriteAndText) {
    const ZoMoviePlayer features = PlayWritten(SwfTest::WriteFeatureMovie);
    EXPECT_EQ(features.Width(), 80);
    EXPECT_EQ(features.Height(), 60);
    EXPECT_EQ(features.FrameCount(), 1);
    EXPECT_DOUBLE_EQ(features.FrameRate(), 12.0);
    EXPECT_TRUE(ColoursAt(features.RenderFrame(0),
                          {// bitmap pixels, one of them half transparent
                           {5, 5, 255, 0, 0},
                           {15, 5, 0, 255, 0},
                           {5, 15, 255, 127, 127},
                           {15, 15, 0, 0, 255},
                           // the mask keeps the green square to its own area
                           {30, 10, 0, 255, 0},
                           {50, 10, 255, 255, 255},
                           {30, 25, 255, 255, 255},
                           // triangle, sprite recoloured, gradient
                           {77, 3, 255, 255, 0},
                           {63, 17, 255, 255, 255},
                           {65, 30, 0, 0, 255},
                           {75, 30, 255, 255, 255},
                           {1, 50, 2, 2, 2},
                           {40, 50, 128, 128, 128},
                           {78, 50, 253, 253, 253}},
                          3));
    const ZoMoviePlayer text = PlayWritten(SwfTest::WriteTextMovie);
    EXPECT_TRUE(ColoursAt(text.RenderFrame(0), {{20, 20, 0, 0, 0},
                                                {12, 12, 0, 0, 0},
                                                {5, 20, 255, 255, 255},
                                                {35, 20, 255, 255, 255},
                                                {20, 35, 255, 255, 255},
                                                {20, 5, 255, 255, 255}}));
}

TEST(MoviePlayer, KeepsTheDisplayListFrameByFrame) {
    const ZoMoviePlayer player(AnimatedMovie());
    ASSERT_EQ(player.FrameCount(), 3);
    struct Case {
        int frame;
        std::initializer_list<Expected> points;
    };
    // The sprite shows its own frame 0, 1, 0: it loops from where it was placed.
    const Case cases[] = {
        {0, {{5, 5, 255, 0, 0}, {25, 5, 128, 128, 128}, {5, 15, 64, 192, 64}}},
        {1, {{5, 5, 128, 128, 128}, {25, 5, 255, 0, 0}, {5, 15, 64, 64, 192}}},
        {2, {{5, 5, 128, 128, 128}, {25, 5, 128, 128, 128}, {5, 15, 64, 192, 64}}},
        // Frames past the end loop round.
        {4, {{5, 5, 128, 128, 128}, {25, 5, 255, 0, 0}}},
    };
    for (const Case& c : cases)
        EXPECT_TRUE(ColoursAt(player.RenderFrame(c.frame), c.points)) << "frame " << c.frame;
}

TEST(MoviePlayer, ScalesTheStageAndReusesTheImage) {
    const ZoMoviePlayer player(AnimatedMovie());
    ZoRgbaImage image;
    player.RenderFrameInto(1, 2.0, image);
    EXPECT_EQ(image.width, 80);
    EXPECT_EQ(image.height, 40);
    EXPECT_TRUE(ColoursAt(image, {{45, 5, 255, 0, 0}, {39, 5, 128, 128, 128}}));
    const uint8_t* before = image.rgba.data();
    player.RenderFrameInto(0, 0.5, image);
    EXPECT_EQ(image.width, 20);
    EXPECT_EQ(image.height, 10);
    EXPECT_EQ(image.rgba.data(), before);
    EXPECT_TRUE(ColoursAt(image, {{2, 2, 255, 0, 0}}));
}

TEST(MoviePlayer, RefusesWhatIsNotAPlayableMovie) {
    const std::vector<uint8_t> good = AnimatedMovie();
    std::vector<uint8_t> compressed = good;
    compressed[0] = 'C';
    std::vector<uint8_t> brokenShape = good;
    brokenShape.resize(40);
    std::vector<uint8_t> noStage = {'F', 'W', 'S', 5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    const std::vector<std::vector<uint8_t>> cases = {
        {}, {'G', 'I', 'F', '8'}, compressed, brokenShape, noStage};
    for (const auto& bytes : cases)
        EXPECT_THROW(ZoMoviePlayer{bytes}, ZoException) << bytes.size() << " bytes";
    EXPECT_THROW(ZoMoviePlayer::FromFile("/nonexistent/movie.swf"), ZoException);
}

}  // namespace
