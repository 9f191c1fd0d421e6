#include <gtest/gtest.h>

#include "editor/selection.h"
#include "editor_fakes.h"

namespace {

using ZoEditor::ZoSelection;
using ZoEditor::ZoSelectionUpdateHint;
using ZoEditor::ZoUpdateHintList;

/// Flattens a batch into (item, deselected) pairs.
struct SelectionListener : ZoEditor::ZoEditUpdateTarget {
    std::vector<std::vector<std::pair<int*, bool>>> batches;
    void OnUpdate(ZoUpdateHintList& hints) override {
        std::vector<std::pair<int*, bool>> batch;
        for (int i = 0; i < hints.GetCount(); ++i) {
            bool reversed = false;
            auto* hint = static_cast<ZoSelectionUpdateHint<int>*>(hints.GetHint(i, reversed));
            batch.emplace_back(hint->GetItem(), hint->IsDeselected());
        }
        batches.push_back(batch);
    }
};

TEST(ZoSelection, EmitsOneHintPerAffectedItemAtOnceOrIntoAHeldList) {
    int a = 0, b = 0, c = 0;
    ZoSelection<int> selection;
    SelectionListener listener;
    selection.AddListener(&listener);
    selection.AddListener(&listener);  // no duplicate listeners

    selection.Select(&a, false);
    selection.Select(&b, true);
    selection.Select(&b, true);  // already selected: nothing
    selection.Select(&c, false);
    selection.Clear();

    using Batch = std::vector<std::pair<int*, bool>>;
    ASSERT_EQ(listener.batches.size(), 4u);
    EXPECT_EQ(listener.batches[0], (Batch{{&a, false}}));
    EXPECT_EQ(listener.batches[1], (Batch{{&b, false}}));
    EXPECT_EQ(listener.batches[2], (Batch{{&a, true}, {&b, true}, {&c, false}}));
    EXPECT_EQ(listener.batches[3], (Batch{{&c, true}}));
    EXPECT_EQ(selection.GetCount(), 0);

    // A transaction's list holds the hints back until it is delivered.
    ZoUpdateHintList held;
    selection.SetHintList(&held);
    selection.Select(&a, false);
    selection.Select(&b, false);
    EXPECT_EQ(listener.batches.size(), 4u);
    EXPECT_TRUE(selection.IsSelected(&b));
    EXPECT_FALSE(selection.IsSelected(&a));
    selection.SetHintList(nullptr);
    held.Deliver(false);
    ASSERT_EQ(listener.batches.size(), 5u);
    EXPECT_EQ(listener.batches[4], (Batch{{&a, false}, {&a, true}, {&b, false}}));

    selection.RemoveListener(&listener);
    selection.Select(&a, false);
    EXPECT_EQ(listener.batches.size(), 5u);
    EXPECT_EQ(selection.GetItem(0), &a);
}

}  // namespace
