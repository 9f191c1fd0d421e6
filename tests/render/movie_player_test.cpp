#include "render/movie_player.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
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

using Fill = std::function<void(ZoSWFShape&)>;

// A 20 x 20 pixel frame on white showing `shapes` (twips), filled by `fill`
// or black, at `at` through `colour`, then a red square over its top right
// quarter.
ZoRgbaImage OneFrame(std::vector<std::vector<ZoPoint>> shapes, const Fill& fill = {},
                     const ZoSWFTransformation& at = {},
                     const ZoSWFColourTransformation& colour = {}) {
    ZoSWFMovie movie("", 20, 20, 10, ZoSWFColour(0xFFFFFF, 255));
    ZoSWFFrame* frame = movie.AddScene()->AddFrame();
    for (const std::vector<ZoPoint>& corners : shapes) {
        auto shape = ZoMakeCounted<ZoSWFShape>();
        fill ? fill(*shape) : shape->SetSolidFill(ZoSWFColour(0, 0, 0, 255));
        shape->MoveTo(corners.back());
        for (const ZoPoint& p : corners)
            shape->LineTo(p);
        frame->PlaceObject(shape, nullptr, frame->GetPlacements().size() + 1, at, 0, -1, colour);
    }
    frame->PlaceObject(Square(ZoSWFColour(255, 0, 0, 255), 15, 0, 5), nullptr, 100,
                       ZoSWFTransformation(), 0, -1, ZoSWFColourTransformation());
    return ZoMoviePlayer(Bytes(movie)).RenderFrame(0);
}

std::vector<ZoPoint> From(int left) {
    return {{left, 0}, {20 * kPx, 0}, {20 * kPx, 20 * kPx}, {left, 20 * kPx}};
}

// Red | blue, one pixel each, `width` twips a pixel.
Fill RedBlue(double width) {
    return [width](ZoSWFShape& s) {
        auto image = ZoMakeCounted<ZoSWFImage>();
        image->SetBitmapBufferImage({2, 1, {255, 0, 0, 255, 0, 0, 255, 255}}, 0xFFFFFFFF, 0);
        s.SetClippedBitmapFill(image, 0, 0, width, 20 * kPx);
    };
}

TEST(MoviePlayer, DrawsTheRestOfTheFrameAfterAPlacementSquashedFlat) {
    // Onto the line x = y but for the determinant: the smallest a MATRIX holds
    // needs terms far beyond the rasteriser's range to reach a fill's space.
    auto flattened = [](double determinant) {
        ZoSWFTransformation t;
        t.AppendMatrix(1, 1, 1, 1 + determinant, 0, 0);
        return t;
    };
    const std::vector<ZoSWFColour> stops = {ZoSWFColour(0, 0, 0, 255), ZoSWFColour(0, 0, 255, 255)};
    const std::tuple<const char*, double, Fill> cases[] = {
        {"solid, no area", 0, {}},
        {"linear gradient", 2.0 / 65536,
         [&](ZoSWFShape& s) {
             s.SetLinearGradientFill(stops, {0, 0}, {400, 0}, 400, nullptr);
         }},
        {"radial gradient", 2.0 / 65536,
         [&](ZoSWFShape& s) {
             s.SetRadialGradientFill(stops, {0, 0}, {400, 0}, 200, nullptr);
         }},
        {"picture", 2.0 / 65536, RedBlue(1)},
    };
    for (const auto& [name, determinant, fill] : cases)
        EXPECT_TRUE(ColoursAt(OneFrame({From(0)}, fill, flattened(determinant)),
                              {{17, 2, 255, 0, 0}, {5, 15, 255, 255, 255}}))
            << name;
}

// Four samples a pixel, as the reference player takes them: each sample keeps
// its own colour, so edges never blend pieces into their neighbours.
TEST(MoviePlayer, SamplesShapesFourTimesAPixelAndPicturesAtItsCentre) {
    const std::vector<ZoPoint> upperLeft = {{0, 0}, {20 * kPx, 0}, {0, 20 * kPx}};
    const std::vector<ZoPoint> lowerRight = {{20 * kPx, 0}, {20 * kPx, 20 * kPx}, {0, 20 * kPx}};
    const std::tuple<const char*, ZoRgbaImage, Expected> cases[] = {
        {"triangles sharing a diagonal leave no seam",
         OneFrame({upperLeft, lowerRight}),
         {9, 10, 0, 0, 0}},
        {"an edge a twip into a pixel misses every sample", OneFrame({From(1)}), {0, 5, 0, 0, 0}},
        {"an edge 0.3 pixels into a pixel covers three samples of four",
         OneFrame({From(206)}),
         {10, 5, 64, 64, 64}},
        {"a picture's pixels are read at the centre, 0.2 pixels past their boundary",
         OneFrame({From(0)}, RedBlue(206)),
         {10, 5, 0, 0, 255}},
    };
    for (const auto& [name, image, expected] : cases)
        EXPECT_TRUE(ColoursAt(image, {expected}, 1)) << name;
}

// Turned by `degrees` (terms as the MATRIX record rounds them) and moved by
// `x`, `y` twips.
ZoSWFTransformation Turned(double degrees, int x, int y) {
    const double c = std::round(std::cos(degrees * M_PI / 180) * 65536) / 65536;
    const double s = std::round(std::sin(degrees * M_PI / 180) * 65536) / 65536;
    ZoSWFTransformation t;
    t.AppendMatrix(c, -s, s, c, x, y);
    return t;
}

// Gradients and pictures cover exactly the samples a solid colour covers,
// wherever the piece lies, however turned, even partly off the frame.
TEST(MoviePlayer, FillsEveryKindOfFillOverTheSameSamples) {
    const std::vector<ZoPoint> triangle = {{0, 0}, {230, 47}, {61, 250}};
    const std::vector<ZoPoint> sliver = {{0, 0}, {13, 3}, {2, 11}};
    const Fill black[] = {
        [](ZoSWFShape& s) {
            auto image = ZoMakeCounted<ZoSWFImage>();
            image->SetBitmapBufferImage({1, 1, {0, 0, 0, 255}}, 0xFFFFFFFF, 0);
            s.SetClippedBitmapFill(image, 0, 0, 20, 20);
        },
        [](ZoSWFShape& s) {
            const std::vector<ZoSWFColour> stops = {ZoSWFColour(0, 0, 0, 255),
                                                    ZoSWFColour(0, 0, 0, 255)};
            s.SetLinearGradientFill(stops, {0, 0}, {400, 0}, 400, nullptr);
        },
    };
    const std::tuple<const char*, std::vector<ZoPoint>, ZoSWFTransformation> cases[] = {
        {"moved away from the origin", triangle, Moved(3, 4)},
        {"turned", triangle, Turned(37, 97, 31)},
        {"partly above and left of the frame", triangle, Turned(-20, -117, -93)},
        {"partly below and right of the frame", triangle, Turned(160, 412, 395)},
        {"smaller than a pixel", sliver, Turned(10, 107, 113)},
    };
    for (const auto& [name, corners, at] : cases) {
        const ZoRgbaImage solid = OneFrame({corners}, {}, at);
        for (const Fill& fill : black)
            EXPECT_EQ(OneFrame({corners}, fill, at).rgba, solid.rgba) << name;
    }
}

// A 4 x 4 picture of distinct colours, 4 pixels a picture pixel, turned and
// moved into the frame: each pixel well inside shows the picture pixel its
// centre falls in, through the colour transform.
TEST(MoviePlayer, ReadsATurnedPictureAtEveryPixelCentre) {
    auto colourOf = [](int i, int j) { return std::array<int, 3>{40 + 60 * i, 40 + 60 * j, 128}; };
    ZoSWFRgbaBuffer buffer{4, 4, {}};
    for (int j = 0; j < 4; ++j)
        for (int i = 0; i < 4; ++i) {
            const auto [r, g, b] = colourOf(i, j);
            buffer.rgba.insert(buffer.rgba.end(), {uint8_t(r), uint8_t(g), uint8_t(b), 255});
        }
    const Fill picture = [&buffer](ZoSWFShape& s) {
        auto image = ZoMakeCounted<ZoSWFImage>();
        image->SetBitmapBufferImage(buffer, 0xFFFFFFFF, 0);
        s.SetClippedBitmapFill(image, 0, 0, 4 * kPx, 4 * kPx);
    };
    ZoSWFColourTransformation halfAlpha, darker;
    halfAlpha.SetScale(1, 1, 1, 0.5);
    darker.SetScale(0.5, 0.5, 0.5, 1);
    darker.SetOffset(20, 0, 0, 0);
    // Straight colour and alpha in, the pixel on white out.
    using Through = std::function<int(int channel, int value)>;
    const std::tuple<const char*, ZoSWFColourTransformation, Through> cases[] = {
        {"as it is", {}, [](int, int v) { return v; }},
        {"half transparent", halfAlpha, [](int, int v) { return (v + 255 + 1) / 2; }},
        {"recoloured", darker, [](int c, int v) { return v / 2 + (c == 0 ? 20 : 0); }},
    };
    const ZoSWFTransformation at = Turned(30, 200, 40);
    const std::vector<ZoPoint> square = {
        {0, 0}, {16 * kPx, 0}, {16 * kPx, 16 * kPx}, {0, 16 * kPx}};
    for (const auto& [name, colour, through] : cases) {
        const ZoRgbaImage image = OneFrame({square}, picture, at, colour);
        for (int y = 5; y < 20; ++y)
            for (int x = 0; x < 20; ++x) {
                // Device pixels to picture pixels: undo the move, the turn
                // and the 4 pixels a picture pixel.
                const double dx = x + 0.5 - at.Tx() / kPx, dy = y + 0.5 - at.Ty() / kPx;
                const double det = at.A() * at.D() - at.B() * at.C();
                const double u = (at.D() * dx - at.B() * dy) / det / 4;
                const double v = (at.A() * dy - at.C() * dx) / det / 4;
                // Samples lie within 0.14 picture pixels of the centre.
                const auto inside = [](double t) { return t > 0.2 && t < 3.8; };
                const auto onEdge = [](double t) { return std::abs(t - std::round(t)) < 0.01; };
                if (!inside(u) || !inside(v) || onEdge(u) || onEdge(v))
                    continue;
                const auto rgb = colourOf(static_cast<int>(u), static_cast<int>(v));
                const uint8_t expected[] = {uint8_t(through(0, rgb[0])),
                                            uint8_t(through(1, rgb[1])),
                                            uint8_t(through(2, rgb[2]))};
                EXPECT_TRUE(ColoursAt(image, {{x, y, expected[0], expected[1], expected[2]}}))
                    << name;
            }
    }
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
