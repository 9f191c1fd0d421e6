#include "document/object_kinds.h"

#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"
#include "objects/text_object.h"

namespace {

struct KindEntry {
    int32_t kind;
    std::string_view name;
    ZoAutoPtr<TeskObject> (*make)();
};

template <typename T>
ZoAutoPtr<TeskObject> Make() {
    return std::make_unique<T>();
}

constexpr KindEntry kKinds[] = {
    {kTeskImageObject, "Image", &Make<TeskImageObject>},
    {kTeskGraduatedObject, "Graduated Colour", &Make<TeskGraduatedObject>},
    {kTeskTextObject, "Text", &Make<TeskTextObject>},
    {kTeskSolidObject, "Solid Colour", &Make<TeskSolidObject>},
};

}  // namespace

std::string_view TeskObjectKindName(int32_t kind) noexcept {
    for (const auto& entry : kKinds) {
        if (entry.kind == kind)
            return entry.name;
    }
    return {};
}

ZoAutoPtr<TeskObject> TeskMakeObjectOfKind(std::string_view name) {
    for (const auto& entry : kKinds) {
        if (entry.name == name)
            return entry.make();
    }
    return nullptr;
}
