#include <gtest/gtest.h>

#include <memory>

#include "document/file.h"
#include "document_fakes.h"
#include "effects/cross_fade_effect.h"
#include "effects/wave_effect.h"
#include "objects/solid_object.h"

namespace {

using document_test::RecordingObserver;
using document_test::SizedObject;
using Lines = std::vector<std::string>;

/// Runs `edit` in one named transaction on the document's undo list.
template <typename Edit>
void Transact(TeskFile& file, const char* name, Edit&& edit) {
    auto transaction = std::make_unique<ZoEditor::ZoEditTransaction>(name);
    file.GetUndoList().Begin(transaction.get());
    edit(transaction.get());
    ASSERT_TRUE(file.GetUndoList().Add(transaction));
}

ZoAutoPtr<TeskEffect> NewCrossFade() {
    return std::make_unique<TeskCrossFadeEffect>();
}

// What a new document has of what the test below changes.
void ExpectNewDocument(TeskFile& file) {
    EXPECT_EQ(file.GetWidth(), 182);
    EXPECT_FALSE(file.GetLinkEnabled());
    EXPECT_EQ(file.GetBackgroundObject(), nullptr);
    ASSERT_EQ(file.GetEffectCount(), 1);
    EXPECT_NE(dynamic_cast<TeskWaveEffect*>(file.GetEffect(0)), nullptr);
    EXPECT_EQ(file.GetEffect(0)->GetFile(), &file);
    EXPECT_EQ(file.GetSelectedEffectIndex(), 0);
    EXPECT_FALSE(file.IsModified());
    EXPECT_EQ(file.GetFilename(), "");
    EXPECT_EQ(file.GetPublishSettings().GetLocation(), "");
    EXPECT_EQ(file.GetUndoList().GetCount(), 0);
}

TEST(TeskFile, NewResetsEverything) {
    TeskFile file;
    ExpectNewDocument(file);
    RecordingObserver observer;
    observer.AttachToFile(&file);
    Transact(file, "x", [&](auto* t) {
        file.SetWidth(400, t);
        file.SetLinkEnabled(true, t);
        ZoAutoPtr<TeskEffect> fade = NewCrossFade();
        file.InsertEffect(fade, 0, t);
    });
    ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>();
    file.SetBackgroundObject(object, nullptr);
    file.SetFilename("/tmp/a.vmb");
    file.GetPublishSettings().SetLocation("/tmp/a.swf");

    file.New();
    ExpectNewDocument(file);
    EXPECT_EQ(observer.detaches, 1);
    EXPECT_EQ(observer.attaches, 2);
    EXPECT_EQ(observer.GetFile(), &file);
}

TEST(TeskFile, EffectListEditsUndoAndRedoWithSwappedHintKinds) {
    struct Case {
        const char* name;
        std::function<void(TeskFile&, ZoEditor::ZoEditTransaction*)> edit;
        std::vector<int> countAfter;  // effect count after do / undo / redo
        Lines deliveries;             // each followed by the selection repair, if any
    };
    const std::vector<Case> cases = {
        {"insert at end",
         [](TeskFile& f, auto* t) {
             ZoAutoPtr<TeskEffect> e = NewCrossFade();
             f.InsertEffect(e, 1, t);
         },
         {2, 1, 2},
         {"+1", "-1", "+1"}},
        {"remove",
         [](TeskFile& f, auto* t) { f.RemoveEffect(0, t); },
         {0, 1, 0},
         {"-0", "unsel", "+0", "sel", "-0", "unsel"}},
        {"replace",
         [](TeskFile& f, auto* t) {
             ZoAutoPtr<TeskEffect> e = NewCrossFade();
             f.ReplaceEffect(e, 0, t);
             EXPECT_FALSE(e);  // the action keeps the old one for undo
         },
         {1, 1, 1},
         {"=0", "unsel sel", "=0", "unsel sel", "=0", "unsel sel"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TeskFile file;
        RecordingObserver observer;
        observer.AttachToFile(&file);
        // Hear the selection too, as the main window does.
        file.GetSelection().AddListener(&observer);
        TeskEffect* original = file.GetEffect(0);
        Transact(file, c.name, [&](auto* t) { c.edit(file, t); });
        EXPECT_EQ(file.GetEffectCount(), c.countAfter[0]);
        file.GetUndoList().Undo();
        EXPECT_EQ(file.GetEffectCount(), c.countAfter[1]);
        EXPECT_EQ(file.GetEffect(0), original);
        file.GetUndoList().Redo();
        EXPECT_EQ(file.GetEffectCount(), c.countAfter[2]);
        EXPECT_EQ(observer.deliveries, c.deliveries);
        file.GetSelection().RemoveListener(&observer);
    }
}

TEST(TeskFile, UndoingASelectedInsertionMovesTheSelectionToTheFirstEffect) {
    TeskFile file;
    Transact(file, "Insert", [&](auto* t) {
        ZoAutoPtr<TeskEffect> fade = NewCrossFade();
        TeskEffect* inserted = fade.get();
        file.InsertEffect(fade, 1, t);
        file.GetSelection().Select(inserted, false);
    });
    EXPECT_EQ(file.GetSelectedEffectIndex(), 1);
    file.GetUndoList().Undo();
    EXPECT_EQ(file.GetSelectedEffectIndex(), 0);
    EXPECT_EQ(file.GetSelection().GetCount(), 1);
    file.GetUndoList().Redo();
    EXPECT_EQ(file.GetSelectedEffectIndex(), 0);  // redo does not reselect it
}

TEST(TeskFile, SelectionHintsOfATransactionArriveJustBeforeItsOwn) {
    TeskFile file;
    ZoAutoPtr<TeskEffect> fade = NewCrossFade();
    TeskEffect* second = fade.get();
    file.InsertEffect(fade, 1, nullptr);
    RecordingObserver observer;
    observer.AttachToFile(&file);
    file.GetSelection().AddListener(&observer);
    Transact(file, "Edit", [&](auto* t) {
        file.GetSelection().Select(second, false);
        file.SetFrameRate(25, t);
        EXPECT_TRUE(observer.deliveries.empty());  // held back while pending
    });
    EXPECT_EQ(observer.deliveries, (Lines{"unsel sel", "S"}));
    file.GetSelection().RemoveListener(&observer);
}

TEST(TeskFile, SettingsChangeIsOneUndoableHintAndRestoresTheDeepCopiedObjects) {
    TeskFile file;
    ZoAutoPtr<TeskObject> fore = std::make_unique<TeskSolidObject>(0x0000FF);
    ZoAutoPtr<TeskObject> back = std::make_unique<TeskSolidObject>(0x00FF00);
    const TeskObject* foreBefore = fore.get();
    file.SetForegroundObject(fore, nullptr);
    file.SetBackgroundObject(back, nullptr);
    const TeskFile::RealState* stateBefore = &file.GetState();
    RecordingObserver observer;
    observer.AttachToFile(&file);

    Transact(file, "Edit Movie Properties", [&](auto* t) {
        file.SetWidth(300, t);
        file.SetHeight(100, t);
    });
    EXPECT_EQ(observer.deliveries, (Lines{"S S"}));  // one call for both hints
    EXPECT_EQ(file.GetWidth(), 300);
    EXPECT_EQ(file.GetHeight(), 100);
    auto* foreCopy = dynamic_cast<TeskSolidObject*>(file.GetForegroundObject());
    ASSERT_NE(foreCopy, nullptr);
    EXPECT_NE(foreCopy, foreBefore);
    EXPECT_EQ(foreCopy->GetColour(), 0x0000FFu);
    EXPECT_NE(file.GetBackgroundObject(), nullptr);
    EXPECT_TRUE(file.IsModified());
    EXPECT_EQ(file.GetUndoList().GetName(0), "Edit Movie Properties");

    file.GetUndoList().Undo();
    EXPECT_EQ(&file.GetState(), stateBefore);
    EXPECT_EQ(file.GetForegroundObject(), foreBefore);
    EXPECT_EQ(file.GetWidth(), 182);
    EXPECT_FALSE(file.IsModified());
    file.GetUndoList().Redo();
    EXPECT_EQ(file.GetHeight(), 100);
    EXPECT_EQ(observer.deliveries, (Lines{"S S", "S S", "S S"}));
}

TEST(TeskFile, ChangesWithoutATransactionAreSilentAndNotRecorded) {
    TeskFile file;
    RecordingObserver observer;
    observer.AttachToFile(&file);
    const TeskFile::RealState* state = &file.GetState();
    file.SetFrameRate(30, nullptr);
    file.SetLinkURL("http://example.org/", nullptr);
    ZoAutoPtr<TeskEffect> fade = NewCrossFade();
    file.InsertEffect(fade, 1, nullptr);
    file.GetEffect(0)->SetEffectTime(500, nullptr);
    EXPECT_EQ(file.GetFrameRate(), 30);
    EXPECT_EQ(&file.GetState(), state);  // changed in place
    EXPECT_EQ(file.GetEffect(0)->GetTiming().endTime, 500);
    EXPECT_TRUE(observer.deliveries.empty());
    EXPECT_EQ(file.GetUndoList().GetCount(), 0);
    EXPECT_FALSE(file.IsModified());
}

TEST(TeskFile, EffectStateChangeReachesTheDocumentObservers) {
    TeskFile file;
    RecordingObserver observer;
    observer.AttachToFile(&file);
    auto& wave = static_cast<TeskWaveEffect&>(*file.GetEffect(0));
    Transact(file, "Edit Amplitude", [&](auto* t) { wave.SetAmplitude(300, t); });
    file.GetUndoList().Undo();
    EXPECT_EQ(wave.GetAmplitude(), 100);
    EXPECT_EQ(observer.deliveries, (Lines{"~", "~"}));
}

TEST(TeskFile, SwapStateIgnoresForeignStates) {
    TeskFile file;
    const TeskFile::RealState* state = &file.GetState();
    ZoAutoPtr<TeskFile::State> foreign = std::make_unique<TeskFile::State>();
    const TeskFile::State* foreignBefore = foreign.get();
    file.SwapState(foreign);
    EXPECT_EQ(&file.GetState(), state);
    EXPECT_EQ(foreign.get(), foreignBefore);
    ZoAutoPtr<TeskFile::State> real = std::make_unique<TeskFile::RealState>();
    file.SwapState(real);
    EXPECT_NE(&file.GetState(), state);
    EXPECT_EQ(real.get(), state);
}

TEST(TeskPublishSettings, ConfirmOverwriteIsRaisedOnlyByANewLocation) {
    struct Case {
        const char* before;
        const char* after;
        bool confirmAfter;
    };
    for (const Case& c :
         {Case{"", "", false}, Case{"", "a.swf", true}, Case{"a.swf", "a.swf", false},
          Case{"a.swf", "", true}, Case{"a.swf", "A.swf", true}}) {
        SCOPED_TRACE(std::string(c.before) + " -> " + c.after);
        TeskPublishSettings settings;
        EXPECT_TRUE(settings.GetConfirmOverwrite());
        settings.SetLocation(c.before);
        settings.SetConfirmOverwrite(false);  // the user agreed once
        settings.SetLocation(c.after);
        EXPECT_EQ(settings.GetConfirmOverwrite(), c.confirmAfter);
        EXPECT_EQ(settings.GetLocation(), c.after);
    }
}

void Put(TeskEffect& effect, int index, ZoAutoPtr<TeskObject> object) {
    effect.SetObject(object, index);
}

TEST(TeskFile, FitToObjectTakesTheLargestWidthAndHeightOfTheEffectsObjects) {
    TeskFile file;
    TeskEffect& wave = *file.GetEffect(0);
    Put(wave, 0, std::make_unique<SizedObject>(ZoSize{300, 0}));
    ZoAutoPtr<TeskEffect> owned = NewCrossFade();
    TeskEffect& fade = *owned;
    Put(fade, 0, std::make_unique<TeskSolidObject>());
    Put(fade, 1, std::make_unique<TeskSolidObject>());
    file.InsertEffect(owned, 1, nullptr);
    // The movie-wide objects are not consulted.
    ZoAutoPtr<TeskObject> huge = std::make_unique<SizedObject>(ZoSize{5000, 5000});
    file.SetForegroundObject(huge, nullptr);
    EXPECT_FALSE(file.FitToObject()) << "no object has both a width and a height";
    EXPECT_EQ(file.GetWidth(), 182);
    EXPECT_EQ(file.GetUndoList().GetCount(), 0);

    Put(wave, 0, std::make_unique<SizedObject>(ZoSize{50, 400}));
    Put(fade, 0, std::make_unique<SizedObject>(ZoSize{640, 30}));
    EXPECT_TRUE(file.FitToObject());
    EXPECT_EQ(file.GetWidth(), 640);
    EXPECT_EQ(file.GetHeight(), 400);
    ASSERT_EQ(file.GetUndoList().GetCount(), 1);
    EXPECT_EQ(file.GetUndoList().GetName(0), "Fit To Object");
    file.GetUndoList().Undo();
    EXPECT_EQ(file.GetWidth(), 182);
    EXPECT_EQ(file.GetHeight(), 202);
}

TEST(TeskFileObserver, BelongsToOneDocumentAtATime) {
    auto first = std::make_unique<TeskFile>();
    TeskFile second;
    RecordingObserver observer;
    observer.AttachToFile(first.get());
    observer.AttachToFile(first.get());  // again: nothing happens
    EXPECT_EQ(observer.attaches, 1);
    observer.AttachToFile(&second);
    EXPECT_EQ(observer.detaches, 1);
    EXPECT_TRUE(first->GetObservers().empty());
    EXPECT_EQ(second.GetObservers().size(), 1u);

    observer.AttachToFile(first.get());
    first.reset();  // the document lets its observers go
    EXPECT_EQ(observer.GetFile(), nullptr);
    EXPECT_TRUE(second.GetObservers().empty());

    {
        RecordingObserver shortLived;
        shortLived.AttachToFile(&second);
    }
    EXPECT_TRUE(second.GetObservers().empty());
}

TEST(TeskFile, HintsOfADestroyedObserverAreDroppedOnUndo) {
    TeskFile file;
    auto observer = std::make_unique<RecordingObserver>();
    observer->AttachToFile(&file);
    Transact(file, "Edit Frame Rate", [&](auto* t) { file.SetFrameRate(20, t); });
    observer.reset();
    file.GetUndoList().Undo();  // ASan reports a call into the destroyed observer
    EXPECT_EQ(file.GetFrameRate(), 12);
}

}  // namespace
