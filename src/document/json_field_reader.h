#pragma once
#include <set>
#include <string>
#include <vector>

#include "document/json_field_writer.h"

/// Assigns visited fields from a JSON object written by TeskJsonFieldWriter.
/// Fields the JSON lacks keep the values they have; a key that no visit asks
/// for, or a value of the wrong type or range, throws ZoException naming the
/// key by its path ("effects[2].timing.startHold").
class TeskJsonFieldReader : public TeskFieldVisitor {
  public:
    /// `source` must be an object; `path` names it in messages ("" for the
    /// top level).
    TeskJsonFieldReader(const TeskJson& source, std::string path);
    /// The reader keeps a reference: a temporary source would dangle.
    TeskJsonFieldReader(TeskJson&& source, std::string path) = delete;

    /// Marks a key as handled by the caller (such as "effects").
    void Consume(std::string_view key);
    /// Throws for the first key of the top-level object that nothing handled.
    void CheckAllKeysUsed() const;

    bool IsReading() const override { return true; }
    void Field(std::string_view name, int32_t& value) override;
    void Field(std::string_view name, uint32_t& value) override;
    void Field(std::string_view name, bool& value) override;
    void Field(std::string_view name, double& value) override;
    void Field(std::string_view name, ZoString& value) override;
    void Field(std::string_view name, ZoRect& value) override;
    void Colour(std::string_view name, COLORREF& value) override;
    void Object(std::string_view name, ZoAutoPtr<TeskObject>& holder) override;
    void Group(std::string_view name, const std::function<void()>& visitMembers) override;
    void List(std::string_view name, size_t size, const std::function<void(size_t)>& resize,
              const std::function<void(size_t index)>& visitElement) override;

  private:
    struct Scope {
        const TeskJson* node;
        std::string path;
        std::set<std::string, std::less<>> used;
        // A list element written as a bare value: the first field takes it.
        bool bare = false;
    };

    /// The value for `name` in the current scope, or null when absent.
    const TeskJson* Find(std::string_view name);
    std::string PathOf(std::string_view name) const;
    void Enter(const TeskJson& node, std::string path);
    void LeaveChecked();
    [[noreturn]] void WrongType(std::string_view name, const char* expected) const;
    int64_t Integer(std::string_view name, const TeskJson& value, int64_t low, int64_t high) const;

    std::vector<Scope> scopes_;
};
