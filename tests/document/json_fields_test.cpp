#include <gtest/gtest.h>

#include "document/json_field_reader.h"
#include "document/json_field_writer.h"
#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"
#include "objects/text_object.h"
#include "platform/zo_exception.h"

namespace {

// A state with one field of every shape the visitor knows.
struct Sample {
    int32_t count = -3;
    uint32_t colour = 0xFFFFFF;
    bool flag = true;
    double ratio = 0.5;
    ZoString label = "default";
    ZoRect area{0, 0, 100, 100};
    ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>();
    int32_t nested = 7;
    std::vector<int32_t> values{1, 2};
    std::vector<std::pair<int32_t, bool>> pairs;

    void VisitFields(TeskFieldVisitor& visitor) {
        visitor.Field("count", count);
        visitor.Field("colour", colour);
        visitor.Field("flag", flag);
        visitor.Field("ratio", ratio);
        visitor.Field("label", label);
        visitor.Field("area", area);
        visitor.Object("object", object);
        visitor.Group("timing", [&] { visitor.Field("nested", nested); });
        visitor.List(
            "values", values.size(), [&](size_t size) { values.resize(size); },
            [&](size_t index) { visitor.Field("value", values[index]); });
        visitor.List(
            "pairs", pairs.size(), [&](size_t size) { pairs.resize(size); },
            [&](size_t index) {
                visitor.Field("number", pairs[index].first);
                visitor.Field("on", pairs[index].second);
            });
    }
};

TeskJson Write(Sample& sample) {
    TeskJson json;
    TeskJsonFieldWriter writer(json);
    sample.VisitFields(writer);
    return json;
}

void Read(const std::string& text, Sample& sample) {
    const TeskJson json = TeskJson::parse(text);
    TeskJsonFieldReader reader(json, "");
    sample.VisitFields(reader);
    reader.CheckAllKeysUsed();
}

TEST(JsonFields, WritesEveryShapeInVisitOrder) {
    Sample sample;
    sample.pairs = {{4, false}};
    EXPECT_EQ(Write(sample).dump(),
              R"({"count":-3,"colour":16777215,"flag":true,"ratio":0.5,"label":"default",)"
              R"("area":{"left":0,"top":0,"right":100,"bottom":100},)"
              R"("object":{"kind":"Solid Colour","colour":"#008080"},"timing":{"nested":7},)"
              R"("values":[1,2],"pairs":[{"number":4,"on":false}]})");
}

TEST(JsonFields, ChangedValuesRoundTripAndMissingKeysKeepDefaults) {
    Sample changed;
    changed.count = INT32_MIN;
    changed.colour = 0xFFFFFFFF;
    changed.flag = false;
    changed.ratio = 0.1 + 0.2;  // needs all 17 digits to come back exactly
    changed.label = "quote \" and \xC3\xA9";
    changed.area = {-5, -6, 7, 8};
    auto gradient = std::make_unique<TeskGraduatedObject>();
    gradient->SetAngle(45);
    changed.object = std::move(gradient);
    changed.nested = 0;
    changed.values = {};
    changed.pairs = {{1, true}, {2, false}};
    const std::string text = Write(changed).dump(2);

    Sample read;
    Read(text, read);
    EXPECT_EQ(Write(read).dump(2), text);
    EXPECT_EQ(read.ratio, 0.1 + 0.2);

    Sample partial;
    Read(R"({"label":"only this","timing":{}})", partial);
    Sample defaults;
    defaults.label = "only this";
    EXPECT_EQ(Write(partial), Write(defaults));
}

TEST(JsonFields, ObjectSlotsFollowTheirKind) {
    Sample sample;
    sample.object = std::make_unique<TeskImageObject>("<PreviewImage2>");
    // Same kind: fields left out keep the slot's own object.
    Read(R"({"object":{"kind":"Image","tolerance":9}})", sample);
    auto* image = dynamic_cast<TeskImageObject*>(sample.object.get());
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->GetFileName().GetName(), "<PreviewImage2>");
    EXPECT_EQ(image->GetTolerance(), 9);
    // Another kind starts from that kind's defaults.
    Read(R"({"object":{"kind":"Solid Colour"}})", sample);
    auto* solid = dynamic_cast<TeskSolidObject*>(sample.object.get());
    ASSERT_NE(solid, nullptr);
    EXPECT_EQ(solid->GetColour(), TeskSolidObject::kDefaultColour);
    // Colours read as the web writes them, red first, in either case.
    Read(R"({"object":{"kind":"Solid Colour","colour":"#FF8000"}})", sample);
    EXPECT_EQ(dynamic_cast<TeskSolidObject&>(*sample.object).GetColour(), 0x0080FFu);
    Read(R"({"object":null})", sample);
    EXPECT_EQ(sample.object, nullptr);
    EXPECT_TRUE(Write(sample)["object"].is_null());
}

TEST(JsonFields, TextKeepsItsRtfAsUtf8) {
    Sample sample;
    auto text = std::make_unique<TeskTextObject>();
    // RTF carries the e acute as the Windows-1252 byte 0xE9.
    text->GetRichText().SetRTF("{\\rtf1\\ansi Caf\xE9 \\u8364? \\u-10179?\\u-8704?}");
    text->SetBackColour(0x00FF00);
    const ZoString written = text->GetRichText().Text();
    sample.object = std::move(text);
    const std::string json = Write(sample).dump();
    EXPECT_NE(json.find("Caf\xC3\xA9 \xE2\x82\xAC"), std::string::npos) << json;

    Sample read;
    Read(json, read);
    const auto* back = dynamic_cast<TeskTextObject*>(read.object.get());
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->GetRichText().Text(), written);
    EXPECT_EQ(back->GetBackColour(), 0x00FF00u);
    EXPECT_EQ(Write(read).dump(), json);
}

TEST(JsonFields, BadInputNamesTheKey) {
    const struct {
        const char* json;
        const char* message;
    } cases[] = {
        {R"({"cuont":1})", "Unknown key 'cuont'"},
        {R"({"timing":{"nested":1,"extra":2}})", "Unknown key 'timing.extra'"},
        {R"({"pairs":[{"number":1},{"on":true,"x":0}]})", "Unknown key 'pairs[1].x'"},
        {R"({"object":{"kind":"Solid Colour","color":1}})", "Unknown key 'object.color'"},
        {R"({"area":{"left":1,"width":2}})", "Unknown key 'area.width'"},
        {R"({"count":"3"})", "Key 'count' must be an integer"},
        {R"({"count":1.5})", "Key 'count' must be an integer"},
        {R"({"count":2147483648})", "Key 'count' is out of range"},
        {R"({"colour":-1})", "Key 'colour' is out of range"},
        {R"({"colour":18446744073709551615})", "Key 'colour' must be an integer in range"},
        {R"({"object":{"kind":"Solid Colour","colour":"#ff80"}})",
         "Key 'object.colour' must be a colour such as"},
        {R"({"object":{"kind":"Solid Colour","colour":"#ff80zz"}})",
         "Key 'object.colour' must be a colour such as"},
        {R"({"flag":1})", "Key 'flag' must be true or false"},
        {R"({"ratio":"0.5"})", "Key 'ratio' must be a number"},
        {R"({"label":null})", "Key 'label' must be a string"},
        {R"({"timing":[]})", "Key 'timing' must be an object"},
        {R"({"values":{}})", "Key 'values' must be an array"},
        {R"({"values":["1"]})", "Key 'values[0]' must be an integer"},
        {R"({"pairs":[3]})", "Key 'pairs[0]' must be an object"},
        {R"({"object":{"colour":1}})", "Key 'object.kind' must name the kind"},
        {R"({"object":{"kind":"Sound"}})", "names no kind of object: 'Sound'"},
        {R"({"object":5})", "Key 'object' must be an object or null"},
        {R"([1])", "must be an object"},
    };
    for (const auto& c : cases) {
        Sample sample;
        try {
            Read(c.json, sample);
            ADD_FAILURE() << c.json << " was accepted";
        } catch (const ZoException& error) {
            EXPECT_NE(std::string(error.what()).find(c.message), std::string::npos)
                << c.json << " gave: " << error.what();
        }
    }
}

TEST(JsonFields, NonFiniteNumbersAreRefusedOnWriting) {
    Sample sample;
    sample.ratio = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(Write(sample), ZoException);
}

}  // namespace
