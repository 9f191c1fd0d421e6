// Registry entries and records that fall back to the defaults as a whole,
// of the rotate 3D, lens, spiral and test effects.
#include <gtest/gtest.h>

#include <functional>

#include "effect_fakes.h"
#include "effects/lens_effect.h"
#include "effects/register_effects.h"
#include "effects/rotate_3d_effect.h"
#include "effects/spiral_effect.h"
#include "effects/test_effect.h"
#include "platform/compiled_file.h"

namespace {

using effect_test::FieldDump;

struct Case {
    const char* guid;
    const char* name;
    int32_t nameId, iconIndex;
    const char* helpTopic;
    int32_t objectCount;
    std::function<ZoAutoPtr<TeskEffect>()> make;
    // Some change away from the defaults.
    std::function<void(TeskEffect&)> change;
};

template <typename Effect>
Effect& As(TeskEffect& effect) {
    return dynamic_cast<Effect&>(effect);
}

const Case kCases[] = {
    {"{67966FDA-EBAE-4867-AC1F-240E78FD4D77}", "Lens", 108, 2, "::/html/Effects/LensEffect.htm", 1,
     [] { return ZoAutoPtr<TeskEffect>(std::make_unique<TeskLensEffect>()); },
     [](TeskEffect& e) { As<TeskLensEffect>(e).SetPath(TeskAnimationPath::Preset(9), nullptr); }},
    {"{D2278C60-1537-4081-80D1-159FED8C7C3F}", "Rotate 3D", 160, 6,
     "::/html/Effects/Rotate3DEffect.htm", 1,
     [] { return ZoAutoPtr<TeskEffect>(std::make_unique<TeskRotate3DEffect>()); },
     [](TeskEffect& e) { As<TeskRotate3DEffect>(e).SetAxisDirection(90, nullptr); }},
    {"{84513D19-FCC5-4A8C-996B-A5B92D37B65D}", "Spiral", 106, 0, "::/html/Effects/SpiralEffect.htm",
     1, [] { return ZoAutoPtr<TeskEffect>(std::make_unique<TeskSpiralEffect>()); },
     [](TeskEffect& e) { As<TeskSpiralEffect>(e).SetSpiralSpeed(5, nullptr); }},
    {"{F016D613-8536-4F74-A3C1-F4F8C9527A40}", "Test Effect", 157, 6,
     "::/html/Dialogs/TestEffectsDialog.htm", 2,
     [] { return ZoAutoPtr<TeskEffect>(std::make_unique<TeskTestEffect>()); },
     [](TeskEffect& e) { As<TeskTestEffect>(e).SetTestType(TeskTestEffect::kCube, nullptr); }},
};

TEST(GridEffectsTest, RegisteredInChooserOrderWithTheirInfo) {
    TeskRegisterEffects();
    int previous = -1;
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        const ZoGuid guid = *ZoGuid::Parse(c.guid);
        const TeskEffectInfo* info = TeskEffect::FindInfo(guid);
        ASSERT_NE(info, nullptr);
        EXPECT_EQ(info->name, c.name);
        EXPECT_EQ(info->nameId, c.nameId);
        EXPECT_EQ(info->iconIndex, c.iconIndex);
        EXPECT_EQ(info->helpTopic, c.helpTopic);
        const int index = static_cast<int>(info - &TeskEffect::GetInfo(0));
        EXPECT_GT(index, previous);
        previous = index;
        ZoAutoPtr<TeskEffect> made;
        TeskEffect::Create(guid, made);
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(&made->GetInfo(), &c.make()->GetInfo());
        EXPECT_EQ(made->GetObjectCount(), c.objectCount);
    }
}

// A record whose own fields are missing: only the 3D or grid part is there.
TEST(GridEffectsTest, AnUnreadableRecordGivesACompleteDefaultState) {
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        ZoAutoPtr<TeskEffect> written = c.make();
        written->SetEffectTime(5000, nullptr);
        c.change(*written);
        ZoCompiledFile file(ZoFourCC("TSK1"), 0x01000000);
        ASSERT_TRUE(file.Open(true, true));
        {
            ZoFolderGuard root(file, true);
            ZoFolderGuard own(file, true);
            written->TeskEffect::Write(file);
        }
        file.Close();
        ASSERT_TRUE(file.Open(false, false));
        ZoAutoPtr<TeskEffect> read = c.make();
        c.change(*read);
        {
            ZoFolderGuard root(file, false);
            read->Read(file);
        }
        EXPECT_EQ(FieldDump::Of(read->GetState()).lines, FieldDump::Of(c.make()->GetState()).lines);
    }
}

}  // namespace
