// Whole movies written and read back: frames, display-list differences,
// permanent placements, scenes, ids and failures.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "flash/swf_movie.h"
#include "flash/swf_script.h"
#include "flash/swf_shape.h"
#include "platform/zo_exception.h"
#include "support/movie_check.h"

using namespace ZoFlash;

namespace {

const ZoSWFTransformation kIdentity;
const ZoSWFColourTransformation kNoColour;

ZoAutoInterface2<ZoSWFObject> Box(int size, COLORREF colour = 0x0000FF) {
    auto shape = ZoMakeCounted<ZoSWFShape>();
    shape->SetSolidFill(colour, 255);
    shape->Rectangle({0, 0, size, size});
    return shape;
}

ZoSWFTransformation Moved(double x, double y) {
    ZoSWFTransformation t;
    t.SetTranslate(x, y);
    return t;
}

struct Fixture {
    ZoSWFMovie movie{"", 100, 100, 12, ZoSWFColour(0xFFFFFF, 255)};
    ZoSWFScene* scene = movie.AddScene();

    SwfTest::WrittenMovie Write() {
        SwfTest::WrittenMovie written = SwfTest::WriteAndValidate(movie);
        EXPECT_EQ(written.Problems(), "");
        return written;
    }
};

const SwfTest::Frame& FrameOf(const SwfTest::WrittenMovie& w, size_t i) {
    return w.result.movie.timeline.frames.at(i);
}

}  // namespace

TEST(Movie, OneEmptyFrameIsExactlyTheMinimalFile) {
    ZoSWFMovie movie("", 550, 400, 12, ZoSWFColour(0xFFFFFF, 255));
    movie.AddScene()->AddFrame();
    const SwfTest::WrittenMovie w = SwfTest::WriteAndValidate(movie);
    const std::vector<uint8_t> expected = {
        'F',  'W',  'S',  5,    30,   0,    0,    0,           // signature, version, length
        0x78, 0x00, 0x05, 0x5F, 0x00, 0x00, 0x0F, 0xA0, 0x00,  // 0..11000 x 0..8000
        0x00, 0x0C, 0x01, 0x00,                                // 12 fps, 1 frame
        0x43, 0x02, 0xFF, 0xFF, 0xFF,                          // SetBackgroundColor
        0x40, 0x00, 0x00, 0x00};                               // ShowFrame, End
    EXPECT_EQ(w.bytes, expected);
    EXPECT_EQ(w.Problems(), "");
}

TEST(Movie, WithoutScenesHasNoFrames) {
    ZoSWFMovie movie("", 10, 10, 25, ZoSWFColour());
    const SwfTest::WrittenMovie w = SwfTest::WriteAndValidate(movie);
    EXPECT_EQ(w.Problems(), "");
    EXPECT_EQ(w.result.movie.frameCount, 0);
    EXPECT_EQ(w.result.movie.frameRate, 25 << 8);
}

TEST(Movie, DisplayListDifferencesWriteOnlyWhatChanged) {
    auto a = Box(100), b = Box(200);
    ZoSWFColourTransformation faded;
    faded.SetScale(1, 1, 1, 0.5);
    struct Step {
        const char* name;
        std::function<void(ZoSWFFrame&)> place;
        int placeTags, removeTags;
    };
    const Step steps[] = {
        {"first placement",
         [&](ZoSWFFrame& f) { f.PlaceObject(a, nullptr, 1, Moved(10, 10), 0, -1, kNoColour); }, 1,
         0},
        {"unchanged",
         [&](ZoSWFFrame& f) { f.PlaceObject(a, nullptr, 1, Moved(10, 10), 0, -1, kNoColour); }, 0,
         0},
        {"moved",
         [&](ZoSWFFrame& f) { f.PlaceObject(a, nullptr, 1, Moved(30, 10), 0, -1, kNoColour); }, 1,
         0},
        {"faded", [&](ZoSWFFrame& f) { f.PlaceObject(a, nullptr, 1, Moved(30, 10), 0, -1, faded); },
         1, 0},
        {"other object",
         [&](ZoSWFFrame& f) { f.PlaceObject(b, nullptr, 1, Moved(30, 10), 0, -1, faded); }, 1, 0},
        {"other object unfaded",
         [&](ZoSWFFrame& f) { f.PlaceObject(a, nullptr, 1, Moved(30, 10), 0, -1, kNoColour); }, 1,
         0},
        {"named", [&](ZoSWFFrame& f) { f.PlaceObject(b, "n", 1, kIdentity, 0, -1, kNoColour); }, 1,
         1},
        {"gone", [&](ZoSWFFrame&) {}, 0, 1},
    };
    Fixture fx;
    for (const Step& s : steps)
        s.place(*fx.scene->AddFrame());
    const SwfTest::WrittenMovie w = fx.Write();
    const auto& tags = w.result.movie.timeline.tags;
    for (size_t i = 0; i < std::size(steps); ++i) {
        EXPECT_EQ(FrameOf(w, i).placeTags, steps[i].placeTags) << steps[i].name;
        EXPECT_EQ(FrameOf(w, i).removeTags, steps[i].removeTags) << steps[i].name;
    }
    // The move and the fade carry only the field that changed. A new object
    // swaps in with every field a player might otherwise keep from the old
    // one: the unfaded one states its identity colour transform.
    std::vector<SwfTest::PlaceObject2> moves;
    for (const SwfTest::Tag& t : tags)
        if (t.code == 26 && (t.body[0] & 0x01))
            moves.push_back(SwfTest::ReadPlaceObject2(t.body));
    ASSERT_EQ(moves.size(), 4u);
    EXPECT_TRUE(moves[0].matrix && !moves[0].cxform && !moves[0].characterId);
    EXPECT_TRUE(!moves[1].matrix && moves[1].cxform);
    EXPECT_EQ(moves[2].characterId, b->GetCharacterID());
    EXPECT_TRUE(moves[2].matrix && moves[2].cxform);
    EXPECT_EQ(moves[3].characterId, a->GetCharacterID());
    ASSERT_TRUE(moves[3].cxform);
    EXPECT_EQ(moves[3].cxform->mult[3], 256);
    EXPECT_EQ(FrameOf(w, 4).displayList.at(1).cxform.mult[3], 128);
    EXPECT_EQ(FrameOf(w, 6).displayList.at(1).name, "n");
    EXPECT_TRUE(FrameOf(w, 7).displayList.empty());
}

TEST(Movie, LaterPlacementAtADepthWinsWhateverTheOrder) {
    Fixture fx;
    auto a = Box(100), b = Box(200), c = Box(300);
    ZoSWFFrame* f = fx.scene->AddFrame();
    f->PlaceObject(c, nullptr, 3, kIdentity, 0, -1, kNoColour);
    f->PlaceObject(a, nullptr, 1, kIdentity, 0, -1, kNoColour);
    f->PlaceObject(b, nullptr, 3, Moved(5, 5), 0, -1, kNoColour);
    const SwfTest::WrittenMovie w = fx.Write();
    const auto& list = FrameOf(w, 0).displayList;
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list.at(3).characterId, b->GetCharacterID());
    EXPECT_EQ(list.at(3).matrix.translateX, 5);
    EXPECT_EQ(list.at(1).characterId, a->GetCharacterID());
}

TEST(Movie, PermanentPlacementMadeAfterLaterFramesExistShowsInAll) {
    Fixture fx;
    auto mask = Box(1000), item = Box(10);
    for (int i = 0; i < 4; ++i)
        fx.scene->AddFrame()->PlaceObject(item, nullptr, 5, Moved(i * 20, 0), 0, -1, kNoColour);
    fx.scene->GetFrame(0)->PlaceObjectPermanent(mask, nullptr, 2, kIdentity, 9, -1, kNoColour);
    const SwfTest::WrittenMovie w = fx.Write();
    for (size_t i = 0; i < 4; ++i) {
        const auto& list = FrameOf(w, i).displayList;
        ASSERT_EQ(list.count(2), 1u) << i;
        EXPECT_EQ(list.at(2).clipDepth, 9);
        EXPECT_EQ(list.at(5).matrix.translateX, static_cast<int>(i) * 20);
    }
    EXPECT_EQ(FrameOf(w, 3).removeTags, 0);
}

TEST(Movie, PermanentPlacementEndsWhereAnotherObjectTakesItsDepth) {
    Fixture fx;
    auto first = Box(10), second = Box(20);
    fx.scene->AddFrame()->PlaceObjectPermanent(first, nullptr, 1, kIdentity, 0, -1, kNoColour);
    fx.scene->AddFrame();
    fx.scene->AddFrame()->PlaceObject(second, nullptr, 1, kIdentity, 0, -1, kNoColour);
    fx.scene->AddFrame();
    const SwfTest::WrittenMovie w = fx.Write();
    EXPECT_EQ(FrameOf(w, 1).displayList.at(1).characterId, first->GetCharacterID());
    EXPECT_EQ(FrameOf(w, 2).displayList.at(1).characterId, second->GetCharacterID());
    EXPECT_TRUE(FrameOf(w, 3).displayList.empty());
}

TEST(Movie, InsertFrameOneKeepsFrameZero) {
    Fixture fx;
    ZoSWFFrame* zero = fx.scene->AddFrame();
    zero->PlaceObject(Box(10), nullptr, 1, kIdentity, 0, -1, kNoColour);
    ZoSWFFrame* one = fx.scene->InsertFrame(1);
    EXPECT_EQ(fx.scene->TotalFrames(), 2);
    EXPECT_EQ(fx.scene->GetFrame(0), zero);
    EXPECT_EQ(fx.scene->GetFrame(1), one);
    EXPECT_TRUE(one->GetPlacements().empty());
    ZoSWFFrame* front = fx.scene->InsertFrame(0);
    EXPECT_EQ(fx.scene->GetFrame(0), front);
    EXPECT_EQ(fx.scene->GetFrame(1), zero);
    EXPECT_THROW(fx.scene->InsertFrame(4), ZoException);
    EXPECT_EQ(fx.Write().result.movie.frameCount, 3);
}

TEST(Movie, IdentityAppendMatrixLeavesThePlacementUnchanged) {
    Fixture fx;
    auto shape = Box(10);
    ZoSWFTransformation t = Moved(-40, 60);
    fx.scene->AddFrame()->PlaceObject(shape, nullptr, 1, t, 0, -1, kNoColour);
    t.AppendMatrix(1, 0, 0, 1, 0, 0);
    fx.scene->AddFrame()->PlaceObject(shape, nullptr, 1, t, 0, -1, kNoColour);
    const SwfTest::WrittenMovie w = fx.Write();
    EXPECT_EQ(FrameOf(w, 1).placeTags, 0);
    EXPECT_EQ(FrameOf(w, 1).displayList.at(1).matrix.translateY, 60);
}

TEST(Movie, CopiedPlacementsShowTheSamePictureWithoutNewTags) {
    Fixture fx;
    ZoSWFFrame* first = fx.scene->AddFrame();
    first->PlaceObject(Box(10), "a", 1, Moved(1, 2), 0, 3, kNoColour);
    first->PlaceObjectPermanent(Box(20), nullptr, 2, kIdentity, 0, -1, kNoColour);
    fx.scene->AddFrame()->CopyPlacementsFrom(first);
    const SwfTest::WrittenMovie w = fx.Write();
    EXPECT_EQ(FrameOf(w, 1).placeTags + FrameOf(w, 1).removeTags, 0);
    EXPECT_EQ(FrameOf(w, 1).displayList.at(1).name, "a");
    EXPECT_EQ(FrameOf(w, 1).displayList.at(1).ratio, 3);
}

TEST(Movie, ScenesFollowEachOtherFromAnEmptyPicture) {
    Fixture fx;
    fx.scene->AddFrame()->PlaceObjectPermanent(Box(10), nullptr, 1, kIdentity, 0, -1, kNoColour);
    ZoSWFScene* second = fx.movie.AddScene();
    second->AddFrame()->PlaceObject(Box(20), nullptr, 2, kIdentity, 0, -1, kNoColour);
    second->AddFrame();
    const SwfTest::WrittenMovie w = fx.Write();
    EXPECT_EQ(w.result.movie.frameCount, 3);
    EXPECT_EQ(FrameOf(w, 1).displayList.size(), 1u);
    EXPECT_EQ(FrameOf(w, 1).displayList.count(2), 1u);
    EXPECT_TRUE(FrameOf(w, 2).displayList.empty());
}

TEST(Movie, StopFramesAndScriptsBecomeFrameActions) {
    Fixture fx;
    ZoSWFScript("_GetURL(\"FSCommand:showmenu\", \"false\");")
        .TransferActionRecords(fx.scene->AddFrame());
    fx.scene->AddFrame()->SetStopFrame();
    const SwfTest::WrittenMovie w = fx.Write();
    const auto& first = FrameOf(w, 0).actions;
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].code, 0x83);
    EXPECT_EQ(first[0].url, "FSCommand:showmenu");
    EXPECT_EQ(first[0].target, "false");
    ASSERT_EQ(FrameOf(w, 1).actions.size(), 1u);
    EXPECT_EQ(FrameOf(w, 1).actions[0].code, 0x07);
}

TEST(Movie, ScriptsOtherThanGetURLAreRejected) {
    for (const char* bad : {"", "_GetURL(\"a\");", "gotoAndPlay(3);", "_GetURL(\"a\", \"b\")",
                            "_GetURL(\"a\", \"b\"); stop();"})
        EXPECT_THROW(ZoSWFScript{bad}, ZoException) << bad;
    ZoSWFScript escaped("_GetURL( \"say \\\"hi\\\"\" , \"_blank\" ) ;");
    const auto& url = static_cast<const ZoFGetURLAction&>(escaped.GetActions().Get(0));
    EXPECT_EQ(url.GetURL(), "say \"hi\"");
    EXPECT_EQ(url.GetTarget(), "_blank");
}

TEST(Movie, CharactersGetIdsInOrderOfFirstUseAndAreDefinedOnce) {
    Fixture fx;
    auto a = Box(10), b = Box(20), c = Box(30);
    fx.scene->AddFrame()->PlaceObject(b, nullptr, 1, kIdentity, 0, -1, kNoColour);
    ZoSWFFrame* f = fx.scene->AddFrame();
    f->PlaceObject(c, nullptr, 1, kIdentity, 0, -1, kNoColour);
    f->PlaceObject(a, nullptr, 2, kIdentity, 0, -1, kNoColour);
    fx.scene->AddFrame()->PlaceObject(b, nullptr, 3, kIdentity, 0, -1, kNoColour);
    const SwfTest::WrittenMovie w = fx.Write();
    EXPECT_EQ(w.result.movie.definitionOrder, (std::vector<uint16_t>{1, 2, 3}));
    EXPECT_EQ(b->GetCharacterID(), 1);
    EXPECT_EQ(c->GetCharacterID(), 2);
    EXPECT_EQ(a->GetCharacterID(), 3);
}

TEST(Movie, SecondMovieFromTheSameEntitiesDefinesThemAgain) {
    auto shared = Box(10), other = Box(20);
    ZoSWFMovie first("", 10, 10, 12, ZoSWFColour());
    first.AddScene()->AddFrame()->PlaceObject(shared, nullptr, 1, kIdentity, 0, -1, kNoColour);
    const SwfTest::WrittenMovie w1 = SwfTest::WriteAndValidate(first);
    EXPECT_EQ(w1.Problems(), "");
    EXPECT_EQ(shared->GetCharacterID(), 1);

    ZoSWFMovie second("", 10, 10, 12, ZoSWFColour());
    ZoSWFFrame* f = second.AddScene()->AddFrame();
    f->PlaceObject(other, nullptr, 1, kIdentity, 0, -1, kNoColour);
    f->PlaceObject(shared, nullptr, 2, kIdentity, 0, -1, kNoColour);
    const SwfTest::WrittenMovie w2 = SwfTest::WriteAndValidate(second);
    EXPECT_EQ(w2.Problems(), "");
    EXPECT_EQ(w2.result.movie.shapes.size(), 2u);
    EXPECT_EQ(shared->GetCharacterID(), 2);

    // Writing the first movie again gives the same bytes.
    shared->InitialiseForRewriting();
    EXPECT_EQ(SwfTest::WriteAndValidate(first).bytes, w1.bytes);
}

TEST(Frame, PlacementsReadBackWithEveryDetailAlsoWhenCopied) {
    const auto box = Box(10);
    ZoSWFColourTransformation dim;
    dim.SetScale(0.5, 1, 1, 1);
    dim.SetOffset(0, 0, 0, -10);
    ZoSWFFrame frame;
    frame.PlaceObject(box, nullptr, 3, Moved(20, -40), 0, -1, dim);
    frame.PlaceObjectPermanent(box, "mask", 2, kIdentity, 5, 7, kNoColour);
    ZoSWFFrame copy;
    copy.PlaceObject(Box(4), "first", 1, kIdentity, -1, -1, kNoColour);
    copy.CopyPlacementsFrom(&frame);

    const ZoSWFPlacementList placements = copy.GetPlacements();
    ASSERT_EQ(placements.size(), 3u);
    EXPECT_STREQ(placements[0].name, "first");
    EXPECT_EQ(placements[0].clipDepth, 0);
    const ZoSWFPlacement moved = placements[1];
    EXPECT_EQ(moved.object.Get(), box.Get());
    EXPECT_EQ(moved.depth, 3);
    EXPECT_EQ(moved.name, nullptr);
    EXPECT_EQ(moved.ratio, -1);
    EXPECT_FALSE(moved.permanent);
    EXPECT_EQ(moved.matrix.translateX.value, 20);
    EXPECT_EQ(moved.matrix.translateY.value, -40);
    EXPECT_EQ(moved.cxform.redMult, 128);
    EXPECT_EQ(moved.cxform.alphaAdd, -10);
    const ZoSWFPlacement mask = placements[2];
    EXPECT_STREQ(mask.name, "mask");
    EXPECT_EQ(mask.ratio, 7);
    EXPECT_EQ(mask.clipDepth, 5);
    EXPECT_TRUE(mask.permanent);
    EXPECT_TRUE(mask.matrix.IsIdentity());
    EXPECT_TRUE(mask.cxform.IsIdentity());
    int depths = 0;
    for (const ZoSWFPlacement& p : placements)
        depths += p.depth;
    EXPECT_EQ(depths, 6);
}

TEST(Movie, ValuesSWFCannotHoldThrow) {
    struct Case {
        const char* name;
        std::function<void()> act;
    } cases[] = {
        {"frame rate 0",
         [] {
             ZoSWFMovie m("", 10, 10, 0, ZoSWFColour());
             ZoFMemorySink sink;
             m.WriteMovie(sink);
         }},
        {"frame rate beyond 8.8",
         [] {
             ZoSWFMovie m("", 10, 10, 256, ZoSWFColour());
             ZoFMemorySink sink;
             m.WriteMovie(sink);
         }},
        {"empty size",
         [] {
             ZoSWFMovie m("", 0, 10, 12, ZoSWFColour());
             ZoFMemorySink sink;
             m.WriteMovie(sink);
         }},
        {"translation beyond coordinates",
         [] { ZoSWFFrame().PlaceObject(Box(1), nullptr, 1, Moved(1.5e9, 0), 0, -1, kNoColour); }},
        {"depth 0",
         [] { ZoSWFFrame().PlaceObject(Box(1), nullptr, 0, kIdentity, 0, -1, kNoColour); }},
        {"depth 65536",
         [] { ZoSWFFrame().PlaceObject(Box(1), nullptr, 65536, kIdentity, 0, -1, kNoColour); }},
        {"null object",
         [] { ZoSWFFrame().PlaceObject(nullptr, nullptr, 1, kIdentity, 0, -1, kNoColour); }},
        {"shape point beyond coordinates", [] { ZoSWFShape().LineTo(1 << 30, 0); }},
    };
    for (const Case& c : cases)
        EXPECT_THROW(c.act(), ZoException) << c.name;
}

TEST(Movie, MoreThan65535CharactersThrow) {
    ZoSWFMovie movie("", 10, 10, 12, ZoSWFColour());
    ZoSWFScene* scene = movie.AddScene();
    for (int frame = 0; frame < 2; ++frame) {
        ZoSWFFrame* f = scene->AddFrame();
        for (int depth = 1; depth <= 32768; ++depth)
            f->PlaceObject(ZoMakeCounted<ZoSWFShape>(), nullptr, depth, kIdentity, 0, -1,
                           kNoColour);
    }
    ZoFMemorySink sink;
    EXPECT_THROW(movie.WriteMovie(sink), ZoException);
}

TEST(Movie, WriteMovieFileReplacesTheFileWholeOrReportsFailure) {
    const auto folder = std::filesystem::temp_directory_path() / "vimbo_flash_movie_test";
    std::filesystem::create_directories(folder);
    const auto path = folder / "out.swf";
    Fixture fx;
    fx.movie.SetFilename(path.c_str());
    fx.scene->AddFrame()->PlaceObject(Box(10), nullptr, 1, kIdentity, 0, -1, kNoColour);
    ASSERT_TRUE(fx.movie.WriteMovieFile());
    std::ifstream in(path, std::ios::binary);
    const std::vector<uint8_t> onDisk((std::istreambuf_iterator<char>(in)), {});
    EXPECT_EQ(onDisk, fx.Write().bytes);

    fx.movie.SetFilename((folder / "missing" / "out.swf").c_str());
    EXPECT_FALSE(fx.movie.WriteMovieFile());
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
    std::filesystem::remove_all(folder);
}
