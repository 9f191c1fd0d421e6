#include <gtest/gtest.h>

#include <functional>

#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/object.h"
#include "objects/solid_object.h"
#include "platform/compiled_file.h"
#include "platform/zo_exception.h"

namespace {

constexpr uint32_t kTag = ZoFourCC("TSK1");

/// Writes through `write` into an in-memory file and returns it open for reading.
ZoCompiledFile RoundTrip(const std::function<void(ZoFolderFile&)>& write) {
    ZoCompiledFile file(kTag, 1);
    EXPECT_TRUE(file.Open(true, true));
    write(file);
    return ZoCompiledFile::FromBytes(file.ToBytes(), kTag);
}

/// An object slot whose folder holds only `kind` and then `rest`.
ZoCompiledFile SlotWithKind(int32_t kind, const std::function<void(ZoFolderFile&)>& rest = {}) {
    return RoundTrip([&](ZoFolderFile& file) {
        ZoFolderGuard slot(file, true);
        file.WriteInt32(kind);
        if (rest)
            rest(file);
    });
}

ZoAutoPtr<TeskObject> ReadBack(ZoFolderFile& file, ZoAutoPtr<TeskObject> holder = nullptr) {
    ReadObject(file, holder);
    return holder;
}

TEST(ObjectRecord, EmptyHolderWritesKindFourAndNoNestedFolder) {
    auto file = RoundTrip([](ZoFolderFile& f) { WriteObject(f, nullptr); });
    {
        ZoFolderGuard slot(file, false);
        EXPECT_EQ(file.ReadInt32(), kTeskNoObject);
        EXPECT_THROW(file.DescendFolder(nullptr, false, true), ZoFileNonFatalException);
    }
    auto again = RoundTrip([](ZoFolderFile& f) { WriteObject(f, nullptr); });
    EXPECT_EQ(ReadBack(again, std::make_unique<TeskSolidObject>()), nullptr);
}

TEST(ObjectRecord, UnknownOrUnreadableCodesGiveTheDefaultPictureWithoutReadingIt) {
    // A nested record that a reader would take for an image record.
    auto imageLike = [](ZoFolderFile& f) { TeskImageObject("elsewhere.png").Write(f); };
    struct Case {
        const char* name;
        ZoCompiledFile file;
    };
    Case cases[] = {
        {"kind 6", SlotWithKind(6, imageLike)},
        {"kind 1000", SlotWithKind(1000, imageLike)},
        {"negative kind", SlotWithKind(-1, imageLike)},
        {"short code", RoundTrip([](ZoFolderFile& f) {
             ZoFolderGuard slot(f, true);
             f.WriteUInt16(0);
         })},
        {"no slot folder", RoundTrip([](ZoFolderFile&) {})},
    };
    for (auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto object = ReadBack(c.file, std::make_unique<TeskSolidObject>(0x123456));
        ASSERT_NE(object, nullptr);
        ASSERT_EQ(object->GetType(), kTeskImageObject);
        EXPECT_EQ(static_cast<TeskImageObject&>(*object).GetFileName().GetName(),
                  "<PreviewImage1>");
    }
}

TEST(ObjectRecord, KindThreeKeepsTheHoldersObjectAndLetsItRead) {
    auto file =
        SlotWithKind(kTeskKeepObject, [](ZoFolderFile& f) { TeskSolidObject(0x0000FF).Write(f); });
    auto held = std::make_unique<TeskSolidObject>();
    TeskObject* original = held.get();
    auto object = ReadBack(file, std::move(held));
    ASSERT_EQ(object.get(), original);
    EXPECT_EQ(static_cast<TeskSolidObject&>(*object).GetColour(), 0x0000FFu);

    auto empty = SlotWithKind(kTeskKeepObject);
    EXPECT_EQ(ReadBack(empty), nullptr);
}

TEST(ObjectRecord, SlotsAfterADamagedOneStillRead) {
    auto file = RoundTrip([](ZoFolderFile& f) {
        {
            ZoFolderGuard slot(f, true);
            f.WriteInt32(kTeskSolidObject);  // its own record is missing
        }
        TeskSolidObject second(0x00FF00);
        WriteObject(f, &second);
    });
    auto first = ReadBack(file);
    auto second = ReadBack(file);
    ASSERT_EQ(first->GetType(), kTeskSolidObject);
    EXPECT_EQ(static_cast<TeskSolidObject&>(*first).GetColour(), TeskSolidObject::kDefaultColour);
    ASSERT_EQ(second->GetType(), kTeskSolidObject);
    EXPECT_EQ(static_cast<TeskSolidObject&>(*second).GetColour(), 0x00FF00u);
}

TEST(SolidObject, DefaultIsTealAndHasNoNaturalSize) {
    TeskSolidObject solid;
    EXPECT_EQ(ZoGetRed(solid.GetColour()), 0x00);
    EXPECT_EQ(ZoGetGreen(solid.GetColour()), 0x80);
    EXPECT_EQ(ZoGetBlue(solid.GetColour()), 0x80);
    ZoSize size{5, 5};
    EXPECT_FALSE(solid.GetNaturalSize(size));
    EXPECT_EQ(size, (ZoSize{0, 0}));
}

TEST(GraduatedObject, StopsRoundTripWithOpaqueColours) {
    TeskGraduatedObject written;
    ASSERT_TRUE(written.SetStops({{0x0000FF, 10}, {0x00FF00, 255}, {0xFF0000, 0}}, {0, 100, 255}));
    written.SetGradientType(kTeskRadialGradient);
    written.SetAngle(-30);
    auto file = RoundTrip([&](ZoFolderFile& f) { WriteObject(f, &written); });
    auto object = ReadBack(file);
    ASSERT_EQ(object->GetType(), kTeskGraduatedObject);
    const auto& read = static_cast<TeskGraduatedObject&>(*object);
    ASSERT_EQ(read.GetColours().size(), 3u);
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(read.GetColours()[i].GetCOLORREF(), written.GetColours()[i].GetCOLORREF());
        EXPECT_EQ(read.GetColours()[i].GetAlpha(), 255);
    }
    EXPECT_EQ(read.GetPositions(), (std::vector<int32_t>{0, 100, 255}));
    EXPECT_EQ(read.GetGradientType(), kTeskRadialGradient);
    EXPECT_EQ(read.GetAngle(), -30);
}

TEST(GraduatedObject, DamagedRecordsGiveTheDefaults) {
    auto shortRecord = [](int32_t count, int32_t pairs) {
        return SlotWithKind(kTeskGraduatedObject, [=](ZoFolderFile& f) {
            ZoFolderGuard record(f, true);
            f.WriteInt32(count);
            for (int32_t i = 0; i < pairs; ++i) {
                f.WriteUInt32(0x00FFFF);
                f.WriteInt32(i * 10);
            }
        });
    };
    struct Case {
        const char* name;
        ZoCompiledFile file;
    } cases[] = {
        {"truncated stops", shortRecord(3, 2)},
        {"no type or angle", shortRecord(2, 2)},
        {"zero stops", shortRecord(0, 0)},
        {"nine stops", shortRecord(9, 9)},
        {"no record", SlotWithKind(kTeskGraduatedObject)},
    };
    for (auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto object = ReadBack(c.file);
        ASSERT_EQ(object->GetType(), kTeskGraduatedObject);
        const auto& read = static_cast<TeskGraduatedObject&>(*object);
        EXPECT_EQ(read.GetPositions(), (std::vector<int32_t>{0, 255}));
        EXPECT_EQ(read.GetColours().front(), ZoFlash::ZoSWFColour(0, 0, 255, 255));
        EXPECT_EQ(read.GetColours().back(), ZoFlash::ZoSWFColour(0, 0, 0, 255));
        EXPECT_EQ(read.GetGradientType(), kTeskLinearGradient);
    }
}

TEST(ImageObject, EveryFieldRoundTrips) {
    TeskImageObject written("pictures/Photo.JPG");
    written.SetTransparentColour(0x10E020);
    written.SetTolerance(17);
    written.SetUseTransparent(true);
    written.SetAutoTransparent(true);
    written.SetPlacement(kTeskFixedBottomCentre);
    auto file = RoundTrip([&](ZoFolderFile& f) { WriteObject(f, &written); });
    auto object = ReadBack(file);
    ASSERT_EQ(object->GetType(), kTeskImageObject);
    const auto& read = static_cast<TeskImageObject&>(*object);
    EXPECT_EQ(read.GetFileName(), ZoResourceKey("pictures/Photo.JPG"));
    EXPECT_EQ(read.GetTransparentColour(), 0x10E020u);
    EXPECT_EQ(read.GetTolerance(), 17);
    EXPECT_TRUE(read.GetUseTransparent());
    EXPECT_TRUE(read.GetAutoTransparent());
    EXPECT_EQ(read.GetPlacement(), kTeskFixedBottomCentre);
}

TEST(ImageObject, DamagedRecordsFallBackFieldByField) {
    auto writeKey = [](ZoFolderFile& f, int32_t kind) {
        ZoFolderGuard key(f, true);
        f.WriteInt32(kind);
        f.WriteString("a.png");
    };
    // The fields up to the placement folder, which is missing.
    auto noPlacement = SlotWithKind(kTeskImageObject, [&](ZoFolderFile& f) {
        ZoFolderGuard record(f, true);
        writeKey(f, ZoResourceKey::kByName);
        f.WriteUInt32(0x0000FF);
        f.WriteInt32(5);
        f.WriteBool(true);
        f.WriteBool(false);
    });
    auto object = ReadBack(noPlacement);
    auto* image = static_cast<TeskImageObject*>(object.get());
    EXPECT_EQ(image->GetFileName().GetName(), "a.png");
    EXPECT_EQ(image->GetTolerance(), 5);
    EXPECT_TRUE(image->GetUseTransparent());
    EXPECT_EQ(image->GetPlacement(), kTeskStretch);

    // A key of unknown kind is a name key with no name; a short record
    // clears the transparency settings.
    auto holder = std::make_unique<TeskImageObject>();
    holder->SetUseTransparent(true);
    holder->SetTolerance(9);
    holder->SetPlacement(kTeskTiled);
    auto keep = SlotWithKind(kTeskKeepObject, [&](ZoFolderFile& f) {
        ZoFolderGuard record(f, true);
        writeKey(f, 7);
        f.WriteUInt32(0x0000FF);
    });
    object = ReadBack(keep, std::move(holder));
    image = static_cast<TeskImageObject*>(object.get());
    EXPECT_EQ(image->GetFileName(), ZoResourceKey(ZoResourceKey::kByName, "", -1));
    EXPECT_EQ(image->GetTransparentColour(), 0u);
    EXPECT_EQ(image->GetTolerance(), 0);
    EXPECT_FALSE(image->GetUseTransparent());
    EXPECT_EQ(image->GetPlacement(), kTeskStretch);
}

}  // namespace
