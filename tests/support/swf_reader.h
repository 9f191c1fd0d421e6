#pragma once
// A strict SWF validator for tests only: parses every tag Vimbo writes back
// into plain records (with the player's parser) and checks the file against
// the rules players rely on.
#include <map>
#include <span>
#include <string>
#include <vector>

#include "render/swf_parser.h"

namespace SwfTest {

using ZoRender::Action;
using ZoRender::Bitmap;
using ZoRender::BitReader;
using ZoRender::Button;
using ZoRender::ButtonCondition;
using ZoRender::ButtonRecord;
using ZoRender::Cxform;
using ZoRender::DisplayItem;
using ZoRender::FillStyle;
using ZoRender::Font;
using ZoRender::GlyphEntry;
using ZoRender::LineStyle;
using ZoRender::Matrix;
using ZoRender::ParseError;
using ZoRender::PlaceObject2;
using ZoRender::ReadCxformWithAlpha;
using ZoRender::ReadDefineShape;
using ZoRender::ReadMatrix;
using ZoRender::ReadPlaceObject2;
using ZoRender::ReadRect;
using ZoRender::ReadTags;
using ZoRender::Rect;
using ZoRender::Rgba;
using ZoRender::Shape;
using ZoRender::ShapeRecord;
using ZoRender::Tag;
using ZoRender::Text;
using ZoRender::TextRecord;

struct Frame {
    std::map<uint16_t, DisplayItem> displayList;
    std::vector<Action> actions;
    int placeTags = 0, removeTags = 0;  // control tags that built this frame
};

struct Timeline {
    std::vector<Tag> tags;
    std::vector<Frame> frames;
};

struct Sprite {
    uint16_t id = 0;
    uint16_t frameCount = 0;
    Timeline timeline;
};

struct Movie {
    std::string signature;
    int version = 0;
    uint32_t fileLength = 0;
    Rect frameSize;
    uint16_t frameRate = 0;  // 8.8
    uint16_t frameCount = 0;
    std::optional<Rgba> background;
    Timeline timeline;
    std::vector<uint16_t> definitionOrder;       // character ids in file order
    std::map<uint16_t, uint16_t> characterTags;  // id -> defining tag code
    std::map<uint16_t, Shape> shapes;
    std::map<uint16_t, Sprite> sprites;
    std::map<uint16_t, Button> buttons;
    std::map<uint16_t, Text> texts;
    std::map<uint16_t, Font> fonts;
    std::map<uint16_t, Bitmap> bitmaps;
};

struct Validation {
    std::vector<std::string> problems;  // empty when the file is fine
    Movie movie;
};

/// Parses and checks a whole file.
Validation ValidateSwf(std::span<const uint8_t> bytes);

/// Problems with minimal bit counts in a record just read.
std::vector<std::string> CheckMinimalBits(const Matrix& m);
std::vector<std::string> CheckMinimalBits(const Cxform& c);
std::vector<std::string> CheckMinimalBits(const Rect& r);

}  // namespace SwfTest
