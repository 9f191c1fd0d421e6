#include <gtest/gtest.h>

#include <functional>

#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"
#include "objects/text_object.h"
#include "platform/compiled_file.h"
#include "platform/zo_exception.h"

namespace {

using Writer = std::function<void(ZoFolderFile&)>;

/// Writes through `write` into an in-memory file and returns it open for reading.
ZoCompiledFile RoundTrip(const Writer& write) {
    ZoCompiledFile file(ZoFourCC("TSK1"), 1);
    EXPECT_TRUE(file.Open(true, true));
    write(file);
    return ZoCompiledFile::FromBytes(file.ToBytes(), ZoFourCC("TSK1"));
}

/// An object slot holding `kind` and then whatever `rest` writes.
ZoCompiledFile Slot(int32_t kind, const Writer& rest = {}) {
    return RoundTrip([&](ZoFolderFile& file) {
        ZoFolderGuard slot(file, true);
        file.WriteInt32(kind);
        if (rest)
            rest(file);
    });
}

template <typename T>
T& ReadBack(ZoFolderFile& file, ZoAutoPtr<TeskObject>& holder) {
    ReadObject(file, holder);
    EXPECT_TRUE(dynamic_cast<T*>(holder.get()));
    return static_cast<T&>(*holder);
}

TEST(ObjectRecord, EmptyHolderWritesKindFourAndNoNestedFolder) {
    auto file = RoundTrip([](ZoFolderFile& f) { WriteObject(f, nullptr); });
    {
        ZoFolderGuard slot(file, false);
        EXPECT_EQ(file.ReadInt32(), kTeskNoObject);
        EXPECT_THROW(file.DescendFolder(nullptr, false, true), ZoFileNonFatalException);
    }
    auto again = RoundTrip([](ZoFolderFile& f) { WriteObject(f, nullptr); });
    ZoAutoPtr<TeskObject> holder = std::make_unique<TeskSolidObject>();
    ReadObject(again, holder);
    EXPECT_EQ(holder, nullptr);
}

TEST(ObjectRecord, UnknownOrUnreadableCodesGiveTheDefaultPictureWithoutReadingIt) {
    const Writer imageRecord = [](ZoFolderFile& f) { TeskImageObject("other.png").Write(f); };
    struct Case {
        const char* name;
        ZoCompiledFile file;
    } cases[] = {
        {"kind 6", Slot(6, imageRecord)},
        {"negative kind", Slot(-1, imageRecord)},
        {"short code", RoundTrip([](ZoFolderFile& f) {
             ZoFolderGuard slot(f, true);
             f.WriteUInt16(0);
         })},
        {"no slot folder", RoundTrip([](ZoFolderFile&) {})},
    };
    for (auto& c : cases) {
        SCOPED_TRACE(c.name);
        ZoAutoPtr<TeskObject> holder = std::make_unique<TeskSolidObject>();
        EXPECT_EQ(ReadBack<TeskImageObject>(c.file, holder).GetFileName().GetName(),
                  "<PreviewImage1>");
    }
}

TEST(ObjectRecord, KindThreeKeepsTheHoldersObjectAndLetsItRead) {
    auto file = Slot(kTeskKeepObject, [](ZoFolderFile& f) { TeskSolidObject(0x0000FF).Write(f); });
    ZoAutoPtr<TeskObject> holder = std::make_unique<TeskSolidObject>();
    const TeskObject* original = holder.get();
    EXPECT_EQ(ReadBack<TeskSolidObject>(file, holder).GetColour(), 0x0000FFu);
    EXPECT_EQ(holder.get(), original);
}

TEST(ObjectRecord, MissingOwnRecordsGiveDefaults) {
    ZoAutoPtr<TeskObject> holder;
    auto solid = Slot(kTeskSolidObject);
    EXPECT_EQ(ReadBack<TeskSolidObject>(solid, holder).GetColour(), 0x808000u);
    auto graduated = Slot(kTeskGraduatedObject, [](ZoFolderFile& f) {
        ZoFolderGuard record(f, true);
        f.WriteInt32(3);  // three stops promised, one given
        f.WriteUInt32(0x00FFFF);
        f.WriteInt32(0);
    });
    EXPECT_EQ(ReadBack<TeskGraduatedObject>(graduated, holder).GetPositions(),
              (std::vector<int32_t>{0, 255}));
}

TEST(ObjectRecord, StopsRoundTripWithOpaqueColours) {
    TeskGraduatedObject written;
    ASSERT_TRUE(written.SetStops({{0x0000FF, 10}, {0x00FF00, 255}, {0xFF0000, 0}}, {0, 100, 255}));
    written.SetGradientType(kTeskRadialGradient);
    written.SetAngle(-30);
    auto file = RoundTrip([&](ZoFolderFile& f) { WriteObject(f, &written); });
    ZoAutoPtr<TeskObject> holder;
    const auto& read = ReadBack<TeskGraduatedObject>(file, holder);
    ASSERT_EQ(read.GetColours().size(), 3u);
    for (size_t i = 0; i < 3; ++i)
        EXPECT_EQ(read.GetColours()[i],
                  ZoFlash::ZoSWFColour(written.GetColours()[i].GetCOLORREF(), 255));
    EXPECT_EQ(read.GetPositions(), (std::vector<int32_t>{0, 100, 255}));
    EXPECT_EQ(read.GetGradientType(), kTeskRadialGradient);
    EXPECT_EQ(read.GetAngle(), -30);
}

TEST(ObjectRecord, ImageFieldsRoundTripAndFallBackOneByOne) {
    TeskImageObject written("pictures/Photo.JPG");
    written.SetTransparentColour(0x10E020);
    written.SetTolerance(17);
    written.SetUseTransparent(true);
    written.SetAutoTransparent(true);
    written.SetPlacement(kTeskFixedBottomCentre);
    auto file = RoundTrip([&](ZoFolderFile& f) { WriteObject(f, &written); });
    ZoAutoPtr<TeskObject> holder;
    const auto& read = ReadBack<TeskImageObject>(file, holder);
    EXPECT_EQ(read.GetFileName(), ZoResourceKey("pictures/Photo.JPG"));
    EXPECT_EQ(read.GetTransparentColour(), 0x10E020u);
    EXPECT_EQ(read.GetTolerance(), 17);
    EXPECT_TRUE(read.GetUseTransparent() && read.GetAutoTransparent());
    EXPECT_EQ(read.GetPlacement(), kTeskFixedBottomCentre);

    // A key of unknown kind is a name key without a name; a record that
    // stops short clears the transparency and leaves placement stretched.
    auto damaged = Slot(kTeskKeepObject, [](ZoFolderFile& f) {
        ZoFolderGuard record(f, true);
        {
            ZoFolderGuard key(f, true);
            f.WriteInt32(7);
        }
        f.WriteUInt32(0x0000FF);
    });
    auto& image = ReadBack<TeskImageObject>(damaged, holder);
    EXPECT_EQ(image.GetFileName(), ZoResourceKey(ZoResourceKey::kByName, "", -1));
    EXPECT_EQ(image.GetTransparentColour(), 0u);
    EXPECT_EQ(image.GetTolerance(), 0);
    EXPECT_FALSE(image.GetUseTransparent() || image.GetAutoTransparent());
    EXPECT_EQ(image.GetPlacement(), kTeskStretch);
}

TEST(ObjectRecord, TextRoundTripsAsRtfAndAShortRecordGivesAnEmptyTransparentText) {
    TeskTextObject written;
    written.GetRichText().SetRTF(
        R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\b Caf\'e9 {\i bold}\par})");
    written.SetBackColour(0x102030);
    written.SetVerticalAlignment(ZoVerticalAlignment::Centre);
    auto file = RoundTrip([&](ZoFolderFile& f) { WriteObject(f, &written); });
    ZoAutoPtr<TeskObject> holder;
    const auto& read = ReadBack<TeskTextObject>(file, holder);
    EXPECT_TRUE(read.GetRichText().SameContent(written.GetRichText()));
    EXPECT_EQ(read.GetRichText().Text(), "Caf\xC3\xA9 bold\n\n");
    EXPECT_EQ(read.GetBackColour(), 0x102030u);
    EXPECT_EQ(read.GetVerticalAlignment(), ZoVerticalAlignment::Centre);
    const auto clone = read.Clone();
    EXPECT_TRUE(
        static_cast<TeskTextObject&>(*clone).GetRichText().SameContent(written.GetRichText()));

    // The text is there but the colour is not: nothing of the record is kept.
    auto shortRecord = Slot(kTeskKeepObject, [](ZoFolderFile& f) {
        ZoFolderGuard record(f, true);
        f.WriteString(R"({\rtf1 Lost})");
    });
    auto& text = ReadBack<TeskTextObject>(shortRecord, holder);
    EXPECT_EQ(text.GetRichText().Text(), "\n");
    EXPECT_EQ(text.GetRichText().FormatAt(0)->FontName(), "Times New Roman");
    EXPECT_EQ(text.GetBackColour(), TeskTextObject::kTransparent);
    EXPECT_EQ(text.GetVerticalAlignment(), ZoVerticalAlignment::Top);
}

}  // namespace
