#pragma once
// Objects by their display names ("Solid Colour", "Image", ...), the form
// JSON projects name them in.
#include <string_view>

#include "objects/object.h"

/// The display name of a kind code; empty for codes that name no object.
std::string_view TeskObjectKindName(int32_t kind) noexcept;

/// A new default object of the kind named `name`; null when no kind has
/// that name.
ZoAutoPtr<TeskObject> TeskMakeObjectOfKind(std::string_view name);
