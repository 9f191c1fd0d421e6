#pragma once
// Picture names as image objects store them: built-in names ("<...>") as they
// are, files inside the project folder relative to it, other files absolute.
#include <string_view>

#include "platform/zo_string.h"

/// Names beginning with "<" are pictures compiled into the program.
bool TeskIsBuiltInImageName(std::string_view name) noexcept;

/// The name to store for `path`: the remainder after `projectFolder` when the
/// path lies inside it (compared without regard to ASCII case), else `path`.
ZoString TeskRelativeImagePath(const ZoString& path, const ZoString& projectFolder);

/// The path to load for a stored `name`: empty, built-in and absolute names
/// unchanged, others appended to `projectFolder`.
ZoString TeskFullImagePath(const ZoString& name, const ZoString& projectFolder);

/// The folder of the open project file ("" while it has never been saved).
/// Process-wide, because the editor and preview threads both resolve names.
void TeskSetProjectFolder(const ZoString& folder);
ZoString TeskGetProjectFolder();
