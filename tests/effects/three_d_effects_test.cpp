// What the cube, curl up, explode and twist effects share: a state that
// survives the project file and JSON, a record that falls back as a whole,
// undoable setters and a deterministic movie.
#include <gtest/gtest.h>

#include <functional>

#include "document/file.h"
#include "document/file_storage.h"
#include "document/json_project.h"
#include "editor/edit_transaction.h"
#include "effect_fakes.h"
#include "effects/cube_effect.h"
#include "effects/curl_up_effect.h"
#include "effects/explode_effect.h"
#include "effects/register_effects.h"
#include "effects/twist_effect.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "platform/compiled_file.h"
#include "support/movie_check.h"

namespace {

using effect_test::FieldDump;

ZoAutoPtr<TeskObject> Solid(COLORREF colour) {
    return std::make_unique<TeskSolidObject>(colour);
}

// Each effect with every own field away from its default, set through its
// undoable setters inside `transaction`.
struct EffectCase {
    const char* name;
    std::function<ZoAutoPtr<Tesk3DEffect>()> make;
    std::function<void(Tesk3DEffect&, ZoEditor::ZoEditTransaction*)> change;
};

const EffectCase kCases[] = {
    {"cube", [] { return ZoAutoPtr<Tesk3DEffect>(std::make_unique<TeskCubeEffect>()); },
     [](Tesk3DEffect& e, ZoEditor::ZoEditTransaction* t) {
         auto& cube = dynamic_cast<TeskCubeEffect&>(e);
         ZoAutoPtr<TeskObject> back = Solid(0x102030);
         cube.SetFaceObject(TeskCubeEffect::kBack, back, t);
         cube.SetFaceSameAs(TeskCubeEffect::kBack, TeskCubeEffect::kOwnObject, t);
         cube.SetFaceSameAs(TeskCubeEffect::kLeft, TeskCubeEffect::kBack, t);
         cube.SetFaceDirection(TeskCubeEffect::kRight, 3, t);
         cube.SetRotateX(-10, t);
         cube.SetRotateZ(200, t);
         cube.SetRotateAxis(90, t);
         cube.SetScaleSize(150, t);
     }},
    {"curl up", [] { return ZoAutoPtr<Tesk3DEffect>(std::make_unique<TeskCurlUpEffect>()); },
     [](Tesk3DEffect& e, ZoEditor::ZoEditTransaction* t) {
         auto& curl = dynamic_cast<TeskCurlUpEffect&>(e);
         ZoAutoPtr<TeskObject> object = Solid(0x405060);
         curl.SetCurlObject(object, t);
         curl.SetDirection(290, t);
         curl.SetRadius(42, t);
         curl.SetStyle(TeskCurlUpEffect::kUnderneath | TeskCurlUpEffect::kTearAway, t);
     }},
    {"explode", [] { return ZoAutoPtr<Tesk3DEffect>(std::make_unique<TeskExplodeEffect>()); },
     [](Tesk3DEffect& e, ZoEditor::ZoEditTransaction* t) {
         auto& explode = dynamic_cast<TeskExplodeEffect&>(e);
         ZoAutoPtr<TeskObject> object = Solid(0x708090);
         explode.SetExplodeObject(object, t);
         explode.SetExplodeType(TeskExplodeEffect::kImplode, t);
         explode.SetInwards(1, t);
         explode.SetSpread(-250, t);
         explode.SetSpin(900, t);
         explode.SetSwirl(-700, t);
         explode.SetRandomness(150, t);
     }},
    {"twist", [] { return ZoAutoPtr<Tesk3DEffect>(std::make_unique<TeskTwistEffect>()); },
     [](Tesk3DEffect& e, ZoEditor::ZoEditTransaction* t) {
         auto& twist = dynamic_cast<TeskTwistEffect&>(e);
         ZoAutoPtr<TeskObject> object = Solid(0xA0B0C0);
         twist.SetTwistObject(object, t);
         twist.SetTwistAngle(-30, t);
         twist.SetTwistStyle(TeskTwistEffect::kPulse, t);
     }},
};

class ThreeDEffects : public ::testing::TestWithParam<EffectCase> {
  protected:
    static void SetUpTestSuite() { TeskRegisterEffects(); }
};

TEST_P(ThreeDEffects, ChangedStatesSurviveProjectFilesAndJson) {
    TeskFile document;
    ZoAutoPtr<Tesk3DEffect> changedEffect = GetParam().make();
    GetParam().change(*changedEffect, nullptr);
    changedEffect->SetLighting({false, 10, 20, 0x0A0B0C, 30, 0x0D0E0F, 40, 50, 60}, nullptr);
    const std::vector<std::string> changed = FieldDump::Of(changedEffect->GetState()).lines;
    ASSERT_NE(changed, FieldDump::Of(GetParam().make()->GetState()).lines);
    ZoAutoPtr<TeskEffect> effect = std::move(changedEffect);
    document.InsertEffect(effect, 1, nullptr);

    const std::string bytes = TeskDocumentToBytes(document);
    TeskFile loaded;
    TeskLoadDocumentFromBytes(loaded, bytes, "a.vmb");
    ASSERT_EQ(loaded.GetEffectCount(), 2);
    EXPECT_EQ(FieldDump::Of(loaded.GetEffect(1)->GetState()).lines, changed);

    TeskFile built;
    TeskAdoptDocument(built, TeskDocumentFromJson(TeskDocumentToJson(loaded)), "");
    EXPECT_EQ(TeskDocumentToBytes(built), bytes);
}

TEST_P(ThreeDEffects, AnUnreadableOwnRecordGivesACompleteDefaultState) {
    ZoAutoPtr<Tesk3DEffect> written = GetParam().make();
    GetParam().change(*written, nullptr);
    ZoCompiledFile file(ZoFourCC("TSK1"), 0x01000000);
    ASSERT_TRUE(file.Open(true, true));
    {
        // The effect's own folder with the 3D part only: its own fields are missing.
        ZoFolderGuard own(file, true);
        written->Tesk3DEffect::Write(file);
    }
    file.Close();
    ASSERT_TRUE(file.Open(false, false));
    ZoAutoPtr<Tesk3DEffect> read = GetParam().make();
    GetParam().change(*read, nullptr);
    read->Read(file);
    EXPECT_EQ(FieldDump::Of(read->GetState()).lines,
              FieldDump::Of(GetParam().make()->GetState()).lines);
}

TEST_P(ThreeDEffects, SettersWithATransactionChangeACopyThatUndoSwapsBack) {
    effect_test::FakeHost host;
    ZoAutoPtr<Tesk3DEffect> effect = GetParam().make();
    effect->SetFile(&host);
    const std::vector<std::string> before = FieldDump::Of(effect->GetState()).lines;
    ZoEditor::ZoEditTransaction transaction("Edit");
    GetParam().change(*effect, &transaction);
    const std::vector<std::string> after = FieldDump::Of(effect->GetState()).lines;
    EXPECT_NE(after, before);
    transaction.Commit();
    ASSERT_TRUE(transaction.UndoAll());
    EXPECT_EQ(FieldDump::Of(effect->GetState()).lines, before);
    ASSERT_TRUE(transaction.RedoAll());
    EXPECT_EQ(FieldDump::Of(effect->GetState()).lines, after);
}

TEST_P(ThreeDEffects, TwoCompilationsGiveTheSameValidMovie) {
    const auto compile = [&] {
        TeskSWFMovie movie;
        movie.SetWidth(60);
        movie.SetHeight(40);
        movie.SetFrameRate(12);
        ZoAutoPtr<Tesk3DEffect> effect = GetParam().make();
        GetParam().change(*effect, nullptr);
        ZoAutoPtr<TeskObject> object = Solid(0x3366CC);
        effect->SetObject(object, 0);
        effect->CompileAlone(movie);
        return SwfTest::WriteAndValidate(movie);
    };
    const SwfTest::WrittenMovie first = compile();
    EXPECT_TRUE(first.result.problems.empty()) << first.Problems();
    EXPECT_EQ(first.result.movie.frameCount, 24);
    EXPECT_EQ(compile().bytes, first.bytes);
}

INSTANTIATE_TEST_SUITE_P(Each, ThreeDEffects, ::testing::ValuesIn(kCases), [](const auto& info) {
    std::string name = info.param.name;
    std::erase(name, ' ');
    return name;
});

}  // namespace
