#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "editor/undo_list.h"
#include "editor_fakes.h"

namespace {

using editor_test::AddAction;
using editor_test::RecordingTarget;
using editor_test::TagHint;
using ZoEditor::ZoEditAction;
using ZoEditor::ZoEditTransaction;
using ZoEditor::ZoUndoList;
using ZoEditor::ZoUpdateHint;

class CountingUndoList : public ZoUndoList {
  public:
    int onUndoRedoCalls = 0;

  protected:
    void OnUndoRedo() override { ++onUndoRedoCalls; }
};

class Messages : public ZoEditor::ZoMessageSink {
  public:
    void ShowMessage(std::string_view text) override { shown.emplace_back(text); }
    std::vector<std::string> shown;
};

/// One named transaction that adds `delta` to `value` and hints `target`.
ZoAutoPtr<ZoEditTransaction> Change(ZoUndoList& list, int& value, int delta, const char* name,
                                    RecordingTarget* target = nullptr) {
    auto transaction = std::make_unique<ZoEditTransaction>(name);
    list.Begin(transaction.get());
    auto action = std::make_unique<AddAction>(value, delta);
    ZoAutoPtr<ZoEditAction> owned = std::move(action);
    EXPECT_TRUE(transaction->AddAction(owned));
    ZoAutoPtr<ZoUpdateHint> hint = std::make_unique<TagHint>(delta);
    hint->AddTarget(target);
    transaction->AddHint(hint);
    return transaction;
}

void Commit(ZoUndoList& list, int& value, int delta, const char* name,
            RecordingTarget* target = nullptr) {
    auto transaction = Change(list, value, delta, name, target);
    ASSERT_TRUE(list.Add(transaction));
    EXPECT_FALSE(transaction);
}

TEST(ZoEditAction, PerformAndRevertOnlyInTheRightDirection) {
    int value = 0;
    AddAction action(value, 5);
    EXPECT_FALSE(action.Revert());
    EXPECT_TRUE(action.Perform());
    EXPECT_FALSE(action.Perform());
    EXPECT_EQ(value, 5);
    EXPECT_TRUE(action.Revert());
    EXPECT_FALSE(action.Revert());
    EXPECT_TRUE(action.Perform());
    EXPECT_EQ(value, 5);
    EXPECT_EQ(action.GetPerformCount(), 2);
    action.failUndo = true;
    EXPECT_FALSE(action.Revert());
    EXPECT_TRUE(action.IsDone());
}

TEST(ZoEditTransaction, FailedActionIsDroppedAndUncommittedTransactionRollsBackSilently) {
    int value = 0;
    RecordingTarget target;
    {
        ZoEditTransaction transaction("x");
        ZoAutoPtr<ZoEditAction> good = std::make_unique<AddAction>(value, 3);
        auto failing = std::make_unique<AddAction>(value, 100);
        failing->failDo = true;
        ZoAutoPtr<ZoEditAction> bad = std::move(failing);
        EXPECT_TRUE(transaction.AddAction(good));
        EXPECT_FALSE(transaction.AddAction(bad));
        EXPECT_EQ(transaction.GetActionCount(), 1);
        ZoAutoPtr<ZoUpdateHint> hint = std::make_unique<TagHint>(1);
        hint->AddTarget(&target);
        transaction.AddHint(hint);
        EXPECT_EQ(value, 3);
    }
    EXPECT_EQ(value, 0);
    EXPECT_TRUE(target.calls.empty());
}

TEST(ZoUndoList, AddCommitsOnceAndUndoRedoDeliverTheSameBatchAndAlwaysNotify) {
    CountingUndoList list;
    EXPECT_FALSE(list.Undo());
    EXPECT_FALSE(list.Redo());
    EXPECT_EQ(list.onUndoRedoCalls, 2);
    RecordingTarget target;
    int value = 0;
    Commit(list, value, 2, "Two", &target);
    ASSERT_EQ(target.calls.size(), 1u);
    EXPECT_FALSE(target.calls[0].reversed);
    EXPECT_FALSE(list.Redo());  // at the end
    EXPECT_EQ(value, 2);
    EXPECT_EQ(list.onUndoRedoCalls, 4);

    EXPECT_TRUE(list.Undo());
    EXPECT_EQ(value, 0);
    EXPECT_TRUE(list.Redo());
    EXPECT_EQ(value, 2);
    EXPECT_EQ(list.GetPosition(), 1);
    ASSERT_EQ(target.calls.size(), 3u);
    EXPECT_TRUE(target.calls[1].reversed);
    EXPECT_FALSE(target.calls[2].reversed);
    EXPECT_EQ(list.onUndoRedoCalls, 6);
}

TEST(ZoUndoList, TransactionNotBegunIsRefusedAndRolledBackByItsOwner) {
    ZoUndoList list;
    int value = 0;
    {
        auto transaction = Change(list, value, 4, "Four");
        ZoAutoPtr<ZoEditTransaction> stranger = std::make_unique<ZoEditTransaction>("stranger");
        EXPECT_FALSE(list.Add(stranger));
        EXPECT_TRUE(stranger);
        EXPECT_FALSE(list.Cancel(stranger.get()));
        EXPECT_TRUE(list.Cancel(transaction.get()));
        EXPECT_FALSE(list.Add(transaction));  // no longer pending
        EXPECT_EQ(value, 4);
    }
    EXPECT_EQ(value, 0);
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_FALSE(list.IsModified());
}

TEST(ZoUndoList, NewChangeAfterUndoDropsTheRedoPartAndItsSavedState) {
    ZoUndoList list;
    int value = 0;
    Commit(list, value, 1, "A");
    Commit(list, value, 10, "B");
    list.MarkSaved();
    EXPECT_FALSE(list.IsModified());
    list.Undo();
    EXPECT_TRUE(list.IsModified());
    list.Redo();
    EXPECT_FALSE(list.IsModified());
    Commit(list, value, 100, "C");

    // The saved state sits in the redo part that a new change throws away;
    // reaching the same position again must not look saved.
    list.Undo();
    list.Undo();
    EXPECT_EQ(value, 1);
    Commit(list, value, 1000, "D");
    EXPECT_EQ(list.GetPosition(), 2);
    EXPECT_TRUE(list.IsModified());
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_FALSE(list.CanRedo());
    EXPECT_EQ(list.GetName(0), "A");
    EXPECT_EQ(list.GetName(1), "D");
    EXPECT_EQ(value, 1001);

    list.Clear();
    EXPECT_FALSE(list.IsModified());
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(value, 1001);  // clearing rolls nothing back
}

TEST(ZoUndoList, FailuresKeepThePositionAndTheValueAndAreReported) {
    struct Case {
        bool failUndo;
        const char* message;
    };
    for (const Case& c : {Case{true, "Error during Undo"}, Case{false, "Error during Redo"}}) {
        SCOPED_TRACE(c.message);
        ZoUndoList list;
        Messages messages;
        list.SetMessageSink(&messages);
        RecordingTarget target;
        int value = 0;
        // Two actions in one transaction: the second one fails, so the first
        // must be put back where it was.
        auto transaction = Change(list, value, 1, "pair", &target);
        auto action = std::make_unique<AddAction>(value, 10);
        AddAction* failing = action.get();
        ZoAutoPtr<ZoEditAction> owned = std::move(action);
        transaction->AddAction(owned);
        ASSERT_TRUE(list.Add(transaction));
        if (!c.failUndo)
            list.Undo();
        const int position = list.GetPosition();
        const int before = value;
        const size_t calls = target.calls.size();
        (c.failUndo ? failing->failUndo : failing->failDo) = true;

        EXPECT_FALSE(c.failUndo ? list.Undo() : list.Redo());
        EXPECT_EQ(list.GetPosition(), position);
        EXPECT_EQ(value, before);
        EXPECT_EQ(target.calls.size(), calls);  // nothing happened, nothing to hear
        EXPECT_EQ(messages.shown, std::vector<std::string>{c.message});
    }
}

}  // namespace
