// A seeded random run of edits, undos and redos, checked after every step
// against a plain model of what the document should hold.
#include <gtest/gtest.h>

#include <random>

#include "document/file.h"
#include "effects/cross_fade_effect.h"

namespace {

/// What the test expects: effects by identity, movie width and frame rate.
struct Model {
    std::vector<const TeskEffect*> effects;
    int32_t width = 182;
    int32_t frameRate = 12;
    bool operator==(const Model&) const = default;
};

Model Observe(const TeskFile& file) {
    Model model;
    for (int i = 0; i < file.GetEffectCount(); ++i)
        model.effects.push_back(file.GetEffect(i));
    model.width = file.GetWidth();
    model.frameRate = file.GetFrameRate();
    return model;
}

TEST(TeskFile, RandomEditsUndosAndRedosFollowTheModelSeed20261123) {
    std::mt19937 random(20261123);
    auto pick = [&](int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); };
    TeskFile file;
    ZoEditor::ZoUndoList& undo = file.GetUndoList();
    // history[i] is the model after i transactions; `position` mirrors the list.
    std::vector<Model> history{Observe(file)};
    size_t position = 0;

    for (int step = 0; step < 400; ++step) {
        SCOPED_TRACE(step);
        const int choice = pick(10);
        if (choice < 2) {
            undo.Undo();
            position -= position > 0 ? 1 : 0;
        } else if (choice < 4) {
            undo.Redo();
            position += position + 1 < history.size() ? 1 : 0;
        } else {
            Model next = history[position];
            auto transaction = std::make_unique<ZoEditor::ZoEditTransaction>("step");
            undo.Begin(transaction.get());
            const int count = file.GetEffectCount();
            if (choice < 6 || count == 0) {
                ZoAutoPtr<TeskEffect> fade = std::make_unique<TeskCrossFadeEffect>();
                const int index = pick(count + 1);
                next.effects.insert(next.effects.begin() + index, fade.get());
                file.InsertEffect(fade, index, transaction.get());
            } else if (choice == 6) {
                const int index = pick(count);
                next.effects.erase(next.effects.begin() + index);
                file.RemoveEffect(index, transaction.get());
            } else if (choice == 7) {
                ZoAutoPtr<TeskEffect> fade = std::make_unique<TeskCrossFadeEffect>();
                const int index = pick(count);
                next.effects[static_cast<size_t>(index)] = fade.get();
                file.ReplaceEffect(fade, index, transaction.get());
            } else if (choice == 8) {
                next.width = 1 + pick(1000);
                file.SetWidth(next.width, transaction.get());
            } else {
                next.frameRate = 1 + pick(60);
                file.SetFrameRate(next.frameRate, transaction.get());
                file.GetSelection().Select(file.GetEffect(pick(count)), false);
            }
            ASSERT_TRUE(undo.Add(transaction));
            history.resize(position + 1);
            history.push_back(next);
            ++position;
        }
        ASSERT_EQ(static_cast<size_t>(undo.GetPosition()), position);
        ASSERT_EQ(static_cast<size_t>(undo.GetCount()) + 1, history.size());
        ASSERT_EQ(Observe(file), history[position]);
        // The selection is exactly one effect of the document, or empty with none.
        if (file.GetEffectCount() == 0) {
            ASSERT_EQ(file.GetSelection().GetCount(), 0);
        } else {
            ASSERT_EQ(file.GetSelection().GetCount(), 1);
            ASSERT_GE(file.GetSelectedEffectIndex(), 0);
        }
        for (int i = 0; i < file.GetEffectCount(); ++i)
            ASSERT_EQ(file.GetEffect(i)->GetFile(), &file);
    }
}

}  // namespace
