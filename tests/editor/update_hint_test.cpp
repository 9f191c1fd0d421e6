#include <gtest/gtest.h>

#include <memory>

#include "editor/update_hint.h"
#include "editor_fakes.h"

namespace {

using editor_test::RecordingTarget;
using editor_test::TagHint;
using ZoEditor::ZoUpdateHint;
using ZoEditor::ZoUpdateHintList;

void AddHint(ZoUpdateHintList& list, int tag, std::initializer_list<RecordingTarget*> targets) {
    ZoAutoPtr<ZoUpdateHint> hint = std::make_unique<TagHint>(tag);
    for (RecordingTarget* target : targets)
        hint->AddTarget(target);
    list.Add(hint);
    EXPECT_FALSE(hint);  // the list took it
}

TEST(ZoUpdateHintList, EachTargetIsCalledOncePerDeliveryAtItsFirstAppearance) {
    RecordingTarget a, b;
    std::vector<const RecordingTarget*> order;
    struct OrderTarget : RecordingTarget {
        std::vector<const RecordingTarget*>* order;
        void OnUpdate(ZoEditor::ZoUpdateHintList& hints) override {
            order->push_back(this);
            RecordingTarget::OnUpdate(hints);
        }
    };
    OrderTarget x, y;
    x.order = y.order = &order;
    ZoUpdateHintList list;
    AddHint(list, 1, {&y, &a});
    AddHint(list, 2, {&x, &y, &a, &a});
    AddHint(list, 3, {&b});

    list.Deliver(false);
    EXPECT_EQ(order, (std::vector<const RecordingTarget*>{&y, &x}));
    for (const RecordingTarget* target : {&a, &b, static_cast<RecordingTarget*>(&x)}) {
        ASSERT_EQ(target->calls.size(), 1u);
        EXPECT_EQ(target->calls[0].hintCount, 3);  // every call sees the whole batch
        EXPECT_FALSE(target->calls[0].reversed);
    }

    list.Deliver(true);
    ASSERT_EQ(a.calls.size(), 2u);
    EXPECT_TRUE(a.calls[1].reversed);
    EXPECT_FALSE(list.IsReversed());  // only while delivering
    bool reversed = true;
    EXPECT_EQ(static_cast<TagHint*>(list.GetHint(2, reversed))->tag, 3);
    EXPECT_FALSE(reversed);
}

TEST(ZoUpdateHintList, TargetsDestroyedBeforeOrDuringADeliveryAreSkipped) {
    auto gone = std::make_unique<RecordingTarget>();
    auto victim = std::make_unique<RecordingTarget>();
    auto original = std::make_unique<RecordingTarget>();
    RecordingTarget copy(*original);  // a copy has a lifetime of its own
    struct Killer : ZoEditor::ZoEditUpdateTarget {
        std::unique_ptr<RecordingTarget>* victim;
        void OnUpdate(ZoUpdateHintList&) override { victim->reset(); }
    } killer;
    killer.victim = &victim;
    ZoUpdateHintList list;
    AddHint(list, 1, {gone.get(), &copy});
    ZoAutoPtr<ZoUpdateHint> hint = std::make_unique<TagHint>(2);
    hint->AddTarget(&killer);
    hint->AddTarget(victim.get());
    list.Add(hint);
    gone.reset();
    original.reset();
    list.Deliver(false);  // ASan reports a call into a destroyed target
    EXPECT_FALSE(victim);
    EXPECT_EQ(copy.calls.size(), 1u);
}

}  // namespace
