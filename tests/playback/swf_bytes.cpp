#include "playback/swf_bytes.h"

#include <algorithm>
#include <initializer_list>

namespace playback {

namespace {

constexpr int kTwipsPerPixel = 20;

class Bits {
  public:
    void Unsigned(std::uint32_t value, int count) {
        for (int bit = count - 1; bit >= 0; --bit) {
            if (used_ == 0) {
                bytes_.push_back(0);
            }
            bytes_.back() |= static_cast<std::uint8_t>(((value >> bit) & 1U) << (7 - used_));
            used_ = (used_ + 1) % 8;
        }
    }
    void Signed(int value, int count) { Unsigned(static_cast<std::uint32_t>(value), count); }
    /// Pads to a byte: records always start on one.
    std::vector<std::uint8_t> Take() {
        used_ = 0;
        return std::move(bytes_);
    }

  private:
    std::vector<std::uint8_t> bytes_;
    int used_ = 0;
};

// The fewest bits that hold every value as a signed field; none for zeros.
int SignedBits(std::initializer_list<int> values) {
    if (std::all_of(values.begin(), values.end(), [](int value) { return value == 0; })) {
        return 0;
    }
    int bits = 1;
    for (int value : values) {
        while (value < -(1 << (bits - 1)) || value >= (1 << (bits - 1))) {
            ++bits;
        }
    }
    return bits;
}

void Append(std::vector<std::uint8_t>& to, const std::vector<std::uint8_t>& bytes) {
    to.insert(to.end(), bytes.begin(), bytes.end());
}

void AppendU16(std::vector<std::uint8_t>& to, std::uint32_t value) {
    to.push_back(static_cast<std::uint8_t>(value));
    to.push_back(static_cast<std::uint8_t>(value >> 8));
}

void AppendU32(std::vector<std::uint8_t>& to, std::uint32_t value) {
    AppendU16(to, value & 0xFFFF);
    AppendU16(to, value >> 16);
}

std::vector<std::uint8_t> RectRecord(int width, int height) {
    Bits bits;
    const int count = SignedBits({width, height});
    bits.Unsigned(static_cast<std::uint32_t>(count), 5);
    for (int value : {0, width, 0, height}) {
        bits.Signed(value, count);
    }
    return bits.Take();
}

std::vector<std::uint8_t> TranslateMatrix(int x, int y) {
    Bits bits;
    const int count = SignedBits({x, y});
    bits.Unsigned(0, 1);  // no scale
    bits.Unsigned(0, 1);  // no rotation
    bits.Unsigned(static_cast<std::uint32_t>(count), 5);
    bits.Signed(x, count);
    bits.Signed(y, count);
    return bits.Take();
}

std::vector<std::uint8_t> ColourTransformRecord(const ColourTransform& transform) {
    const auto& m = transform.multiply;
    const auto& a = transform.add;
    const int count = SignedBits({m[0], m[1], m[2], m[3], a[0], a[1], a[2], a[3]});
    Bits bits;
    bits.Unsigned(1, 1);  // add terms
    bits.Unsigned(1, 1);  // multiply terms
    bits.Unsigned(static_cast<std::uint32_t>(count), 4);
    for (int value : m) {
        bits.Signed(value, count);
    }
    for (int value : a) {
        bits.Signed(value, count);
    }
    return bits.Take();
}

// One closed clockwise path of four straight edges, filled with fill style 1.
std::vector<std::uint8_t> RectangleEdges(int width, int height) {
    Bits bits;
    bits.Unsigned(1, 4);         // fill index bits
    bits.Unsigned(0, 4);         // line index bits
    bits.Unsigned(0b000101, 6);  // style change: fill style 1 and a move
    bits.Unsigned(0, 5);         // move to (0, 0): fields of no bits
    bits.Unsigned(1, 1);         // fill style 1
    const int deltas[4][2] = {{width, 0}, {0, height}, {-width, 0}, {0, -height}};
    for (const auto& delta : deltas) {
        // The bit count is stored minus two, so fields have at least two bits.
        const int count = std::max(2, SignedBits({delta[0], delta[1]}));
        bits.Unsigned(0b11, 2);  // straight edge
        bits.Unsigned(static_cast<std::uint32_t>(count - 2), 4);
        bits.Unsigned(0, 1);                      // horizontal or vertical
        bits.Unsigned(delta[0] == 0 ? 1 : 0, 1);  // vertical?
        bits.Signed(delta[0] == 0 ? delta[1] : delta[0], count);
    }
    bits.Unsigned(0, 6);  // end of shape
    return bits.Take();
}

}  // namespace

std::size_t FirstTagOffset(const std::vector<std::uint8_t>& movie) {
    const int rectBits = 5 + 4 * (movie.at(8) >> 3);
    return 8 + static_cast<std::size_t>((rectBits + 7) / 8) + 4;
}

SwfBytes::SwfBytes(int widthPixels, int heightPixels, int framesPerSecond)
    : width_(widthPixels), height_(heightPixels), framesPerSecond_(framesPerSecond) {}

void SwfBytes::Tag(int code, const std::vector<std::uint8_t>& body) {
    const auto length = static_cast<std::uint32_t>(body.size());
    if (length < 0x3F) {
        AppendU16(tags_, static_cast<std::uint32_t>(code) << 6 | length);
    } else {
        AppendU16(tags_, static_cast<std::uint32_t>(code) << 6 | 0x3F);
        AppendU32(tags_, length);
    }
    Append(tags_, body);
}

SwfBytes& SwfBytes::Background(Rgb colour) {
    Tag(9, {colour.r, colour.g, colour.b});
    return *this;
}

SwfBytes& SwfBytes::Rectangle(std::uint16_t id, int widthPixels, int heightPixels, Rgb fill) {
    const int width = widthPixels * kTwipsPerPixel;
    const int height = heightPixels * kTwipsPerPixel;
    std::vector<std::uint8_t> body;
    AppendU16(body, id);
    Append(body, RectRecord(width, height));
    Append(body, {1, 0x00, fill.r, fill.g, fill.b});  // one solid fill style
    body.push_back(0);                                // no line styles
    Append(body, RectangleEdges(width, height));
    Tag(2, body);
    return *this;
}

SwfBytes& SwfBytes::Place(std::uint16_t depth, std::uint16_t id, int xPixels, int yPixels,
                          std::optional<ColourTransform> transform) {
    std::vector<std::uint8_t> body{static_cast<std::uint8_t>(transform ? 0x0E : 0x06)};
    AppendU16(body, depth);
    AppendU16(body, id);
    Append(body, TranslateMatrix(xPixels * kTwipsPerPixel, yPixels * kTwipsPerPixel));
    if (transform) {
        Append(body, ColourTransformRecord(*transform));
    }
    Tag(26, body);
    return *this;
}

SwfBytes& SwfBytes::Move(std::uint16_t depth, int xPixels, int yPixels) {
    std::vector<std::uint8_t> body{0x05};  // move, with a matrix
    AppendU16(body, depth);
    Append(body, TranslateMatrix(xPixels * kTwipsPerPixel, yPixels * kTwipsPerPixel));
    Tag(26, body);
    return *this;
}

SwfBytes& SwfBytes::ShowFrame() {
    Tag(1, {});
    ++frames_;
    return *this;
}

std::vector<std::uint8_t> SwfBytes::Finish() {
    Tag(0, {});
    std::vector<std::uint8_t> body = RectRecord(width_ * kTwipsPerPixel, height_ * kTwipsPerPixel);
    AppendU16(body, static_cast<std::uint32_t>(framesPerSecond_) << 8);  // 8.8 fixed point
    AppendU16(body, static_cast<std::uint32_t>(frames_));
    Append(body, tags_);
    std::vector<std::uint8_t> file{'F', 'W', 'S', 5};
    AppendU32(file, static_cast<std::uint32_t>(8 + body.size()));
    Append(file, body);
    return file;
}

}  // namespace playback
