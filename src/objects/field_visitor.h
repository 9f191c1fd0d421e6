#pragma once
// Named access to every stored field of an object or effect state. The binary
// project records are positional; this gives the same fields names, so JSON
// projects, `vimbo dump` and equality checks in tests need no per-class code.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

#include "platform/zo_auto_ptr.h"
#include "platform/zo_colour.h"
#include "platform/zo_rect.h"
#include "platform/zo_string.h"

class TeskObject;

/// Visits fields by their code names (`frameRate`, `startHold`, ...). A
/// reading visitor assigns through the references; a writing one only reads.
class TeskFieldVisitor {
  public:
    virtual ~TeskFieldVisitor() = default;

    /// True when the visitor assigns values (loading), false when it reports them.
    virtual bool IsReading() const = 0;

    virtual void Field(std::string_view name, int32_t& value) = 0;
    virtual void Field(std::string_view name, uint32_t& value) = 0;
    virtual void Field(std::string_view name, bool& value) = 0;
    virtual void Field(std::string_view name, double& value) = 0;
    virtual void Field(std::string_view name, ZoString& value) = 0;
    virtual void Field(std::string_view name, ZoRect& value) = 0;
    /// A colour; visitors that show fields to people may spell it out.
    virtual void Colour(std::string_view name, COLORREF& value) { Field(name, value); }
    /// An object slot; a reading visitor may replace or empty the holder.
    virtual void Object(std::string_view name, ZoAutoPtr<TeskObject>& holder) = 0;
    /// A nested block of fields (the `timing` block, a cube face, ...).
    virtual void Group(std::string_view name, const std::function<void()>& visitMembers) = 0;
    /// A list whose length may change on reading: `resize` is called with the
    /// stored length before the elements are visited in order.
    virtual void List(std::string_view name, size_t size, const std::function<void(size_t)>& resize,
                      const std::function<void(size_t index)>& visitElement) = 0;
};
