#include "document/json_field_reader.h"

#include <limits>

#include "document/object_kinds.h"
#include "objects/object.h"
#include "platform/zo_exception.h"

namespace {

std::string Joined(const std::string& path, std::string_view name) {
    return path.empty() ? std::string(name) : path + "." + std::string(name);
}

}  // namespace

TeskJsonFieldReader::TeskJsonFieldReader(const TeskJson& source, std::string path) {
    if (!source.is_object()) {
        throw ZoException(path.empty() ? ZoString("A JSON project must be an object")
                                       : ZoFormat("Key '%s' must be an object", path.c_str()));
    }
    scopes_.push_back(Scope{&source, std::move(path), {}});
}

void TeskJsonFieldReader::Consume(std::string_view key) {
    scopes_.back().used.emplace(key);
}

void TeskJsonFieldReader::CheckAllKeysUsed() const {
    const Scope& scope = scopes_.back();
    for (const auto& [key, value] : scope.node->items()) {
        if (!scope.used.contains(key))
            throw ZoException(ZoFormat("Unknown key '%s'", Joined(scope.path, key).c_str()));
    }
}

std::string TeskJsonFieldReader::PathOf(std::string_view name) const {
    const Scope& scope = scopes_.back();
    return scope.bare ? scope.path : Joined(scope.path, name);
}

const TeskJson* TeskJsonFieldReader::Find(std::string_view name) {
    Scope& scope = scopes_.back();
    if (scope.bare) {
        if (!scope.used.empty())
            throw ZoException(ZoFormat("Key '%s' must be an object", scope.path.c_str()));
        scope.used.emplace(name);
        return scope.node;
    }
    const auto found = scope.node->find(name);
    if (found == scope.node->end())
        return nullptr;
    scope.used.emplace(name);
    return &found.value();
}

void TeskJsonFieldReader::Enter(const TeskJson& node, std::string path) {
    scopes_.push_back(Scope{&node, std::move(path), {}});
    scopes_.back().bare = !node.is_object();
}

void TeskJsonFieldReader::LeaveChecked() {
    if (!scopes_.back().bare)
        CheckAllKeysUsed();
    scopes_.pop_back();
}

void TeskJsonFieldReader::WrongType(std::string_view name, const char* expected) const {
    throw ZoException(ZoFormat("Key '%s' must be %s", PathOf(name).c_str(), expected));
}

int64_t TeskJsonFieldReader::Integer(std::string_view name, const TeskJson& value, int64_t low,
                                     int64_t high) const {
    if (!value.is_number_integer())
        WrongType(name, "an integer");
    // Unsigned values above the signed range are out of range for every field.
    if (value.is_number_unsigned() &&
        value.get<uint64_t>() > static_cast<uint64_t>(std::numeric_limits<int64_t>::max()))
        WrongType(name, "an integer in range");
    const int64_t number = value.get<int64_t>();
    if (number < low || number > high) {
        throw ZoException(ZoFormat("Key '%s' is out of range (%lld to %lld)", PathOf(name).c_str(),
                                   static_cast<long long>(low), static_cast<long long>(high)));
    }
    return number;
}

void TeskJsonFieldReader::Field(std::string_view name, int32_t& value) {
    if (const TeskJson* found = Find(name)) {
        value = static_cast<int32_t>(Integer(name, *found, std::numeric_limits<int32_t>::min(),
                                             std::numeric_limits<int32_t>::max()));
    }
}

void TeskJsonFieldReader::Field(std::string_view name, uint32_t& value) {
    if (const TeskJson* found = Find(name))
        value =
            static_cast<uint32_t>(Integer(name, *found, 0, std::numeric_limits<uint32_t>::max()));
}

void TeskJsonFieldReader::Colour(std::string_view name, COLORREF& value) {
    const TeskJson* found = Find(name);
    if (!found)
        return;
    if (found->is_number_integer()) {
        value =
            static_cast<COLORREF>(Integer(name, *found, 0, std::numeric_limits<uint32_t>::max()));
        return;
    }
    const std::string text = found->is_string() ? found->get<std::string>() : std::string();
    const bool hex = text.size() == 7 && text[0] == '#' &&
                     text.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
    if (!hex)
        WrongType(name, "a colour such as \"#ff8000\"");
    const unsigned long rgb = std::stoul(text.substr(1), nullptr, 16);
    value = ((rgb >> 16) & 0xFF) | (rgb & 0xFF00) | ((rgb & 0xFF) << 16);
}

void TeskJsonFieldReader::Field(std::string_view name, bool& value) {
    if (const TeskJson* found = Find(name)) {
        if (!found->is_boolean())
            WrongType(name, "true or false");
        value = found->get<bool>();
    }
}

void TeskJsonFieldReader::Field(std::string_view name, double& value) {
    if (const TeskJson* found = Find(name)) {
        if (!found->is_number())
            WrongType(name, "a number");
        value = found->get<double>();
    }
}

void TeskJsonFieldReader::Field(std::string_view name, ZoString& value) {
    if (const TeskJson* found = Find(name)) {
        if (!found->is_string())
            WrongType(name, "a string");
        value = found->get<std::string>();
    }
}

void TeskJsonFieldReader::Field(std::string_view name, ZoRect& value) {
    const TeskJson* found = Find(name);
    if (!found)
        return;
    if (!found->is_object())
        WrongType(name, "an object with left, top, right and bottom");
    Enter(*found, PathOf(name));
    Field("left", value.left);
    Field("top", value.top);
    Field("right", value.right);
    Field("bottom", value.bottom);
    LeaveChecked();
}

void TeskJsonFieldReader::Object(std::string_view name, ZoAutoPtr<TeskObject>& holder) {
    const TeskJson* found = Find(name);
    if (!found)
        return;
    if (found->is_null()) {
        holder.reset();
        return;
    }
    const std::string path = PathOf(name);
    if (!found->is_object())
        WrongType(name, "an object or null");
    const auto kind = found->find("kind");
    if (kind == found->end() || !kind->is_string())
        throw ZoException(ZoFormat("Key '%s.kind' must name the kind of object", path.c_str()));
    // An object of the slot's own kind keeps the slot's defaults for the
    // fields the JSON leaves out; another kind starts from its own defaults.
    const std::string kindName = kind->get<std::string>();
    if (!holder || TeskObjectKindName(holder->GetType()) != kindName) {
        auto made = TeskMakeObjectOfKind(kindName);
        if (!made) {
            throw ZoException(ZoFormat("Key '%s.kind' names no kind of object: '%s'", path.c_str(),
                                       kindName.c_str()));
        }
        holder = std::move(made);
    }
    Enter(*found, path);
    Consume("kind");
    holder->VisitFields(*this);
    LeaveChecked();
}

void TeskJsonFieldReader::Group(std::string_view name, const std::function<void()>& visitMembers) {
    const TeskJson* found = Find(name);
    if (!found)
        return;
    if (!found->is_object())
        WrongType(name, "an object");
    Enter(*found, PathOf(name));
    visitMembers();
    LeaveChecked();
}

void TeskJsonFieldReader::List(std::string_view name, size_t /*size*/,
                               const std::function<void(size_t)>& resize,
                               const std::function<void(size_t index)>& visitElement) {
    const TeskJson* found = Find(name);
    if (!found)
        return;
    if (!found->is_array())
        WrongType(name, "an array");
    const std::string path = PathOf(name);
    resize(found->size());
    for (size_t index = 0; index < found->size(); ++index) {
        Enter((*found)[index], path + "[" + std::to_string(index) + "]");
        visitElement(index);
        LeaveChecked();
    }
}
