#include "effects/morph_effect.h"

#include <gtest/gtest.h>

#include <functional>

#include "document/json_project.h"
#include "effect_fakes.h"
#include "effects/register_effects.h"
#include "geometry/edit_grid_triangulation.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "platform/compiled_file.h"
#include "platform/zo_exception.h"

namespace {

using effect_test::FieldDump;

// An edited morph: a split cell, moved points in both sets, a reversed cut.
void Edit(TeskMorphEffect& morph) {
    auto grid = std::make_unique<TeskEditGridTriangulation>(2);
    grid->Root().Resize(3, 2);
    grid->Root().SplitCell(1, 0)->Resize(2, 2);
    grid->Root().ReverseDiagonal(2, 1);
    TeskPoint2D p{0.3, 0.6};
    EXPECT_TRUE(grid->MovePoint(5, 0, p));
    p = {0.55, 0.2};
    EXPECT_TRUE(grid->MovePoint(12 + 2, 1, p));  // the child's centre
    ZoAutoPtr<TeskTriangulation> mesh = std::move(grid);
    morph.SetTriangulation(mesh, nullptr);
    morph.SetReturnToStart(true, nullptr);
    morph.SetReturnHoldTime(750, nullptr);
}

std::string Bytes(const std::function<void(ZoFolderFile&)>& write) {
    ZoCompiledFile file(ZoFourCC("TSK1"), 1);
    file.Open(true, true);
    write(file);
    file.Close();
    return file.ToBytes();
}

std::string RecordOf(const TeskEffect& effect) {
    return Bytes([&](ZoFolderFile& file) { effect.Write(file); });
}

void ReadInto(TeskEffect& effect, const std::string& bytes) {
    ZoCompiledFile file = ZoCompiledFile::FromBytes(bytes, ZoFourCC("TSK1"));
    file.Open(false, false);
    effect.Read(file);
}

TEST(TeskMorphEffect, RecordsRoundTripAndDamageGivesTheDefaults) {
    TeskMorphEffect edited;
    Edit(edited);
    // The record field by field: common part, objects, kind, grid, return, hold.
    const auto record = [&](const TeskTriangulation& mesh, bool withHold) {
        return Bytes([&](ZoFolderFile& file) {
            ZoFolderGuard folder(file, true);
            edited.TeskEffect::Write(file);
            WriteObject(file, edited.GetStartObject());
            WriteObject(file, edited.GetEndObject());
            file.WriteInt32(1);
            mesh.Write(file);
            file.WriteBool(true);
            if (withHold)
                file.WriteInt32(750);
        });
    };
    ASSERT_EQ(RecordOf(edited), record(edited.GetTriangulation(), true));
    TeskMorphEffect read;
    ReadInto(read, RecordOf(edited));
    EXPECT_EQ(FieldDump::Of(read.GetState()).lines, FieldDump::Of(edited.GetState()).lines);

    const TeskMorphEffect fresh;
    for (const std::string& damaged :
         {record(edited.GetTriangulation(), false), record(TeskEditGridTriangulation(1), true)}) {
        TeskMorphEffect morph;
        Edit(morph);
        ReadInto(morph, damaged);
        EXPECT_EQ(RecordOf(morph), RecordOf(fresh));
    }
}

TEST(TeskMorphEffect, ReverseSwapsObjectsAndPointSetsAndTwiceRestores) {
    TeskMorphEffect morph;
    Edit(morph);
    const std::vector<std::string> before = FieldDump::Of(morph.GetState()).lines;
    TeskObject* start = morph.GetStartObject();
    const TeskPoint2D moved = morph.GetTriangulation().GetPoint(5, 0);
    morph.Reverse(nullptr);
    EXPECT_EQ(morph.GetEndObject(), start);
    EXPECT_EQ(morph.GetTriangulation().GetPoint(5, 1), moved);
    EXPECT_TRUE(morph.GetEditGrid()->IsValid());
    morph.Reverse(nullptr);
    EXPECT_EQ(FieldDump::Of(morph.GetState()).lines, before);
}

TEST(TeskMorphEffect, JsonCarriesTheWholeGridAndRejectsExtraPoints) {
    TeskRegisterEffects();
    const std::string points = R"([{"x": 0, "y": 0, "endX": 0, "endY": 0},
        {"x": 0.3, "y": 0, "endX": 0.7, "endY": 0}, {"x": 1, "y": 0, "endX": 1, "endY": 0},
        {"x": 0, "y": 1, "endX": 0, "endY": 1}, {"x": 0.6, "y": 1, "endX": 0.2, "endY": 1},
        {"x": 1, "y": 1, "endX": 1, "endY": 1})";
    const std::string morph = R"({"effects": [{"effect": "Morph", "triangulation": {
        "across": 2, "down": 1, "diagonals": [true, false], "points": )" +
                              points;
    const std::string split = R"(, "splits": [{"column": 1, "row": 0, "across": 2}]}}]})";
    TeskFile document;
    TeskAdoptDocument(document, TeskDocumentFromJson(morph + "]" + split), "");
    const auto& loaded = dynamic_cast<const TeskMorphEffect&>(*document.GetEffect(0));
    EXPECT_EQ(loaded.GetTriangulation().GetPoint(4, 1), (TeskPoint2D{0.2, 1}));
    EXPECT_FALSE(loaded.GetEditGrid()->Root().cells[1].diagonal);
    // The split cell's new point halves its top edge, which runs 0.3 to 1.
    EXPECT_EQ(loaded.GetTriangulation().GetPointCount(), 8);
    EXPECT_NEAR(loaded.GetTriangulation().GetPoint(6, 0).x, 0.65, 1e-15);

    const ZoString json = TeskDocumentToJson(document);
    TeskFile again;
    TeskAdoptDocument(again, TeskDocumentFromJson(json), "");
    EXPECT_EQ(TeskDocumentToBytes(again), TeskDocumentToBytes(document));

    const std::string extra = R"(, {"x": 0.5, "y": 0.5}])";
    try {
        TeskDocumentFromJson(morph + extra + "}}]}");
        ADD_FAILURE() << "seven points for a grid of six";
    } catch (const ZoException& e) {
        EXPECT_NE(std::string(e.what()).find("triangulation.points[6].x"), std::string::npos)
            << e.what();
    }
}

TEST(TeskMorphEffect, CompileAloneShowsThePreset) {
    TeskMorphEffect morph;
    TeskSWFMovie movie;
    movie.SetFrameRate(12);
    morph.CompileAlone(movie);
    TeskEditGridTriangulation preset;
    preset.ApplyPreset();
    EXPECT_EQ(morph.GetEditGrid()->PresetHeaderText(), preset.PresetHeaderText());
    EXPECT_EQ(movie.GetScene(0)->TotalFrames(), 24);
}

}  // namespace
