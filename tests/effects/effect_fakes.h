#pragma once
// A document stand-in and a field dump for comparing states deeply.
#include <set>
#include <string>
#include <vector>

#include "editor/update_hint.h"
#include "effects/effect.h"
#include "effects/grid_effect.h"
#include "objects/field_visitor.h"
#include "objects/object.h"

namespace effect_test {

/// Collects every hint an effect asks its document to send.
class FakeHost : public TeskEffectHost, public ZoEditor::ZoEditUpdateTarget {
  public:
    void NotifyObservers(ZoEditor::ZoUpdateHint& hint) override { hint.AddTarget(this); }
    bool GetOffsetForMovieClip() const override { return offset; }
    void OnUpdate(ZoEditor::ZoUpdateHintList& hints) override {
        deliveries.push_back(hints.GetCount());
    }
    bool offset = false;
    std::vector<int> deliveries;  // hints per delivery
};

/// Flattens a state into "path=value" lines, objects included, and notes
/// which objects it passed through.
class FieldDump : public TeskFieldVisitor {
  public:
    static FieldDump Of(TeskEffect::State& state) {
        FieldDump dump;
        state.VisitFields(dump);
        return dump;
    }
    bool IsReading() const override { return false; }
    void Field(std::string_view name, int32_t& value) override { Add(name, std::to_string(value)); }
    void Field(std::string_view name, uint32_t& value) override {
        Add(name, std::to_string(value) + "u");
    }
    void Field(std::string_view name, bool& value) override { Add(name, value ? "true" : "false"); }
    void Field(std::string_view name, double& value) override { Add(name, std::to_string(value)); }
    void Field(std::string_view name, ZoString& value) override { Add(name, '"' + value + '"'); }
    void Field(std::string_view name, ZoRect& r) override {
        Add(name, std::to_string(r.left) + "," + std::to_string(r.top) + "," +
                      std::to_string(r.right) + "," + std::to_string(r.bottom));
    }
    void Object(std::string_view name, ZoAutoPtr<TeskObject>& holder) override {
        if (!holder) {
            Add(name, "none");
            return;
        }
        objects.insert(holder.get());
        Add(name, "kind " + std::to_string(holder->GetType()));
        Group(name, [&] { holder->VisitFields(*this); });
    }
    void Group(std::string_view name, const std::function<void()>& visitMembers) override {
        const std::string outer = prefix_;
        prefix_ += std::string(name) + ".";
        visitMembers();
        prefix_ = outer;
    }
    void List(std::string_view name, size_t size, const std::function<void(size_t)>&,
              const std::function<void(size_t)>& visitElement) override {
        Add(name, "list of " + std::to_string(size));
        for (size_t i = 0; i < size; ++i)
            Group(std::string(name) + "[" + std::to_string(i) + "]", [&] { visitElement(i); });
    }

    std::vector<std::string> lines;
    std::set<const TeskObject*> objects;

  private:
    void Add(std::string_view name, const std::string& value) {
        lines.push_back(prefix_ + std::string(name) + "=" + value);
    }
    std::string prefix_;
};

/// Gives `effect` a grid of `gridType` with `across` × `down` cells instead of
/// the automatic choice.
inline void SetFixedGrid(TeskGridEffect& effect, int32_t gridType, int32_t across, int32_t down,
                         bool roundMovedPoints = false) {
    TeskGridEffect::GridSettings settings;
    settings.chooseGrid = false;
    settings.gridType = gridType;
    settings.across = across;
    settings.down = down;
    settings.roundMovedPoints = roundMovedPoints;
    effect.SetGridSettings(settings, nullptr);
}

}  // namespace effect_test
