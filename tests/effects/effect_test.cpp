#include <gtest/gtest.h>

#include <functional>

#include "editor/edit_transaction.h"
#include "effect_fakes.h"
#include "effects/cross_fade_effect.h"
#include "effects/effect_update_hint.h"
#include "effects/wave_effect.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"

namespace {

using effect_test::FakeHost;
using effect_test::FieldDump;

ZoString ImageName(const TeskObject* object) {
    auto* image = dynamic_cast<const TeskImageObject*>(object);
    return image ? image->GetFileName().GetName() : "not an image";
}

COLORREF SolidColour(const TeskObject* object) {
    auto* solid = dynamic_cast<const TeskSolidObject*>(object);
    return solid ? solid->GetColour() : kZoNoColour;
}

TEST(TeskEffect, CloneIsEqualAndSharesNoObject) {
    FakeHost host;
    TeskWaveEffect wave;
    wave.SetFile(&host);
    wave.SetAmplitude(777, nullptr);
    wave.SetLightColour(0x123456, nullptr);
    ZoAutoPtr<TeskEffect> copy;
    wave.Clone(copy);
    ASSERT_NE(dynamic_cast<TeskWaveEffect*>(copy.get()), nullptr);
    EXPECT_EQ(copy->GetFile(), &host);
    const FieldDump original = FieldDump::Of(wave.GetState());
    const FieldDump cloned = FieldDump::Of(copy->GetState());
    EXPECT_EQ(cloned.lines, original.lines);
    ASSERT_EQ(original.objects.size(), 1u);
    EXPECT_EQ(cloned.objects.count(*original.objects.begin()), 0u);

    static_cast<TeskWaveEffect&>(*copy).SetAmplitude(1, nullptr);
    EXPECT_EQ(wave.GetAmplitude(), 777);

    // Swapping in a state takes only one of the effect's own state class.
    const TeskEffect::State* mine = &wave.GetState();
    ZoAutoPtr<TeskEffect::State> foreign = TeskCrossFadeEffect().GetState().Clone();
    wave.SwapState(foreign);
    EXPECT_EQ(&wave.GetState(), mine);
    ASSERT_TRUE(foreign);
    ZoAutoPtr<TeskEffect::State> own = copy->GetState().Clone();
    wave.SwapState(own);
    EXPECT_EQ(own.get(), mine);
    EXPECT_EQ(wave.GetAmplitude(), 1);
}

TEST(TeskEffect, CopyFromTakesTimingAndTheSharedObjectSlotsOnly) {
    TeskCrossFadeEffect fade;
    fade.SetTiming({5, 0, 3000, 250, 500}, nullptr);
    fade.SetReservedBlock({7, {1, 2, 3, 4}}, nullptr);
    fade.SetReturnToStart(true, nullptr);
    ZoAutoPtr<TeskObject> red = std::make_unique<TeskSolidObject>(0x0000FF);
    ZoAutoPtr<TeskObject> blue = std::make_unique<TeskSolidObject>(0xFF0000);
    fade.SetStartObject(red, nullptr);
    fade.SetEndObject(blue, nullptr);

    TeskWaveEffect wave;
    wave.SetAmplitude(5, nullptr);
    wave.CopyFrom(fade);
    EXPECT_EQ(wave.GetTiming(), fade.GetTiming());
    EXPECT_EQ(wave.GetReservedBlock(), fade.GetReservedBlock());
    EXPECT_EQ(SolidColour(wave.GetWaveObject()), 0x0000FFu);
    EXPECT_NE(wave.GetWaveObject(), fade.GetStartObject());
    EXPECT_EQ(wave.GetAmplitude(), 5);  // its own settings stay

    TeskCrossFadeEffect back;
    back.CopyFrom(wave);
    EXPECT_EQ(SolidColour(back.GetStartObject()), 0x0000FFu);
    EXPECT_EQ(ImageName(back.GetEndObject()), "<PreviewImage2>");
    EXPECT_FALSE(back.GetReturnToStart());
}

TEST(TeskEffect, SettersSwapAStateCopyInsideATransactionAndChangeInPlaceWithout) {
    using Setter = std::function<void(TeskWaveEffect&, ZoEditor::ZoEditTransaction*)>;
    using Check = std::function<bool(const TeskWaveEffect&)>;
    struct Case {
        const char* name;
        Setter set;
        Check changed;
    };
    const std::vector<Case> cases = {
        {"Edit Wavelength", [](auto& w, auto* t) { w.SetWavelength(300, t); },
         [](auto& w) { return w.GetWavelength() == 300; }},
        {"Edit Contrast", [](auto& w, auto* t) { w.SetContrast(0, t); },
         [](auto& w) { return w.GetLighting().contrast == 0; }},
        {"Edit Grid Across",
         [](auto& w, auto* t) {
             TeskGridEffect::GridSettings settings = w.GetGridSettings();
             settings.across = 9;
             w.SetGridSettings(settings, t);
         },
         [](auto& w) { return w.GetGridSettings().across == 9; }},
        {"Edit Effect Time", [](auto& w, auto* t) { w.SetEffectTime(4000, t); },
         [](auto& w) { return w.GetTiming().endTime == 4000; }},
        {"object",
         [](auto& w, auto* t) {
             ZoAutoPtr<TeskObject> solid = std::make_unique<TeskSolidObject>(0x112233);
             w.SetWaveObject(solid, t);
             EXPECT_FALSE(solid);
         },
         [](auto& w) { return SolidColour(w.GetWaveObject()) == 0x112233u; }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        FakeHost host;
        TeskWaveEffect wave;
        wave.SetFile(&host);
        const TeskEffect::State* before = &wave.GetState();
        const std::vector<std::string> lines = FieldDump::Of(wave.GetState()).lines;
        {
            ZoEditor::ZoEditTransaction transaction(c.name);
            c.set(wave, &transaction);
            EXPECT_TRUE(c.changed(wave));
            EXPECT_NE(&wave.GetState(), before);
            EXPECT_EQ(transaction.GetActionCount(), 1);
            ASSERT_EQ(transaction.GetHintCount(), 1);
            bool reversed = false;
            auto* hint =
                dynamic_cast<TeskEffectUpdateHint*>(transaction.GetHints().GetHint(0, reversed));
            ASSERT_NE(hint, nullptr);
            EXPECT_EQ(hint->GetEffect(), &wave);
            EXPECT_EQ(hint->GetKind(), kTeskEffectChanged);
            EXPECT_EQ(hint->GetIndex(), -1);
            transaction.Commit();
            EXPECT_EQ(host.deliveries, std::vector<int>{1});
            EXPECT_TRUE(transaction.UndoAll());
            EXPECT_EQ(&wave.GetState(), before);
            EXPECT_EQ(FieldDump::Of(wave.GetState()).lines, lines);
        }
        c.set(wave, nullptr);
        EXPECT_TRUE(c.changed(wave));
        EXPECT_EQ(&wave.GetState(), before);
        EXPECT_EQ(host.deliveries.size(), 2u);  // commit and undo only
    }
}

TEST(TeskEffect, MovieRectIsCentredOnlyForAMovieClipOffsetNotIgnored) {
    struct Case {
        bool hostOffset, ignore;
        ZoRect rect;
    };
    for (const Case& c :
         {Case{false, false, {0, 0, 3660, 4040}}, Case{true, true, {0, 0, 3660, 4040}},
          Case{true, false, {-1830, -2020, 1830, 2020}}}) {
        FakeHost host;
        host.offset = c.hostOffset;
        TeskCrossFadeEffect fade;
        fade.SetFile(&host);
        EXPECT_EQ(fade.GetMovieRect(183, 202, c.ignore), c.rect);
    }
    TeskCrossFadeEffect orphan;
    EXPECT_EQ(orphan.GetMovieRect(10, 10, false), (ZoRect{0, 0, 200, 200}));
}

TEST(TeskEffectUpdateHint, ReversedKindsSwapInsertAndRemoveAndFoldUnknownIntoChanged) {
    struct Case {
        uint32_t kind, forward, reversed;
    };
    for (const Case& c :
         {Case{0, 0, 1}, Case{1, 1, 0}, Case{2, 2, 2}, Case{3, 3, 3}, Case{9, 9, 2}}) {
        TeskEffectUpdateHint hint(nullptr, c.kind, 4);
        EXPECT_EQ(hint.GetKind(false), c.forward) << c.kind;
        EXPECT_EQ(hint.GetKind(true), c.reversed) << c.kind;
    }
}

TEST(TeskCrossFadeEffect, ReverseSwapsTheObjectsInOneUndoableStep) {
    FakeHost host;
    TeskCrossFadeEffect fade;
    fade.SetFile(&host);
    ZoAutoPtr<TeskObject> a = std::make_unique<TeskSolidObject>(0x0000AA);
    ZoAutoPtr<TeskObject> b = std::make_unique<TeskSolidObject>(0x0000BB);
    fade.SetStartObject(a, nullptr);
    fade.SetEndObject(b, nullptr);
    const TeskObject* startBefore = fade.GetStartObject();
    ZoEditor::ZoEditTransaction transaction(TeskCrossFadeEffect::kReverseName);
    fade.Reverse(&transaction);
    EXPECT_EQ(SolidColour(fade.GetStartObject()), 0x0000BBu);
    EXPECT_EQ(SolidColour(fade.GetEndObject()), 0x0000AAu);
    EXPECT_EQ(transaction.GetActionCount(), 1);
    transaction.Commit();
    ASSERT_TRUE(transaction.UndoAll());
    EXPECT_EQ(fade.GetStartObject(), startBefore);
    EXPECT_EQ(SolidColour(fade.GetEndObject()), 0x0000BBu);
}

}  // namespace
