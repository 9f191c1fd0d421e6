#include "render/swf_parser.h"

#include <zlib.h>

#include <algorithm>

namespace ZoRender {
namespace {

uint16_t Count(BitReader& in) {
    const uint8_t n = in.U8();
    return n == 0xFF ? in.U16() : n;
}

FillStyle ReadFillStyle(BitReader& in, bool alpha) {
    FillStyle f;
    f.type = in.U8();
    if (f.type == 0x00) {
        f.colour = ReadColour(in, alpha);
    } else if (f.type == 0x10 || f.type == 0x12) {
        f.matrix = ReadMatrix(in);
        const int n = in.U8() & 0x0F;
        for (int i = 0; i < n; ++i) {
            const uint8_t ratio = in.U8();
            f.gradient.emplace_back(ratio, ReadColour(in, alpha));
        }
    } else if (f.type >= 0x40 && f.type <= 0x43) {
        f.bitmapId = in.U16();
        f.matrix = ReadMatrix(in);
    } else {
        throw ParseError("unknown fill style type " + std::to_string(f.type));
    }
    return f;
}

void ReadShapeRecords(BitReader& in, Shape& s) {
    s.fillBits = static_cast<int>(in.UB(4));
    s.lineBits = static_cast<int>(in.UB(4));
    for (;;) {
        ShapeRecord r;
        if (!in.Flag()) {
            const uint32_t flags = in.UB(5);
            if (flags == 0)
                break;
            if (flags & 0x10)
                throw ParseError("new styles inside a shape are not written by Vimbo");
            r.kind = ShapeRecord::Kind::kStyleChange;
            if (flags & 0x01) {
                r.moveTo = true;
                r.bits = static_cast<int>(in.UB(5));
                r.moveX = in.SB(r.bits);
                r.moveY = in.SB(r.bits);
            }
            if (flags & 0x02)
                r.fill0 = static_cast<int>(in.UB(s.fillBits));
            if (flags & 0x04)
                r.fill1 = static_cast<int>(in.UB(s.fillBits));
            if (flags & 0x08)
                r.line = static_cast<int>(in.UB(s.lineBits));
        } else if (in.Flag()) {
            r.kind = ShapeRecord::Kind::kStraight;
            r.bits = static_cast<int>(in.UB(4)) + 2;
            if (in.Flag()) {
                r.dx = in.SB(r.bits);
                r.dy = in.SB(r.bits);
            } else if (in.Flag()) {
                r.dy = in.SB(r.bits);
            } else {
                r.dx = in.SB(r.bits);
            }
        } else {
            r.kind = ShapeRecord::Kind::kCurved;
            r.bits = static_cast<int>(in.UB(4)) + 2;
            r.controlDx = in.SB(r.bits);
            r.controlDy = in.SB(r.bits);
            r.dx = in.SB(r.bits);
            r.dy = in.SB(r.bits);
        }
        s.records.push_back(r);
    }
    in.Align();
}

}  // namespace

std::vector<uint8_t> Inflate(std::span<const uint8_t> data, size_t expected) {
    // A huge claimed size is a broken header, not a picture.
    if (expected > kMaxBitmapBytes)
        throw ParseError("bitmap is larger than 64 MB");
    std::vector<uint8_t> out(expected);
    uLongf size = static_cast<uLongf>(expected);
    if (uncompress(out.data(), &size, data.data(), static_cast<uLong>(data.size())) != Z_OK ||
        size != expected)
        throw ParseError("zlib data does not inflate to the expected size");
    return out;
}

Rgba ReadColour(BitReader& in, bool alpha) {
    Rgba c;
    c.r = in.U8();
    c.g = in.U8();
    c.b = in.U8();
    c.a = alpha ? in.U8() : 255;
    return c;
}

Rgba ReadBackgroundColour(std::span<const uint8_t> body) {
    BitReader in(body);
    return ReadColour(in, false);
}

std::vector<Action> ReadActions(BitReader& in) {
    std::vector<Action> actions;
    for (;;) {
        Action a;
        a.code = in.U8();
        if (a.code == 0)
            return actions;
        if (a.code >= 0x80) {
            const uint16_t length = in.U16();
            a.data = in.Bytes(length);
            if (a.code == 0x83) {
                BitReader data(a.data);
                a.url = data.String();
                a.target = data.String();
                if (data.Remaining() != 0)
                    throw ParseError("GetURL has bytes after its strings");
            }
        }
        actions.push_back(std::move(a));
    }
}

Text ReadDefineText(std::span<const uint8_t> body) {
    BitReader in(body);
    Text t;
    t.id = in.U16();
    t.bounds = ReadRect(in);
    t.matrix = ReadMatrix(in);
    const int glyphBits = in.U8();
    const int advanceBits = in.U8();
    for (;;) {
        const uint8_t flags = in.U8();
        if (flags == 0)
            break;
        if (!(flags & 0x80))
            throw ParseError("text record type bit is clear");
        TextRecord r;
        if (flags & 0x08)
            r.fontId = in.U16();
        if (flags & 0x04)
            r.colour = ReadColour(in, false);
        if (flags & 0x01)
            r.x = static_cast<int16_t>(in.U16());
        if (flags & 0x02)
            r.y = static_cast<int16_t>(in.U16());
        if (flags & 0x08)
            r.height = in.U16();
        const int count = in.U8();
        for (int i = 0; i < count; ++i) {
            GlyphEntry g;
            g.index = in.UB(glyphBits);
            g.advance = in.SB(advanceBits);
            r.glyphs.push_back(g);
        }
        in.Align();
        t.records.push_back(std::move(r));
    }
    if (in.Remaining() != 0)
        throw ParseError("DefineText has trailing bytes");
    return t;
}

Font ReadDefineFont2(std::span<const uint8_t> body) {
    BitReader in(body);
    Font f;
    f.id = in.U16();
    const uint8_t flags = in.U8();
    f.wideOffsets = flags & 0x08;
    const bool wideCodes = flags & 0x04;
    f.italic = flags & 0x02;
    f.bold = flags & 0x01;
    if (flags & 0x80)
        throw ParseError("font layout is not written by Vimbo");
    in.U8();  // language
    const std::vector<uint8_t> name = in.Bytes(in.U8());
    f.name.assign(name.begin(), name.end());
    const uint16_t glyphs = in.U16();
    const size_t tableStart = in.Position();
    std::vector<uint32_t> offsets;
    for (int i = 0; i <= glyphs; ++i)
        offsets.push_back(f.wideOffsets ? in.U32() : in.U16());
    for (int i = 0; i < glyphs; ++i) {
        if (in.Position() - tableStart != offsets[i])
            throw ParseError("glyph offset does not match the glyph's position");
        Shape s;
        ReadShapeRecords(in, s);
        f.glyphs.push_back(std::move(s));
    }
    if (in.Position() - tableStart != offsets[glyphs])
        throw ParseError("code table offset is wrong");
    for (int i = 0; i < glyphs; ++i)
        f.codes.push_back(wideCodes ? in.U16() : in.U8());
    if (in.Remaining() != 0)
        throw ParseError("DefineFont2 has trailing bytes");
    return f;
}

Button ReadDefineButton2(std::span<const uint8_t> body) {
    BitReader in(body);
    Button b;
    b.id = in.U16();
    in.U8();  // flags
    const size_t offsetAt = in.Position();
    const uint16_t actionOffset = in.U16();
    for (;;) {
        const uint8_t flags = in.U8();
        if (flags == 0)
            break;
        ButtonRecord r;
        r.states = flags & 0x0F;
        r.characterId = in.U16();
        r.depth = in.U16();
        r.matrix = ReadMatrix(in);
        r.cxform = ReadCxformWithAlpha(in);
        b.records.push_back(r);
    }
    if (actionOffset == 0) {
        if (in.Remaining() != 0)
            throw ParseError("button has actions but no action offset");
        return b;
    }
    if (in.Position() - offsetAt != actionOffset)
        throw ParseError("button action offset is wrong");
    for (;;) {
        const size_t start = in.Position();
        const uint16_t size = in.U16();
        ButtonCondition c;
        c.conditions = in.U16();
        c.actions = ReadActions(in);
        b.conditions.push_back(std::move(c));
        if (size == 0)
            break;
        if (in.Position() - start != size)
            throw ParseError("button condition size is wrong");
    }
    if (in.Remaining() != 0)
        throw ParseError("DefineButton2 has trailing bytes");
    return b;
}

Bitmap ReadBitmap(const Tag& tag) {
    BitReader in(tag.body);
    Bitmap b;
    b.id = in.U16();
    b.code = tag.code;
    if (tag.code == kDefineBitsJPEG2) {
        b.jpeg = in.Bytes(in.Remaining());
    } else if (tag.code == kDefineBitsJPEG3) {
        const uint32_t size = in.U32();
        b.jpeg = in.Bytes(size);
        // Its size is unknown without decoding the JPEG, so it stays packed.
        b.alpha = in.Bytes(in.Remaining());
    } else {
        b.format = in.U8();
        b.width = in.U16();
        b.height = in.U16();
        if (b.format != 5)
            throw ParseError("only 32-bit lossless bitmaps are written by Vimbo");
        b.pixels = Inflate(std::span(tag.body).subspan(in.Position()),
                           static_cast<size_t>(b.width) * b.height * 4);
    }
    if (!b.jpeg.empty()) {
        const auto& j = b.jpeg;
        if (j.size() < 4 || j[0] != 0xFF || j[1] != 0xD8 || j[j.size() - 2] != 0xFF ||
            j.back() != 0xD9)
            throw ParseError("JPEG data does not run from SOI to EOI");
    }
    return b;
}

uint8_t BitReader::U8() {
    Align();
    if (pos_ >= bytes_.size())
        throw ParseError("unexpected end of data");
    return bytes_[pos_++];
}

uint16_t BitReader::U16() {
    const uint16_t lo = U8();
    return static_cast<uint16_t>(lo | U8() << 8);
}

uint32_t BitReader::U32() {
    const uint32_t lo = U16();
    return lo | static_cast<uint32_t>(U16()) << 16;
}

std::vector<uint8_t> BitReader::Bytes(size_t n) {
    Align();
    if (n > Remaining())
        throw ParseError("unexpected end of data");
    std::vector<uint8_t> out(bytes_.begin() + pos_, bytes_.begin() + pos_ + n);
    pos_ += n;
    return out;
}

std::string BitReader::String() {
    std::string s;
    while (char c = static_cast<char>(U8()))
        s += c;
    return s;
}

uint32_t BitReader::UB(int bits) {
    uint32_t v = 0;
    for (int i = 0; i < bits; ++i) {
        if (pos_ >= bytes_.size())
            throw ParseError("unexpected end of bit data");
        const int bit = (bytes_[pos_] >> (7 - bitPos_)) & 1;
        v = (v << 1) | static_cast<uint32_t>(bit);
        if (++bitPos_ == 8) {
            bitPos_ = 0;
            ++pos_;
        }
    }
    return v;
}

int32_t BitReader::SB(int bits) {
    if (bits == 0)
        return 0;
    const uint32_t v = UB(bits);
    const uint32_t sign = uint32_t{1} << (bits - 1);
    return static_cast<int32_t>((v ^ sign) - sign);
}

bool Cxform::SameValues(const Cxform& o) const {
    return std::equal(mult, mult + 4, o.mult) && std::equal(add, add + 4, o.add);
}

std::vector<std::pair<int32_t, int32_t>> Shape::Points() const {
    std::vector<std::pair<int32_t, int32_t>> points;
    int32_t x = 0, y = 0;
    for (const ShapeRecord& r : records) {
        if (r.kind == ShapeRecord::Kind::kStyleChange) {
            if (r.moveTo) {
                x = r.moveX;
                y = r.moveY;
            }
            continue;
        }
        x += r.controlDx + r.dx;
        y += r.controlDy + r.dy;
        points.emplace_back(x, y);
    }
    return points;
}

Rect ReadRect(BitReader& in) {
    in.Align();
    Rect r;
    r.bits = static_cast<int>(in.UB(5));
    r.xMin = in.SB(r.bits);
    r.xMax = in.SB(r.bits);
    r.yMin = in.SB(r.bits);
    r.yMax = in.SB(r.bits);
    in.Align();
    return r;
}

Matrix ReadMatrix(BitReader& in) {
    in.Align();
    Matrix m;
    if ((m.hasScale = in.Flag())) {
        m.scaleBits = static_cast<int>(in.UB(5));
        m.scaleX = in.SB(m.scaleBits);
        m.scaleY = in.SB(m.scaleBits);
    }
    if ((m.hasRotate = in.Flag())) {
        m.rotateBits = static_cast<int>(in.UB(5));
        m.rotateSkew0 = in.SB(m.rotateBits);
        m.rotateSkew1 = in.SB(m.rotateBits);
    }
    m.translateBits = static_cast<int>(in.UB(5));
    m.translateX = in.SB(m.translateBits);
    m.translateY = in.SB(m.translateBits);
    in.Align();
    return m;
}

Cxform ReadCxformWithAlpha(BitReader& in) {
    in.Align();
    Cxform c;
    c.hasAdd = in.Flag();
    c.hasMult = in.Flag();
    c.bits = static_cast<int>(in.UB(4));
    if (c.hasMult)
        for (int32_t& v : c.mult)
            v = in.SB(c.bits);
    if (c.hasAdd)
        for (int32_t& v : c.add)
            v = in.SB(c.bits);
    in.Align();
    return c;
}

PlaceObject2 ReadPlaceObject2(std::span<const uint8_t> body) {
    BitReader in(body);
    PlaceObject2 p;
    const uint8_t flags = in.U8();
    if (flags & 0x80)
        throw ParseError("clip actions are not written by Vimbo");
    p.move = flags & 0x01;
    p.depth = in.U16();
    if (flags & 0x02)
        p.characterId = in.U16();
    if (flags & 0x04)
        p.matrix = ReadMatrix(in);
    if (flags & 0x08)
        p.cxform = ReadCxformWithAlpha(in);
    if (flags & 0x10)
        p.ratio = in.U16();
    if (flags & 0x20)
        p.name = in.String();
    if (flags & 0x40)
        p.clipDepth = in.U16();
    if (in.Remaining() != 0)
        throw ParseError("PlaceObject2 has trailing bytes");
    return p;
}

Shape ReadDefineShape(std::span<const uint8_t> body, uint16_t code) {
    BitReader in(body);
    const bool alpha = code == kDefineShape3;
    Shape s;
    s.id = in.U16();
    s.bounds = ReadRect(in);
    const uint16_t fills = code == kDefineShape ? in.U8() : Count(in);
    for (int i = 0; i < fills; ++i)
        s.fills.push_back(ReadFillStyle(in, alpha));
    const uint16_t lines = code == kDefineShape ? in.U8() : Count(in);
    for (int i = 0; i < lines; ++i) {
        LineStyle l;
        l.width = in.U16();
        l.colour = ReadColour(in, alpha);
        s.lines.push_back(l);
    }
    ReadShapeRecords(in, s);
    if (in.Remaining() != 0)
        throw ParseError("DefineShape has trailing bytes");
    return s;
}

std::vector<Tag> ReadTags(std::span<const uint8_t> bytes, size_t start) {
    std::vector<Tag> tags;
    BitReader in(bytes.subspan(start));
    while (in.Remaining() > 0) {
        Tag t;
        t.offset = start + in.Position();
        const uint16_t header = in.U16();
        t.code = header >> 6;
        t.length = header & 0x3F;
        if (t.length == 0x3F) {
            t.longHeader = true;
            t.length = in.U32();
        }
        t.body = in.Bytes(t.length);
        tags.push_back(std::move(t));
        if (tags.back().code == kEnd)
            break;
    }
    return tags;
}

uint16_t DefinedId(const Tag& tag) {
    if (tag.body.size() < 2)
        throw ParseError("definition tag " + std::to_string(tag.code) + " is too short");
    return static_cast<uint16_t>(tag.body[0] | tag.body[1] << 8);
}

void ApplyPlaceObject(std::map<uint16_t, DisplayItem>& displayList, const PlaceObject2& place) {
    auto it = displayList.find(place.depth);
    // A move that names a character swaps it in and keeps the rest, as the
    // Flash players do; only a placement without the move flag starts afresh.
    const bool fresh = place.characterId && !place.move;
    DisplayItem item = it != displayList.end() && !fresh ? it->second : DisplayItem{};
    if (place.characterId)
        item.characterId = *place.characterId;
    if (place.matrix)
        item.matrix = *place.matrix;
    if (place.cxform)
        item.cxform = *place.cxform;
    if (place.ratio)
        item.ratio = *place.ratio;
    if (place.name)
        item.name = *place.name;
    if (place.clipDepth)
        item.clipDepth = *place.clipDepth;
    displayList[place.depth] = item;
}

}  // namespace ZoRender
