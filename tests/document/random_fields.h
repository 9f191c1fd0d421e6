#pragma once
// Fills every stored field of a state with seeded random values through the
// same named-field access that JSON projects use, so round-trip tests cover
// fields that a hand-written list would miss.
#include <random>

#include "document/object_kinds.h"
#include "objects/field_visitor.h"
#include "objects/object.h"

namespace document_test {

class RandomFieldVisitor : public TeskFieldVisitor {
  public:
    explicit RandomFieldVisitor(uint32_t seed) : random_(seed) {}

    bool IsReading() const override { return true; }
    // Modest ranges: grid sizes and times stay small enough to build.
    void Field(std::string_view, int32_t& value) override { value = Int(-50, 500); }
    void Field(std::string_view, uint32_t& value) override {
        value = static_cast<uint32_t>(random_());
    }
    void Field(std::string_view, bool& value) override { value = Int(0, 1) == 1; }
    void Field(std::string_view, double& value) override {
        value = std::uniform_real_distribution<double>(-10.0, 10.0)(random_);
    }
    void Field(std::string_view, ZoString& value) override {
        value.clear();
        for (int i = Int(0, 12); i > 0; --i)
            value.push_back(static_cast<char>(Int('a', 'z')));
    }
    void Field(std::string_view, ZoRect& value) override {
        value = {Int(-100, 0), Int(-100, 0), Int(1, 100), Int(1, 100)};
    }
    void Object(std::string_view, ZoAutoPtr<TeskObject>& holder) override {
        static constexpr const char* kKinds[] = {"Image", "Graduated Colour", "Text",
                                                 "Solid Colour"};
        const int pick = Int(0, 4);
        holder = pick == 4 ? nullptr : TeskMakeObjectOfKind(kKinds[pick]);
        if (holder)
            holder->VisitFields(*this);
    }
    void Group(std::string_view, const std::function<void()>& visitMembers) override {
        visitMembers();
    }
    void List(std::string_view, size_t, const std::function<void(size_t)>& resize,
              const std::function<void(size_t index)>& visitElement) override {
        const auto size = static_cast<size_t>(Int(1, 4));
        resize(size);
        for (size_t i = 0; i < size; ++i)
            visitElement(i);
    }

  private:
    int32_t Int(int32_t low, int32_t high) {
        return std::uniform_int_distribution<int32_t>(low, high)(random_);
    }

    std::mt19937 random_;
};

}  // namespace document_test
