#include "support/swf_reader.h"

#include <algorithm>
#include <bit>
#include <set>

namespace SwfTest {
namespace {

using namespace ZoRender;

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
    const uint16_t id = DefinedId(tag);
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
                ApplyPlaceObject(current.displayList, p);
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
            case kSetBackgroundColor:
                result_.movie.background = ReadBackgroundColour(tag.body);
                break;
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

Validation ValidateSwf(std::span<const uint8_t> bytes) {
    return Validator().Run(bytes);
}

}  // namespace SwfTest
