#pragma once
// A movie as the player keeps it: every character ready to draw and, for the
// main timeline and each sprite, the display list of every frame.
#include <cairo.h>

#include <cstdint>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "render/colour_transform.h"
#include "render/shape_paths.h"
#include "render/swf_parser.h"

namespace ZoRender {

/// What one depth shows in one frame.
struct DisplayEntry {
    uint16_t depth = 0;
    uint16_t characterId = 0;
    /// Masks the depths above it up to and including this one; 0 for none.
    uint16_t clipDepth = 0;
    /// The frame of its timeline in which the character was placed: a
    /// sprite plays its own frames from there.
    int32_t placedFrame = 0;
    cairo_matrix_t matrix;  // twips of the character to twips of the parent
    ColourTransform colour;
};

/// Entries in depth order. Frames that change nothing share their list.
using DisplayList = std::vector<DisplayEntry>;

struct Timeline {
    std::vector<std::shared_ptr<const DisplayList>> frames;
};

struct ShapeCharacter {
    std::vector<FillStyle> fills;
    std::vector<LineStyle> lines;
    ShapePaths paths;
};

struct GlyphPlacement {
    uint32_t glyph = 0;
    double x = 0, y = 0;  // pen position in the text's twips
};

/// Glyphs of one font, size and colour.
struct TextRun {
    uint16_t fontId = 0;
    double height = 0;  // twips
    Rgba colour;
    std::vector<GlyphPlacement> glyphs;
};

struct TextCharacter {
    cairo_matrix_t matrix;
    std::vector<TextRun> runs;
};

struct FontCharacter {
    std::vector<Path> glyphs;  // in a 1024-unit em square
};

using SurfaceRef = std::shared_ptr<cairo_surface_t>;

struct MovieModel {
    int version = 0;
    Rect frameSize;
    uint16_t frameRate = 0;  // 8.8
    Rgba background{255, 255, 255, 255};
    Timeline timeline;
    std::unordered_map<uint16_t, ShapeCharacter> shapes;
    std::unordered_map<uint16_t, Timeline> sprites;
    /// A button shows the records of its up state, drawn like one frame.
    std::unordered_map<uint16_t, DisplayList> buttons;
    std::unordered_map<uint16_t, TextCharacter> texts;
    std::unordered_map<uint16_t, FontCharacter> fonts;
    std::unordered_map<uint16_t, SurfaceRef> bitmaps;  // premultiplied ARGB32
};

/// Parses a whole uncompressed movie. Throws ParseError, or ZoException for a
/// picture that cannot be decoded.
MovieModel ParseMovie(std::span<const uint8_t> bytes);

/// The SWF matrix as Cairo's.
cairo_matrix_t ToCairo(const Matrix& m) noexcept;

}  // namespace ZoRender
