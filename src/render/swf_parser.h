#pragma once
// The records and tags of the SWF movies Vimbo writes, parsed into plain
// structures with the raw values of the file (twips, 8.8 and 16.16 fixed
// point). The player builds its pictures from these; the tests' validator
// judges the same structures.
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZoRender {

/// Thrown when bytes run out or a field cannot be decoded.
class ParseError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads bytes and MSB-first bit fields.
class BitReader {
  public:
    explicit BitReader(std::span<const uint8_t> bytes) : bytes_(bytes) {}
    uint8_t U8();
    uint16_t U16();
    uint32_t U32();
    std::vector<uint8_t> Bytes(size_t n);
    std::string String();  // zero-terminated
    uint32_t UB(int bits);
    int32_t SB(int bits);
    bool Flag() { return UB(1) != 0; }
    void Align() noexcept {
        if (bitPos_ != 0) {
            bitPos_ = 0;
            ++pos_;
        }
    }
    size_t Position() const noexcept { return pos_; }
    size_t Remaining() const noexcept { return bytes_.size() - pos_; }

  private:
    std::span<const uint8_t> bytes_;
    size_t pos_ = 0;
    int bitPos_ = 0;  // bits used of bytes_[pos_] when inside a byte
};

struct Rect {
    int32_t xMin = 0, xMax = 0, yMin = 0, yMax = 0;
    int bits = 0;
    bool operator==(const Rect& o) const {
        return xMin == o.xMin && xMax == o.xMax && yMin == o.yMin && yMax == o.yMax;
    }
};

struct Rgba {
    uint8_t r = 0, g = 0, b = 0, a = 255;
    bool operator==(const Rgba&) const = default;
};

/// MATRIX with raw 16.16 terms and twips.
struct Matrix {
    bool hasScale = false;
    int32_t scaleX = 65536, scaleY = 65536;
    bool hasRotate = false;
    int32_t rotateSkew0 = 0, rotateSkew1 = 0;
    int32_t translateX = 0, translateY = 0;
    int scaleBits = 0, rotateBits = 0, translateBits = 0;
    double A() const { return scaleX / 65536.0; }
    double B() const { return rotateSkew1 / 65536.0; }
    double C() const { return rotateSkew0 / 65536.0; }
    double D() const { return scaleY / 65536.0; }
    bool SameValues(const Matrix& o) const {
        return scaleX == o.scaleX && scaleY == o.scaleY && rotateSkew0 == o.rotateSkew0 &&
               rotateSkew1 == o.rotateSkew1 && translateX == o.translateX &&
               translateY == o.translateY;
    }
};

/// CXFORMWITHALPHA; mult as factor·256.
struct Cxform {
    bool hasMult = false, hasAdd = false;
    int32_t mult[4] = {256, 256, 256, 256};
    int32_t add[4] = {0, 0, 0, 0};
    int bits = 0;
    bool SameValues(const Cxform& o) const;
};

struct FillStyle {
    uint8_t type = 0;
    Rgba colour;
    Matrix matrix;
    std::vector<std::pair<uint8_t, Rgba>> gradient;
    uint16_t bitmapId = 0;
};

struct LineStyle {
    uint16_t width = 0;
    Rgba colour;
};

struct ShapeRecord {
    enum class Kind { kStyleChange, kStraight, kCurved };
    Kind kind = Kind::kStyleChange;
    bool moveTo = false;
    int32_t moveX = 0, moveY = 0;
    int fill0 = -1, fill1 = -1, line = -1;  // -1: not changed
    int32_t dx = 0, dy = 0;                 // straight; curved: anchor delta
    int32_t controlDx = 0, controlDy = 0;   // curved
    int bits = 0;                           // edge NumBits (+2) or move bits
};

struct Shape {
    uint16_t id = 0;
    Rect bounds;
    std::vector<FillStyle> fills;
    std::vector<LineStyle> lines;
    int fillBits = 0, lineBits = 0;
    std::vector<ShapeRecord> records;
    /// Absolute end points of every edge, in order (twips).
    std::vector<std::pair<int32_t, int32_t>> Points() const;
};

struct Action {
    uint8_t code = 0;
    std::vector<uint8_t> data;
    std::string url, target;  // GetURL
};

struct PlaceObject2 {
    bool move = false;
    uint16_t depth = 0;
    std::optional<uint16_t> characterId;
    std::optional<Matrix> matrix;
    std::optional<Cxform> cxform;
    std::optional<uint16_t> ratio;
    std::optional<std::string> name;
    std::optional<uint16_t> clipDepth;
};

struct Tag {
    uint16_t code = 0;
    uint32_t length = 0;
    bool longHeader = false;
    size_t offset = 0;  // of the header in its file or sprite body
    std::vector<uint8_t> body;
};

/// What a depth shows after a frame.
struct DisplayItem {
    uint16_t characterId = 0;
    Matrix matrix;
    Cxform cxform;
    uint16_t clipDepth = 0;
    int ratio = -1;
    std::string name;
};

struct ButtonRecord {
    uint8_t states = 0;
    uint16_t characterId = 0, depth = 0;
    Matrix matrix;
    Cxform cxform;
};

struct ButtonCondition {
    uint16_t conditions = 0;
    std::vector<Action> actions;
};

struct Button {
    uint16_t id = 0;
    std::vector<ButtonRecord> records;
    std::vector<ButtonCondition> conditions;
};

struct GlyphEntry {
    uint32_t index = 0;
    int32_t advance = 0;
};

struct TextRecord {
    std::optional<uint16_t> fontId;
    std::optional<Rgba> colour;
    std::optional<int16_t> x, y;
    std::optional<uint16_t> height;
    std::vector<GlyphEntry> glyphs;
};

struct Text {
    uint16_t id = 0;
    Rect bounds;
    Matrix matrix;
    std::vector<TextRecord> records;
};

struct Font {
    uint16_t id = 0;
    std::string name;
    bool bold = false, italic = false, wideOffsets = false;
    std::vector<uint16_t> codes;
    std::vector<Shape> glyphs;
};

struct Bitmap {
    uint16_t id = 0;
    uint16_t code = 0;
    int format = 0, width = 0, height = 0;
    std::vector<uint8_t> pixels;  // decompressed lossless data (premultiplied ARGB)
    std::vector<uint8_t> jpeg;    // JPEG tags
    std::vector<uint8_t> alpha;   // JPEG3 alpha plane, still zlib-compressed
};

/// Tag codes of the tags Vimbo writes.
enum TagCode : uint16_t {
    kEnd = 0,
    kShowFrame = 1,
    kDefineShape = 2,
    kSetBackgroundColor = 9,
    kDefineText = 11,
    kDoAction = 12,
    kDefineBitsLossless = 20,
    kDefineBitsJPEG2 = 21,
    kDefineShape2 = 22,
    kPlaceObject2 = 26,
    kRemoveObject2 = 28,
    kDefineShape3 = 32,
    kDefineButton2 = 34,
    kDefineBitsJPEG3 = 35,
    kDefineBitsLossless2 = 36,
    kDefineSprite = 39,
    kFrameLabel = 43,
    kDefineFont2 = 48,
};

/// The largest bitmap accepted, in bytes of decoded pixels: a hostile size
/// must not exhaust memory.
inline constexpr size_t kMaxBitmapBytes = size_t{1} << 26;

// Record readers. Each throws ParseError when the bytes run out or hold a
// record Vimbo never writes.
Rect ReadRect(BitReader& in);
Matrix ReadMatrix(BitReader& in);
Cxform ReadCxformWithAlpha(BitReader& in);
Rgba ReadColour(BitReader& in, bool alpha);
/// The colour of a SetBackgroundColor tag.
Rgba ReadBackgroundColour(std::span<const uint8_t> body);
/// Action records up to and including the end record.
std::vector<Action> ReadActions(BitReader& in);
PlaceObject2 ReadPlaceObject2(std::span<const uint8_t> body);
/// DefineShape, DefineShape2 or DefineShape3 body (colour form from code).
Shape ReadDefineShape(std::span<const uint8_t> body, uint16_t code);
Text ReadDefineText(std::span<const uint8_t> body);
Font ReadDefineFont2(std::span<const uint8_t> body);
Button ReadDefineButton2(std::span<const uint8_t> body);
/// Any of the bitmap tags; lossless pixels come out inflated.
Bitmap ReadBitmap(const Tag& tag);
/// Tags of a file or sprite body (reads until End or the end of bytes).
std::vector<Tag> ReadTags(std::span<const uint8_t> bytes, size_t start);
/// zlib data that must inflate to exactly `expected` bytes (at most
/// kMaxBitmapBytes).
std::vector<uint8_t> Inflate(std::span<const uint8_t> data, size_t expected);
/// The character id that starts a definition tag's body.
uint16_t DefinedId(const Tag& tag);

/// What a PlaceObject2 does to the item at its depth: a new placement
/// starts from defaults, a move keeps every field it does not give, even when
/// it swaps in another character.
void ApplyPlaceObject(std::map<uint16_t, DisplayItem>& displayList, const PlaceObject2& place);

}  // namespace ZoRender
