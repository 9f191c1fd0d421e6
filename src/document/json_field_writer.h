#pragma once
// Field visitors that turn states and objects into JSON and back.
#include <nlohmann/json.hpp>
#include <vector>

#include "objects/field_visitor.h"

/// JSON with keys kept in the order they were visited, so a dump lists
/// fields in the order of the records.
using TeskJson = nlohmann::ordered_json;

/// Writes every visited field into a JSON object under its code name.
/// Objects become { "kind": "<display name>", fields... } (null for an empty
/// slot), groups nested objects, rectangles { left, top, right, bottom },
/// lists arrays; a list element with a single field is written as its bare
/// value.
class TeskJsonFieldWriter : public TeskFieldVisitor {
  public:
    /// Fields go into `target`, which becomes an object if it is null.
    explicit TeskJsonFieldWriter(TeskJson& target);

    bool IsReading() const override { return false; }
    void Field(std::string_view name, int32_t& value) override;
    void Field(std::string_view name, uint32_t& value) override;
    void Field(std::string_view name, bool& value) override;
    /// Throws ZoException for values JSON cannot hold (NaN, infinities).
    void Field(std::string_view name, double& value) override;
    void Field(std::string_view name, ZoString& value) override;
    void Field(std::string_view name, ZoRect& value) override;
    void Colour(std::string_view name, COLORREF& value) override;
    void Object(std::string_view name, ZoAutoPtr<TeskObject>& holder) override;
    void Group(std::string_view name, const std::function<void()>& visitMembers) override;
    void List(std::string_view name, size_t size, const std::function<void(size_t)>& resize,
              const std::function<void(size_t index)>& visitElement) override;

  private:
    TeskJson& Slot(std::string_view name);

    std::vector<TeskJson*> targets_;
};
