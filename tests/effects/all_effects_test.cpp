// What every registered effect shares: its chooser entry, a state that
// survives the project file and JSON, a record that falls back as a whole,
// undoable setters and a deterministic, valid movie.
#include <gtest/gtest.h>

#include <functional>

#include "document/file.h"
#include "document/file_storage.h"
#include "document/json_project.h"
#include "editor/edit_transaction.h"
#include "effect_fakes.h"
#include "effects/cross_fade_effect.h"
#include "effects/cube_effect.h"
#include "effects/curl_up_effect.h"
#include "effects/explode_effect.h"
#include "effects/lens_effect.h"
#include "effects/morph_effect.h"
#include "effects/register_effects.h"
#include "effects/rotate_3d_effect.h"
#include "effects/spiral_effect.h"
#include "effects/test_effect.h"
#include "effects/twist_effect.h"
#include "effects/wave_effect.h"
#include "geometry/edit_grid_triangulation.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "platform/compiled_file.h"
#include "support/movie_check.h"

namespace {

using effect_test::FieldDump;
using Transaction = ZoEditor::ZoEditTransaction;

ZoAutoPtr<TeskObject> Solid(COLORREF colour) {
    return std::make_unique<TeskSolidObject>(colour);
}

template <typename Effect>
Effect& As(TeskEffect& effect) {
    return dynamic_cast<Effect&>(effect);
}

// In chooser order, each with every own field changed away from its default
// through its undoable setters.
struct EffectCase {
    const char* guid;
    const char* name;
    int32_t nameId, iconIndex;
    const char* helpTopic;
    int32_t objectCount;
    int32_t frames;  // at 12 per second, holds included
    std::function<void(TeskEffect&, Transaction*)> change;
};

const EffectCase kCases[] = {
    {"{C61852BD-11F7-4250-8F28-CFBB0545D1F1}", "Cross Fade", 107, 1,
     "::/html/Effects/CrossFadeEffect.htm", 2, 42,
     [](TeskEffect& e, Transaction* t) {
         auto& fade = As<TeskCrossFadeEffect>(e);
         ZoAutoPtr<TeskObject> start = Solid(0x010203), end = Solid(0x040506);
         fade.SetStartObject(start, t);
         fade.SetEndObject(end, t);
         fade.SetReturnToStart(true, t);
         fade.SetReturnHold(1500, t);
     }},
    {"{97EF9984-CEC9-4C30-861A-34C9F6E10ABC}", "Cube", 158, 7, "::/html/Effects/CubeEffect.htm", 1,
     24,
     [](TeskEffect& e, Transaction* t) {
         auto& cube = As<TeskCubeEffect>(e);
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
    {"{AC28161D-D4EB-4DD0-BBE3-B73B00E7FA25}", "Curl Up", 159, 8,
     "::/html/Effects/CurlUpEffect.htm", 1, 24,
     [](TeskEffect& e, Transaction* t) {
         auto& curl = As<TeskCurlUpEffect>(e);
         ZoAutoPtr<TeskObject> object = Solid(0x405060);
         curl.SetCurlObject(object, t);
         curl.SetDirection(290, t);
         curl.SetRadius(42, t);
         curl.SetStyle(TeskCurlUpEffect::kUnderneath | TeskCurlUpEffect::kTearAway, t);
     }},
    {"{12CF1729-67A9-4752-810A-5ACCACA12DEE}", "Explode", 156, 5,
     "::/html/Effects/ExplodeEffect.htm", 1, 24,
     [](TeskEffect& e, Transaction* t) {
         auto& explode = As<TeskExplodeEffect>(e);
         ZoAutoPtr<TeskObject> object = Solid(0x708090);
         explode.SetExplodeObject(object, t);
         explode.SetExplodeType(TeskExplodeEffect::kImplode, t);
         explode.SetInwards(1, t);
         explode.SetSpread(-250, t);
         explode.SetSpin(900, t);
         explode.SetSwirl(-700, t);
         explode.SetRandomness(150, t);
     }},
    {"{67966FDA-EBAE-4867-AC1F-240E78FD4D77}", "Lens", 108, 2, "::/html/Effects/LensEffect.htm", 1,
     24,
     [](TeskEffect& e, Transaction* t) {
         auto& lens = As<TeskLensEffect>(e);
         ZoAutoPtr<TeskObject> object = Solid(0x8090A0);
         lens.SetLensObject(object, t);
         lens.SetPath(TeskAnimationPath::Preset(9), t);
         lens.SetPathAtEnd(TeskLensEffect::kReturnToBeginning, t);
         lens.SetPathRepeat(3, t);
         lens.SetLensRadius(700, t);
         lens.SetLensPower(-60, t);
     }},
    {"{F53F53C9-1FF2-438F-B955-A27D14CC0C9E}", "Morph", 119, 3, "::/html/Effects/MorphEffect.htm",
     2, 33,
     [](TeskEffect& e, Transaction* t) {
         auto& morph = As<TeskMorphEffect>(e);
         auto grid = std::make_unique<TeskEditGridTriangulation>(2);
         grid->Root().Resize(3, 2);
         grid->Root().SplitCell(1, 0)->Resize(2, 2);
         TeskPoint2D p{0.3, 0.6};
         grid->MovePoint(5, 0, p);
         ZoAutoPtr<TeskTriangulation> mesh = std::move(grid);
         morph.SetTriangulation(mesh, t);
         ZoAutoPtr<TeskObject> end = Solid(0xB0C0D0);
         morph.SetEndObject(end, t);
         morph.SetReturnToStart(true, t);
         morph.SetReturnHoldTime(750, t);
     }},
    {"{D2278C60-1537-4081-80D1-159FED8C7C3F}", "Rotate 3D", 160, 6,
     "::/html/Effects/Rotate3DEffect.htm", 1, 24,
     [](TeskEffect& e, Transaction* t) {
         auto& rotate = As<TeskRotate3DEffect>(e);
         ZoAutoPtr<TeskObject> object = Solid(0xC0D0E0);
         rotate.SetRotateObject(object, t);
         rotate.SetAxisDirection(90, t);
     }},
    {"{84513D19-FCC5-4A8C-996B-A5B92D37B65D}", "Spiral", 106, 0, "::/html/Effects/SpiralEffect.htm",
     1, 24,
     [](TeskEffect& e, Transaction* t) {
         auto& spiral = As<TeskSpiralEffect>(e);
         ZoAutoPtr<TeskObject> object = Solid(0xD0E0F0);
         spiral.SetSpiralObject(object, t);
         spiral.SetSpiralStyle(TeskSpiralEffect::kScrewUp, t);
         spiral.SetSpiralSpeed(5, t);
     }},
    {"{F016D613-8536-4F74-A3C1-F4F8C9527A40}", "Test Effect", 157, 6,
     "::/html/Dialogs/TestEffectsDialog.htm", 2, 24,
     [](TeskEffect& e, Transaction* t) {
         auto& test = As<TeskTestEffect>(e);
         ZoAutoPtr<TeskObject> start = Solid(0x0A0B0C), end = Solid(0x0D0E0F);
         test.SetStartObject(start, t);
         test.SetEndObject(end, t);
         test.SetTestType(TeskTestEffect::kCube, t);
         test.SetParameter1(12, t);
         test.SetParameter2(34, t);
     }},
    {"{E31E5955-B1A7-4BC5-A269-6B14360988A2}", "Twist", 167, 9, "::/html/Effects/TwistEffect.htm",
     1, 24,
     [](TeskEffect& e, Transaction* t) {
         auto& twist = As<TeskTwistEffect>(e);
         ZoAutoPtr<TeskObject> object = Solid(0xA0B0C0);
         twist.SetTwistObject(object, t);
         twist.SetTwistAngle(-30, t);
         twist.SetTwistStyle(TeskTwistEffect::kPulse, t);
     }},
    {"{8859A138-2D10-4985-B2D1-B3374EA20129}", "Wave", 135, 4, "::/html/Effects/WaveEffect.htm", 1,
     24,
     [](TeskEffect& e, Transaction* t) {
         auto& wave = As<TeskWaveEffect>(e);
         ZoAutoPtr<TeskObject> object = Solid(0x777777);
         wave.SetWaveObject(object, t);
         wave.SetWavelength(55, t);
         wave.SetAmplitude(666, t);
         wave.SetDirection(-45, t);
         wave.SetWaveStyle(TeskWaveEffect::kRiseAndFall, t);
     }},
};

class AllEffects : public ::testing::TestWithParam<EffectCase> {
  protected:
    static void SetUpTestSuite() { TeskRegisterEffects(); }

    static ZoAutoPtr<TeskEffect> Make() {
        ZoAutoPtr<TeskEffect> effect;
        TeskEffect::Create(*ZoGuid::Parse(GetParam().guid), effect);
        return effect;
    }
    static ZoAutoPtr<TeskEffect> Changed(Transaction* transaction = nullptr) {
        ZoAutoPtr<TeskEffect> effect = Make();
        GetParam().change(*effect, transaction);
        return effect;
    }
};

TEST(AllEffectsRegistry, HoldsEachEffectOnceInChooserOrder) {
    TeskRegisterEffects();
    TeskRegisterEffects();
    ASSERT_EQ(TeskEffect::GetCount(), static_cast<int>(std::size(kCases)));
    for (int i = 0; i < TeskEffect::GetCount(); ++i) {
        const EffectCase& c = kCases[i];
        SCOPED_TRACE(c.name);
        const TeskEffectInfo& info = TeskEffect::GetInfo(i);
        EXPECT_EQ(info.guid, *ZoGuid::Parse(c.guid));
        EXPECT_EQ(info.name, c.name);
        EXPECT_EQ(info.nameId, c.nameId);
        EXPECT_EQ(info.iconIndex, c.iconIndex);
        EXPECT_EQ(info.helpTopic, c.helpTopic);
        EXPECT_EQ(TeskEffect::FindInfo(info.guid), &info);
        ZoAutoPtr<TeskEffect> made;
        TeskEffect::Create(i, made);
        EXPECT_EQ(made->GetInfo().guid, info.guid);
        EXPECT_EQ(made->GetObjectCount(), c.objectCount);
        EXPECT_EQ(made->GetFile(), nullptr);
    }
    ZoAutoPtr<TeskEffect> unknown;
    TeskEffect::Create(*ZoGuid::Parse("{00000000-0000-0000-0000-000000000001}"), unknown);
    EXPECT_EQ(unknown, nullptr);
}

TEST_P(AllEffects, ChangedStatesSurviveProjectFilesAndJson) {
    ZoAutoPtr<TeskEffect> changedEffect = Changed();
    changedEffect->SetTiming({9, 100, 2600, 300, 700}, nullptr);
    changedEffect->SetReservedBlock({0xABCD, {-1, -2, 30, 40}}, nullptr);
    if (auto* grid = dynamic_cast<TeskGridEffect*>(changedEffect.get()))
        effect_test::SetFixedGrid(*grid, TeskGridEffect::kTriangular, 3, 4);
    if (auto* threeD = dynamic_cast<Tesk3DEffect*>(changedEffect.get()))
        threeD->SetLighting({false, 10, 20, 0x0A0B0C, 30, 0x0D0E0F, 40, 50, 60}, nullptr);
    const std::vector<std::string> changed = FieldDump::Of(changedEffect->GetState()).lines;
    ASSERT_NE(changed, FieldDump::Of(Make()->GetState()).lines);
    TeskFile document;
    document.InsertEffect(changedEffect, 1, nullptr);

    const std::string bytes = TeskDocumentToBytes(document);
    TeskFile loaded;
    TeskLoadDocumentFromBytes(loaded, bytes, "a.vmb");
    ASSERT_EQ(loaded.GetEffectCount(), 2);
    EXPECT_EQ(FieldDump::Of(loaded.GetEffect(1)->GetState()).lines, changed);

    TeskFile built;
    TeskAdoptDocument(built, TeskDocumentFromJson(TeskDocumentToJson(loaded)), "");
    EXPECT_EQ(TeskDocumentToBytes(built), bytes);
}

// A record that holds what the effect's base class writes, but none of its
// own fields.
TEST_P(AllEffects, AnUnreadableOwnRecordGivesACompleteDefaultState) {
    ZoAutoPtr<TeskEffect> written = Changed();
    written->SetEffectTime(5000, nullptr);
    ZoCompiledFile file(ZoFourCC("TSK1"), 0x01000000);
    ASSERT_TRUE(file.Open(true, true));
    {
        ZoFolderGuard own(file, true);
        if (auto* threeD = dynamic_cast<Tesk3DEffect*>(written.get()))
            threeD->Tesk3DEffect::Write(file);
        else if (auto* grid = dynamic_cast<TeskGridEffect*>(written.get()))
            grid->TeskGridEffect::Write(file);
        else
            written->TeskEffect::Write(file);
    }
    file.Close();
    ASSERT_TRUE(file.Open(false, false));
    ZoAutoPtr<TeskEffect> read = Changed();
    read->Read(file);
    EXPECT_EQ(FieldDump::Of(read->GetState()).lines, FieldDump::Of(Make()->GetState()).lines);
}

TEST_P(AllEffects, SettersWithATransactionChangeACopyThatUndoSwapsBack) {
    effect_test::FakeHost host;
    ZoAutoPtr<TeskEffect> effect = Make();
    effect->SetFile(&host);
    const std::vector<std::string> before = FieldDump::Of(effect->GetState()).lines;
    Transaction transaction("Edit");
    GetParam().change(*effect, &transaction);
    const std::vector<std::string> after = FieldDump::Of(effect->GetState()).lines;
    EXPECT_NE(after, before);
    transaction.Commit();
    ASSERT_TRUE(transaction.UndoAll());
    EXPECT_EQ(FieldDump::Of(effect->GetState()).lines, before);
    ASSERT_TRUE(transaction.RedoAll());
    EXPECT_EQ(FieldDump::Of(effect->GetState()).lines, after);
}

TEST_P(AllEffects, TwoCompilationsGiveTheSameValidMovie) {
    const auto compile = [&] {
        TeskSWFMovie movie;
        movie.SetWidth(60);
        movie.SetHeight(40);
        movie.SetFrameRate(12);
        ZoAutoPtr<TeskEffect> effect = Changed();
        ZoAutoPtr<TeskObject> object = Solid(0x3366CC);
        effect->SetObject(object, 0);
        effect->CompileAlone(movie);
        return SwfTest::WriteAndValidate(movie);
    };
    const SwfTest::WrittenMovie first = compile();
    EXPECT_TRUE(first.result.problems.empty()) << first.Problems();
    EXPECT_EQ(first.result.movie.frameCount, GetParam().frames);
    EXPECT_EQ(compile().bytes, first.bytes);
}

INSTANTIATE_TEST_SUITE_P(Each, AllEffects, ::testing::ValuesIn(kCases), [](const auto& info) {
    std::string name = info.param.name;
    std::erase(name, ' ');
    return name;
});

}  // namespace
