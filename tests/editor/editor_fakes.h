#pragma once
// Small actions and targets that make the undo machinery observable.
#include <vector>

#include "editor/edit_action.h"
#include "editor/update_hint.h"

namespace editor_test {

/// Adds `delta` to a counter; can be told to fail in either direction.
class AddAction : public ZoEditor::ZoEditAction {
  public:
    AddAction(int& value, int delta) : value_(value), delta_(delta) {}
    bool failDo = false;
    bool failUndo = false;

  protected:
    bool Do() override {
        if (failDo)
            return false;
        value_ += delta_;
        return true;
    }
    bool Undo() override {
        if (failUndo)
            return false;
        value_ -= delta_;
        return true;
    }

  private:
    int& value_;
    int delta_;
};

/// A hint that only carries a number.
class TagHint : public ZoEditor::ZoUpdateHint {
  public:
    explicit TagHint(int tag) : tag(tag) {}
    int tag;
};

/// Remembers each delivery: how many hints it saw and whether reversed.
class RecordingTarget : public ZoEditor::ZoEditUpdateTarget {
  public:
    struct Call {
        int hintCount;
        bool reversed;
    };
    void OnUpdate(ZoEditor::ZoUpdateHintList& hints) override {
        calls.push_back({hints.GetCount(), hints.IsReversed()});
    }
    std::vector<Call> calls;
};

}  // namespace editor_test
