// The low-level file writer as the single-definition preview uses it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "flash/swf_colour.h"
#include "flash/swf_file.h"
#include "flash/swf_shape.h"
#include "platform/zo_exception.h"
#include "support/swf_reader.h"

using namespace ZoFlash;

namespace {

/// One shape shown with its top-left corner at the origin.
void WriteShapePreview(ZoFFile& file, const ZoSWFShape& shape) {
    const ZoAutoPtr2<ZoFDefineShapeTag> definition = shape.BuildDefinitionTag(1);
    const ZoRect bounds = definition->GetBoundingRect();
    ZoFSetBackgroundColorTag background(ZoSWFColour(0xC0C0C0, 255));
    ZoFPlaceObject2Tag place(1, definition->GetCharacterID());
    place.GetTransformation().translateX = Twips{-bounds.left};
    place.GetTransformation().translateY = Twips{-bounds.top};
    ZoFShowFrameTag show;
    ZoFEndTag end;
    for (const ZoFTag* tag :
         std::initializer_list<const ZoFTag*>{&background, definition.get(), &place, &show, &end})
        EXPECT_GT(file.WriteTag(tag), 0);
}

ZoAutoInterface2<ZoSWFShape> Square() {
    auto shape = ZoMakeCounted<ZoSWFShape>();
    shape->SetSolidFill(0x00FF00, 255);
    shape->Rectangle({100, 200, 300, 500});
    return shape;
}

}  // namespace

TEST(File, SingleDefinitionPreviewIsAValidOneFrameMovie) {
    const auto shape = Square();
    ZoFFile file;
    file.SetMovieRect({0, 0, 200, 300});
    ZoFMemorySink sink;
    file.OpenWriteSink(sink);
    WriteShapePreview(file, *shape);
    ASSERT_TRUE(file.Close());
    const SwfTest::Validation v = SwfTest::ValidateSwf(sink.Bytes());
    EXPECT_TRUE(v.problems.empty()) << v.problems.front();
    EXPECT_EQ(v.movie.frameCount, 1);
    EXPECT_EQ(v.movie.frameSize, (SwfTest::Rect{0, 200, 0, 300}));
    EXPECT_EQ(v.movie.background, (SwfTest::Rgba{0xC0, 0xC0, 0xC0, 255}));
    const SwfTest::DisplayItem& item = v.movie.timeline.frames.at(0).displayList.at(1);
    EXPECT_EQ(item.matrix.translateX, -100);
    EXPECT_EQ(item.matrix.translateY, -200);
}

TEST(File, OpenWriteFileHonoursOverwriteAndLeavesAWholeFile) {
    const auto folder = std::filesystem::temp_directory_path() / "vimbo_flash_file_test";
    std::filesystem::create_directories(folder);
    const auto path = folder / "preview.swf";
    std::ofstream(path) << "old";
    ZoFFile file;
    EXPECT_FALSE(file.OpenWriteFile(path.c_str(), false));
    ASSERT_TRUE(file.OpenWriteFile(path.c_str(), true));
    WriteShapePreview(file, *Square());
    ASSERT_TRUE(file.Close());
    std::ifstream in(path, std::ios::binary);
    const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), {});
    EXPECT_TRUE(SwfTest::ValidateSwf(bytes).problems.empty());
    EXPECT_FALSE(file.Close());  // nothing open any more
    std::filesystem::remove_all(folder);
}

TEST(File, FrameRateMustBePositive8Dot8AndTagsNeedAnOpenFile) {
    ZoFFile file;
    const ZoFShowFrameTag show;
    EXPECT_THROW(file.WriteTag(&show), ZoException);
    EXPECT_THROW(file.SetFrameRate(0), ZoException);
    EXPECT_THROW(file.SetFrameRate(-1), ZoException);
    EXPECT_THROW(file.SetFrameRate(256), ZoException);
    EXPECT_NO_THROW(file.SetFrameRate(29.97));
}

TEST(File, StreamSendsWholeBuffersAndPatchesSentAndWaitingBytes) {
    ZoFMemorySink sink;
    ZoFFileStream stream(sink);
    std::vector<uint8_t> expected;
    for (int i = 0; i < 100000; ++i) {
        stream.PutU8(static_cast<uint8_t>(i * 7));
        expected.push_back(static_cast<uint8_t>(i * 7));
    }
    ASSERT_GT(sink.Bytes().size(), 0u);
    ASSERT_LT(sink.Bytes().size(), expected.size());
    const size_t sent = sink.Bytes().size();
    const std::vector<uint8_t> picture(70000, 0xAB);  // larger than the buffer
    stream.PutBytes(picture);
    expected.insert(expected.end(), picture.begin(), picture.end());

    stream.PatchU32(4, 0xA1B2C3D4);         // long sent
    stream.PatchU32(sent - 2, 0x01020304);  // half sent, half waiting
    for (auto [offset, value] : {std::pair<size_t, uint8_t>{4, 0xD4},
                                 {5, 0xC3},
                                 {6, 0xB2},
                                 {7, 0xA1},
                                 {sent - 2, 0x04},
                                 {sent - 1, 0x03},
                                 {sent, 0x02},
                                 {sent + 1, 0x01}})
        expected[offset] = value;
    EXPECT_THROW(stream.PatchU16(expected.size() - 1, 0), ZoException);
    EXPECT_EQ(stream.Size(), expected.size());
    stream.Flush();
    EXPECT_EQ(sink.Bytes(), expected);
    EXPECT_THROW(sink.Overwrite(expected.size() - 1, picture), ZoException);
}
