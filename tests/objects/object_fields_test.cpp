// Named field access: every stored field is visited, and what one visitor
// reports another can load back into a fresh object.
#include <gtest/gtest.h>

#include <map>
#include <variant>

#include "objects/field_visitor.h"
#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"

namespace {

using Value = std::variant<int32_t, uint32_t, bool, double, ZoString, ZoRect>;
using Fields = std::map<ZoString, Value>;

/// Reports fields into a flat map keyed by path, or loads them from it.
class MapVisitor : public TeskFieldVisitor {
  public:
    MapVisitor(Fields& fields, bool reading) : fields_(fields), reading_(reading) {}
    bool IsReading() const override { return reading_; }
    void Field(std::string_view name, int32_t& value) override { Visit(name, value); }
    void Field(std::string_view name, uint32_t& value) override { Visit(name, value); }
    void Field(std::string_view name, bool& value) override { Visit(name, value); }
    void Field(std::string_view name, double& value) override { Visit(name, value); }
    void Field(std::string_view name, ZoString& value) override { Visit(name, value); }
    void Field(std::string_view name, ZoRect& value) override { Visit(name, value); }
    void Object(std::string_view, ZoAutoPtr<TeskObject>&) override { ADD_FAILURE(); }
    void Group(std::string_view name, const std::function<void()>& visitMembers) override {
        Nested(ZoString(name) + ".", visitMembers);
    }
    void List(std::string_view name, size_t size, const std::function<void(size_t)>& resize,
              const std::function<void(size_t)>& visitElement) override {
        auto count = static_cast<int32_t>(size);
        Visit(ZoString(name) + ".size", count);
        if (reading_)
            resize(static_cast<size_t>(count));
        for (size_t i = 0; i < static_cast<size_t>(count); ++i)
            Nested(ZoFormat("%s[%zu].", ZoString(name).c_str(), i), [&] { visitElement(i); });
    }

  private:
    template <typename T>
    void Visit(std::string_view name, T& value) {
        const ZoString key = prefix_ + ZoString(name);
        if (!reading_) {
            EXPECT_TRUE(fields_.emplace(key, value).second) << "visited twice: " << key;
            return;
        }
        const auto found = fields_.find(key);
        ASSERT_NE(found, fields_.end()) << key;
        value = std::get<T>(found->second);
    }
    void Nested(const ZoString& prefix, const std::function<void()>& visit) {
        const ZoString outer = prefix_;
        prefix_ += prefix;
        visit();
        prefix_ = outer;
    }

    Fields& fields_;
    bool reading_;
    ZoString prefix_;
};

Fields Report(TeskObject& object) {
    Fields fields;
    MapVisitor visitor(fields, false);
    object.VisitFields(visitor);
    return fields;
}

void Load(TeskObject& object, Fields fields) {
    MapVisitor visitor(fields, true);
    object.VisitFields(visitor);
}

TEST(ObjectFields, WhatIsReportedLoadsBackIntoAFreshObject) {
    TeskSolidObject solid(0x123456);
    TeskGraduatedObject graduated;
    ASSERT_TRUE(
        graduated.SetStops({{0x00FF00, 255}, {0x0000FF, 255}, {0xFF0000, 255}}, {5, 99, 240}));
    graduated.SetGradientType(kTeskRadialGradient);
    graduated.SetAngle(33);
    TeskImageObject image("pictures/a.png");
    image.SetTransparentColour(0xFEFEFE);
    image.SetTolerance(3);
    image.SetUseTransparent(true);
    image.SetAutoTransparent(true);
    image.SetPlacement(kTeskTiled);

    TeskSolidObject freshSolid;
    TeskGraduatedObject freshGraduated;
    TeskImageObject freshImage;
    struct Case {
        TeskObject& written;
        TeskObject& fresh;
        size_t fieldCount;
    } cases[] = {
        {solid, freshSolid, 1},
        {graduated, freshGraduated, 10},
        {image, freshImage, 6},
    };
    for (auto& c : cases) {
        SCOPED_TRACE(c.written.GetType());
        const Fields fields = Report(c.written);
        EXPECT_EQ(fields.size(), c.fieldCount);
        Load(c.fresh, fields);
        EXPECT_EQ(Report(c.fresh), fields);
    }
    EXPECT_EQ(freshGraduated.GetPositions(), graduated.GetPositions());
    EXPECT_EQ(freshImage.GetFileName(), ZoResourceKey("pictures/a.png"));
}

TEST(ObjectFields, LoadingUnevenStopListsKeepsThemPaired) {
    TeskGraduatedObject graduated;
    Fields fields = Report(graduated);
    fields["positions.size"] = int32_t{3};
    fields["positions[2].position"] = int32_t{90};
    Load(graduated, fields);
    EXPECT_EQ(graduated.GetColours().size(), graduated.GetPositions().size());
    EXPECT_TRUE(std::is_sorted(graduated.GetPositions().begin(), graduated.GetPositions().end()));
}

}  // namespace
