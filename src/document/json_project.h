#pragma once
// Projects as JSON: the movie settings by their field names, then
// "effects": [ { "effect": "<display name>", state fields... } ].
#include <string_view>

#include "document/file_storage.h"

/// The document as JSON text: keys in record order, 2-space indent, a
/// trailing newline. Equal documents give equal text.
ZoString TeskDocumentToJson(const TeskFile& document);

/// Reads a JSON project into fresh settings and effects (adopt them with
/// TeskAdoptDocument). Fields left out keep the defaults of a new document
/// and of each effect; a missing "effects" list gives the new document's one
/// wave effect. Throws ZoException naming the offending key.
TeskLoadedDocument TeskDocumentFromJson(std::string_view text);

/// Loads a project for the command line: JSON when the name ends in ".json",
/// a project file otherwise. Throws ZoException with one line naming the
/// file and the reason; the document is unchanged then. Missing or damaged
/// pictures are reported through the file prompter (stderr by default).
void TeskLoadProjectFile(TeskFile& document, const ZoString& path);
