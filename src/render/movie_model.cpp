#include "render/movie_model.h"

#include <map>

#include "render/bitmap_surface.h"

namespace ZoRender {
namespace {

// Display-list entries kept over all frames of all timelines (about 100
// bytes each). Frames that change nothing share their list, but a hostile
// file could still make a huge list change every frame; a mesh effect of 600
// pieces over 100 frames keeps 60 000.
constexpr size_t kMaxKeptEntries = size_t{1} << 20;

ShapeCharacter MakeShape(const Tag& tag) {
    Shape shape = ReadDefineShape(tag.body, tag.code);
    ShapeCharacter c;
    c.paths = BuildShapePaths(shape);
    c.fills = std::move(shape.fills);
    c.lines = std::move(shape.lines);
    return c;
}

FontCharacter MakeFont(const Tag& tag) {
    const Font font = ReadDefineFont2(tag.body);
    FontCharacter c;
    for (const Shape& glyph : font.glyphs)
        c.glyphs.push_back(std::move(BuildShapePaths(glyph).fills.front()));
    return c;
}

// Text records inherit font, colour and position from the records before.
TextCharacter MakeText(const Tag& tag) {
    const Text text = ReadDefineText(tag.body);
    TextCharacter c;
    c.matrix = ToCairo(text.matrix);
    TextRun style;
    double x = 0, y = 0;
    for (const TextRecord& r : text.records) {
        if (r.fontId)
            style.fontId = *r.fontId;
        if (r.height)
            style.height = *r.height;
        if (r.colour)
            style.colour = *r.colour;
        if (r.x)
            x = *r.x;
        if (r.y)
            y = *r.y;
        TextRun run = style;
        for (const GlyphEntry& g : r.glyphs) {
            run.glyphs.push_back({g.index, x, y});
            x += g.advance;
        }
        c.runs.push_back(std::move(run));
    }
    return c;
}

DisplayEntry MakeEntry(uint16_t depth, const DisplayItem& item, int32_t placedFrame) {
    DisplayEntry e;
    e.depth = depth;
    e.characterId = item.characterId;
    e.clipDepth = item.clipDepth;
    e.placedFrame = placedFrame;
    e.matrix = ToCairo(item.matrix);
    e.colour = ColourTransform::FromRecord(item.cxform);
    return e;
}

DisplayList MakeButton(const Tag& tag) {
    const Button button = ReadDefineButton2(tag.body);
    std::map<uint16_t, DisplayEntry> up;
    for (const ButtonRecord& r : button.records) {
        if (!(r.states & 0x01))
            continue;
        DisplayItem item;
        item.characterId = r.characterId;
        item.matrix = r.matrix;
        item.cxform = r.cxform;
        up[r.depth] = MakeEntry(r.depth, item, 0);
    }
    DisplayList list;
    for (auto& [depth, entry] : up)
        list.push_back(entry);
    return list;
}

class ModelBuilder {
  public:
    explicit ModelBuilder(MovieModel& model) : model_(model) {}

    Timeline Play(const std::vector<Tag>& tags, bool insideSprite) {
        Timeline timeline;
        std::map<uint16_t, DisplayItem> items;
        std::map<uint16_t, int32_t> placedAt;
        bool changed = true;
        for (const Tag& tag : tags) {
            switch (tag.code) {
                case kShowFrame:
                    ShowFrame(timeline, items, placedAt, changed);
                    changed = false;
                    break;
                case kPlaceObject2: {
                    const PlaceObject2 place = ReadPlaceObject2(tag.body);
                    if (place.characterId || !items.count(place.depth))
                        placedAt[place.depth] = static_cast<int32_t>(timeline.frames.size());
                    ApplyPlaceObject(items, place);
                    changed = true;
                    break;
                }
                case kRemoveObject2:
                    changed |= items.erase(BitReader(tag.body).U16()) > 0;
                    break;
                case kSetBackgroundColor:
                    model_.background = ReadBackgroundColour(tag.body);
                    break;
                default:
                    // Sprites hold control tags only; a player ignores others.
                    if (!insideSprite)
                        Define(tag);
                    break;
            }
        }
        return timeline;
    }

  private:
    void ShowFrame(Timeline& timeline, const std::map<uint16_t, DisplayItem>& items,
                   const std::map<uint16_t, int32_t>& placedAt, bool changed) {
        if (!changed && !timeline.frames.empty()) {
            timeline.frames.push_back(timeline.frames.back());
            return;
        }
        kept_ += items.size();
        if (kept_ > kMaxKeptEntries)
            throw ParseError("the movie's display lists are too large");
        auto list = std::make_shared<DisplayList>();
        list->reserve(items.size());
        for (const auto& [depth, item] : items)
            list->push_back(MakeEntry(depth, item, placedAt.at(depth)));
        timeline.frames.push_back(std::move(list));
    }

    void Define(const Tag& tag) {
        switch (tag.code) {
            case kDefineShape:
            case kDefineShape2:
            case kDefineShape3:
                model_.shapes[DefinedId(tag)] = MakeShape(tag);
                break;
            case kDefineSprite:
                DefineSprite(tag);
                break;
            case kDefineButton2:
                model_.buttons[DefinedId(tag)] = MakeButton(tag);
                break;
            case kDefineText:
                model_.texts[DefinedId(tag)] = MakeText(tag);
                break;
            case kDefineFont2:
                model_.fonts[DefinedId(tag)] = MakeFont(tag);
                break;
            case kDefineBitsLossless:
            case kDefineBitsLossless2:
            case kDefineBitsJPEG2:
            case kDefineBitsJPEG3:
                model_.bitmaps[DefinedId(tag)] = DecodeBitmap(ReadBitmap(tag));
                break;
            default:
                break;  // tags a movie may carry that draw nothing
        }
    }

    void DefineSprite(const Tag& tag) {
        if (tag.body.size() < 4)
            throw ParseError("DefineSprite is too short");
        model_.sprites[DefinedId(tag)] = Play(ReadTags(tag.body, 4), true);
    }

    MovieModel& model_;
    size_t kept_ = 0;
};

void ReadHeader(BitReader& in, MovieModel& model) {
    const std::vector<uint8_t> signature = in.Bytes(3);
    if (signature[0] == 'C' && signature[1] == 'W' && signature[2] == 'S')
        throw ParseError("compressed movies are not supported");
    if (signature[0] != 'F' || signature[1] != 'W' || signature[2] != 'S')
        throw ParseError("not an SWF movie");
    model.version = in.U8();
    in.U32();  // file length: players go by the tags
    model.frameSize = ReadRect(in);
    model.frameRate = in.U16();
    in.U16();  // frame count: the ShowFrame tags decide
    if (model.frameSize.xMax <= model.frameSize.xMin ||
        model.frameSize.yMax <= model.frameSize.yMin)
        throw ParseError("the movie has an empty stage");
}

}  // namespace

cairo_matrix_t ToCairo(const Matrix& m) noexcept {
    cairo_matrix_t c;
    cairo_matrix_init(&c, m.scaleX / 65536.0, m.rotateSkew0 / 65536.0, m.rotateSkew1 / 65536.0,
                      m.scaleY / 65536.0, m.translateX, m.translateY);
    return c;
}

MovieModel ParseMovie(std::span<const uint8_t> bytes) {
    MovieModel model;
    BitReader in(bytes);
    ReadHeader(in, model);
    model.timeline = ModelBuilder(model).Play(ReadTags(bytes, in.Position()), false);
    if (model.timeline.frames.empty())
        model.timeline.frames.push_back(std::make_shared<DisplayList>());
    return model;
}

}  // namespace ZoRender
