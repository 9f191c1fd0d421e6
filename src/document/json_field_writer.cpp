#include "document/json_field_writer.h"

#include <cmath>

#include "document/object_kinds.h"
#include "objects/object.h"
#include "platform/zo_exception.h"

TeskJsonFieldWriter::TeskJsonFieldWriter(TeskJson& target) {
    if (target.is_null())
        target = TeskJson::object();
    targets_.push_back(&target);
}

TeskJson& TeskJsonFieldWriter::Slot(std::string_view name) {
    return (*targets_.back())[std::string(name)];
}

void TeskJsonFieldWriter::Field(std::string_view name, int32_t& value) {
    Slot(name) = value;
}
void TeskJsonFieldWriter::Field(std::string_view name, uint32_t& value) {
    Slot(name) = value;
}
void TeskJsonFieldWriter::Colour(std::string_view name, COLORREF& value) {
    // Designers read colours as red, green, blue in hex, as on the web. A
    // value with its top byte set (read from an old file) stays a number so
    // that nothing is lost.
    if (value > 0xFFFFFF) {
        Slot(name) = value;
        return;
    }
    Slot(name) = ZoFormat("#%02x%02x%02x", value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF);
}
void TeskJsonFieldWriter::Field(std::string_view name, bool& value) {
    Slot(name) = value;
}
void TeskJsonFieldWriter::Field(std::string_view name, ZoString& value) {
    Slot(name) = value;
}

void TeskJsonFieldWriter::Field(std::string_view name, double& value) {
    if (!std::isfinite(value)) {
        throw ZoException(ZoFormat("The field '%.*s' holds a value that is not a finite number",
                                   static_cast<int>(name.size()), name.data()));
    }
    Slot(name) = value;
}

void TeskJsonFieldWriter::Field(std::string_view name, ZoRect& value) {
    Slot(name) = TeskJson{
        {"left", value.left}, {"top", value.top}, {"right", value.right}, {"bottom", value.bottom}};
}

void TeskJsonFieldWriter::Object(std::string_view name, ZoAutoPtr<TeskObject>& holder) {
    TeskJson& slot = Slot(name);
    if (!holder) {
        slot = nullptr;
        return;
    }
    const std::string_view kind = TeskObjectKindName(holder->GetType());
    if (kind.empty())
        throw ZoException(ZoFormat("An object of kind %d cannot be written", holder->GetType()));
    slot = TeskJson{{"kind", kind}};
    targets_.push_back(&slot);
    holder->VisitFields(*this);
    targets_.pop_back();
}

void TeskJsonFieldWriter::Group(std::string_view name, const std::function<void()>& visitMembers) {
    TeskJson& slot = Slot(name);
    slot = TeskJson::object();
    targets_.push_back(&slot);
    visitMembers();
    targets_.pop_back();
}

void TeskJsonFieldWriter::List(std::string_view name, size_t size,
                               const std::function<void(size_t)>& /*resize*/,
                               const std::function<void(size_t index)>& visitElement) {
    TeskJson& slot = Slot(name);
    slot = TeskJson::array();
    for (size_t index = 0; index < size; ++index) {
        TeskJson element = TeskJson::object();
        targets_.push_back(&element);
        visitElement(index);
        targets_.pop_back();
        // Lists of one value per element (stop colours, positions) read
        // better as plain arrays.
        if (element.size() == 1 && element.begin().value().is_primitive() &&
            !element.begin().value().is_null())
            element = TeskJson(element.begin().value());
        slot.push_back(std::move(element));
    }
}
