#include "support/swf_reader.h"

#include <zlib.h>

#include <algorithm>
#include <bit>
#include <set>

namespace SwfTest {
namespace {

enum Code : uint16_t {
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

const std::set<uint16_t> kControlTags = {kEnd,           kShowFrame, kPlaceObject2,
                                         kRemoveObject2, kDoAction,  kFrameLabel};
const std::set<uint16_t> kLongHeaderTags = {kDefineBitsLossless, kDefineBitsJPEG2, kDefineBitsJPEG3,
                                            kDefineBitsLossless2, kDefineFont2};

int SignedBits(int32_t v) {
    if (v == 0)
        return 0;
    const uint32_t m = v < 0 ? ~static_cast<uint32_t>(v) : static_cast<uint32_t>(v);
    return std::bit_width(m) + 1;
}

int SignedBitsOf(std::initializer_list<int32_t> values) {
    int bits = 0;
    for (int32_t v : values)
        bits = std::max(bits, SignedBits(v));
    return bits;
}

std::string Describe(const char* what, int written, int needed) {
    return std::string(what) + " uses " + std::to_string(written) + " bits where " +
           std::to_string(needed) + " suffice";
}

std::vector<uint8_t> Inflate(std::span<const uint8_t> data, size_t expected) {
    // A test bitmap is small; a huge claimed size is a broken header.
    if (expected > (size_t{1} << 26))
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

std::vector<std::string> CheckShapeBits(const Shape& s) {
    std::vector<std::string> problems;
    const int fills = std::bit_width(static_cast<uint32_t>(s.fills.size()));
    const int lines = std::bit_width(static_cast<uint32_t>(s.lines.size()));
    if (s.fillBits != fills || s.lineBits != lines)
        problems.push_back("shape style index widths are not minimal");
    for (const ShapeRecord& r : s.records) {
        if (r.fill0 > static_cast<int>(s.fills.size()) ||
            r.fill1 > static_cast<int>(s.fills.size()) || r.line > static_cast<int>(s.lines.size()))
            problems.push_back("shape record names a missing style");
        int needed = 0;
        if (r.kind == ShapeRecord::Kind::kStyleChange) {
            if (!r.moveTo)
                continue;
            needed = SignedBitsOf({r.moveX, r.moveY});
        } else {
            needed = std::max(2, SignedBitsOf({r.dx, r.dy, r.controlDx, r.controlDy}));
        }
        if (r.bits != needed)
            problems.push_back(Describe("shape record", r.bits, needed));
    }
    return problems;
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

class Validator {
  public:
    Validation Run(std::span<const uint8_t> bytes);

  private:
    void Problem(std::string text) { result_.problems.push_back(std::move(text)); }
    void ReadHeader(BitReader& in, size_t fileSize);
    void Define(const Tag& tag);
    void CheckUse(uint16_t id, const char* by);
    Timeline Play(const std::vector<Tag>& tags, bool insideSprite);
    void CheckTagHeaders(const std::vector<Tag>& tags);
    void CheckEnded(const std::vector<Tag>& tags, const char* where);

    Validation result_;
    std::set<uint16_t> defined_;
};

void Validator::ReadHeader(BitReader& in, size_t fileSize) {
    Movie& m = result_.movie;
    const std::vector<uint8_t> sig = in.Bytes(3);
    m.signature.assign(sig.begin(), sig.end());
    m.version = in.U8();
    m.fileLength = in.U32();
    m.frameSize = ReadRect(in);
    m.frameRate = in.U16();
    m.frameCount = in.U16();
    if (m.signature != "FWS")
        Problem("signature is not FWS");
    if (m.version != 5)
        Problem("version is " + std::to_string(m.version) + ", not 5");
    if (m.fileLength != fileSize)
        Problem("header length " + std::to_string(m.fileLength) + " but file has " +
                std::to_string(fileSize) + " bytes");
    if (m.frameRate == 0)
        Problem("frame rate is zero");
    for (auto& p : CheckMinimalBits(m.frameSize))
        Problem("frame size: " + p);
}

void Validator::CheckUse(uint16_t id, const char* by) {
    if (!defined_.count(id))
        Problem(std::string(by) + " uses character " + std::to_string(id) +
                " before it is defined");
}

void Validator::Define(const Tag& tag) {
    if (tag.body.size() < (tag.code == kDefineSprite ? 4u : 2u))
        throw ParseError("definition tag " + std::to_string(tag.code) + " is too short");
    Movie& m = result_.movie;
    const uint16_t id = static_cast<uint16_t>(tag.body.at(0) | tag.body.at(1) << 8);
    if (id == 0 || !defined_.insert(id).second)
        Problem("character id " + std::to_string(id) + " is defined twice or is zero");
    m.definitionOrder.push_back(id);
    m.characterTags[id] = tag.code;
    switch (tag.code) {
        case kDefineShape:
        case kDefineShape2:
        case kDefineShape3: {
            Shape s = ReadDefineShape(tag.body, tag.code);
            for (const FillStyle& f : s.fills)
                if (f.type >= 0x40 && f.bitmapId != 0xFFFF)
                    CheckUse(f.bitmapId, "a bitmap fill");
            for (auto& p : CheckShapeBits(s))
                Problem("shape " + std::to_string(id) + ": " + p);
            for (auto& p : CheckMinimalBits(s.bounds))
                Problem("shape bounds: " + p);
            m.shapes[id] = std::move(s);
            break;
        }
        case kDefineText: {
            Text t = ReadDefineText(tag.body);
            for (const TextRecord& r : t.records) {
                if (!r.fontId)
                    continue;
                CheckUse(*r.fontId, "a text record");
                auto font = m.fonts.find(*r.fontId);
                if (font != m.fonts.end())
                    for (const GlyphEntry& g : r.glyphs)
                        if (g.index >= font->second.glyphs.size())
                            Problem("text glyph index beyond its font");
            }
            m.texts[id] = std::move(t);
            break;
        }
        case kDefineFont2:
            m.fonts[id] = ReadDefineFont2(tag.body);
            break;
        case kDefineButton2: {
            Button b = ReadDefineButton2(tag.body);
            for (const ButtonRecord& r : b.records)
                CheckUse(r.characterId, "a button record");
            m.buttons[id] = std::move(b);
            break;
        }
        case kDefineSprite: {
            Sprite s;
            s.id = id;
            s.frameCount = static_cast<uint16_t>(tag.body.at(2) | tag.body.at(3) << 8);
            const std::vector<Tag> tags = ReadTags(tag.body, 4);
            CheckTagHeaders(tags);
            CheckEnded(tags, "sprite");
            s.timeline = Play(tags, true);
            if (s.timeline.frames.size() != s.frameCount)
                Problem("sprite " + std::to_string(id) + " declares " +
                        std::to_string(s.frameCount) + " frames but shows " +
                        std::to_string(s.timeline.frames.size()));
            m.sprites[id] = std::move(s);
            break;
        }
        default:
            m.bitmaps[id] = ReadBitmap(tag);
            break;
    }
}

void Validator::CheckTagHeaders(const std::vector<Tag>& tags) {
    for (const Tag& t : tags) {
        if (kLongHeaderTags.count(t.code) && !t.longHeader)
            Problem("tag " + std::to_string(t.code) + " lacks the long header");
        if (!kLongHeaderTags.count(t.code) && t.longHeader && t.length < 0x3F)
            Problem("tag " + std::to_string(t.code) + " uses a long header needlessly");
    }
}

void Validator::CheckEnded(const std::vector<Tag>& tags, const char* where) {
    if (tags.empty() || tags.back().code != kEnd)
        Problem(std::string(where) + " does not end with End");
    for (size_t i = 0; i + 1 < tags.size(); ++i)
        if (tags[i].code == kEnd)
            Problem(std::string(where) + " has End before its last tag");
}

Timeline Validator::Play(const std::vector<Tag>& tags, bool insideSprite) {
    Timeline timeline;
    timeline.tags = tags;
    Frame current;
    for (const Tag& tag : tags) {
        if (insideSprite && !kControlTags.count(tag.code))
            Problem("sprite body holds tag " + std::to_string(tag.code));
        switch (tag.code) {
            case kShowFrame:
                timeline.frames.push_back(current);
                current.actions.clear();
                current.placeTags = current.removeTags = 0;
                break;
            case kPlaceObject2: {
                const PlaceObject2 p = ReadPlaceObject2(tag.body);
                ++current.placeTags;
                auto it = current.displayList.find(p.depth);
                if (!p.move && it != current.displayList.end())
                    Problem("PlaceObject2 creates at occupied depth " + std::to_string(p.depth));
                if (p.move && it == current.displayList.end())
                    Problem("PlaceObject2 moves empty depth " + std::to_string(p.depth));
                if (p.move && !p.characterId && !p.matrix && !p.cxform && !p.ratio && !p.name)
                    Problem("PlaceObject2 moves without changing anything");
                if (p.move && p.clipDepth)
                    Problem("clip depth given on a move");
                if (p.characterId)
                    CheckUse(*p.characterId, "PlaceObject2");
                DisplayItem item =
                    it != current.displayList.end() && !p.characterId ? it->second : DisplayItem{};
                if (p.characterId)
                    item.characterId = *p.characterId;
                if (p.matrix)
                    item.matrix = *p.matrix;
                if (p.cxform)
                    item.cxform = *p.cxform;
                if (p.ratio)
                    item.ratio = *p.ratio;
                if (p.name)
                    item.name = *p.name;
                if (p.clipDepth)
                    item.clipDepth = *p.clipDepth;
                current.displayList[p.depth] = item;
                break;
            }
            case kRemoveObject2: {
                BitReader in(tag.body);
                const uint16_t depth = in.U16();
                ++current.removeTags;
                if (!current.displayList.erase(depth))
                    Problem("RemoveObject2 of empty depth " + std::to_string(depth));
                break;
            }
            case kDoAction: {
                BitReader in(tag.body);
                for (Action& a : ReadActions(in))
                    current.actions.push_back(std::move(a));
                if (in.Remaining() != 0)
                    Problem("DoAction has trailing bytes");
                break;
            }
            case kEnd:
            case kFrameLabel:
                break;
            case kSetBackgroundColor: {
                BitReader in(tag.body);
                result_.movie.background = ReadColour(in, false);
                break;
            }
            default:
                if (!insideSprite)
                    Define(tag);
                break;
        }
    }
    return timeline;
}

Validation Validator::Run(std::span<const uint8_t> bytes) {
    try {
        BitReader in(bytes);
        ReadHeader(in, bytes.size());
        const std::vector<Tag> tags = ReadTags(bytes, in.Position());
        CheckTagHeaders(tags);
        CheckEnded(tags, "movie");
        if (!tags.empty() && tags.back().offset + 2 + tags.back().length != bytes.size())
            Problem("bytes follow the End tag");
        result_.movie.timeline = Play(tags, false);
        if (result_.movie.timeline.frames.size() != result_.movie.frameCount)
            Problem("header says " + std::to_string(result_.movie.frameCount) +
                    " frames but the movie shows " +
                    std::to_string(result_.movie.timeline.frames.size()));
    } catch (const ParseError& e) {
        Problem(std::string("cannot parse: ") + e.what());
    }
    return std::move(result_);
}

}  // namespace

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

std::vector<std::string> CheckMinimalBits(const Matrix& m) {
    std::vector<std::string> problems;
    if (m.hasScale && m.scaleBits != SignedBitsOf({m.scaleX, m.scaleY}))
        problems.push_back(
            Describe("matrix scale", m.scaleBits, SignedBitsOf({m.scaleX, m.scaleY})));
    if (m.hasRotate && m.rotateBits != SignedBitsOf({m.rotateSkew0, m.rotateSkew1}))
        problems.push_back(
            Describe("matrix rotate", m.rotateBits, SignedBitsOf({m.rotateSkew0, m.rotateSkew1})));
    if (m.translateBits != SignedBitsOf({m.translateX, m.translateY}))
        problems.push_back(Describe("matrix translate", m.translateBits,
                                    SignedBitsOf({m.translateX, m.translateY})));
    return problems;
}

std::vector<std::string> CheckMinimalBits(const Cxform& c) {
    int needed = 0;
    for (int i = 0; i < 4; ++i) {
        if (c.hasMult)
            needed = std::max(needed, SignedBits(c.mult[i]));
        if (c.hasAdd)
            needed = std::max(needed, SignedBits(c.add[i]));
    }
    if (c.bits != needed)
        return {Describe("colour transform", c.bits, needed)};
    return {};
}

std::vector<std::string> CheckMinimalBits(const Rect& r) {
    const int needed = SignedBitsOf({r.xMin, r.xMax, r.yMin, r.yMax});
    if (r.bits != needed)
        return {Describe("rectangle", r.bits, needed)};
    return {};
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

Validation ValidateSwf(std::span<const uint8_t> bytes) {
    return Validator().Run(bytes);
}

}  // namespace SwfTest
