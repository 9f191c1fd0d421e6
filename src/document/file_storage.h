#pragma once
// Saving and loading the document as a project file: folder 1 the file-type
// GUID, folder 2 the movie settings with the two movie-wide objects, folder 3
// the effect list, each effect identified by its type's GUID.
#include <string>
#include <string_view>
#include <vector>

#include "document/file.h"
#include "editor/message_sink.h"
#include "objects/object.h"
#include "platform/zo_guid.h"

class ZoFolderFile;

/// The container's type tag and version for project files.
inline constexpr uint32_t kTeskProjectTypeTag = 0x314B5354;  // 'T','S','K','1'
inline constexpr uint32_t kTeskProjectVersion = 0x01000000;
/// Folder 1 holds this GUID. Loading reads it without comparing.
extern const ZoGuid kTeskProjectFileGuid;

/// Questions and messages of saving and opening. The editor answers with
/// dialogs; the command line with a fixed answer and lines on stderr.
class TeskFilePrompter : public ZoEditor::ZoMessageSink {
  public:
    /// A Yes/No question whose default is No; true only for Yes.
    virtual bool AskYesNo(std::string_view text) = 0;
};

/// The prompter TeskFile::Save and CheckImageFiles use. Without one set,
/// questions are answered No and messages go to stderr.
void TeskSetFilePrompter(TeskFilePrompter* prompter) noexcept;
TeskFilePrompter& TeskGetFilePrompter() noexcept;

/// Everything a project file holds, read into fresh objects so that a
/// failed load leaves the open document as it was.
struct TeskLoadedDocument {
    ZoAutoPtr<TeskFile::RealState> state;
    std::vector<ZoAutoPtr<TeskEffect>> effects;
};

/// Writes folders 1 to 3 into `file`, open for writing.
void TeskWriteDocument(const TeskFile& document, ZoFolderFile& file);
/// Reads folders 1 to 3. Settings that cannot be read take the load
/// defaults; an unregistered effect GUID or a damaged effect list throws
/// ZoException.
TeskLoadedDocument TeskReadDocument(ZoFolderFile& file);
/// Replaces the document's settings and effects by `loaded`, as a freshly
/// opened document: observers detached meanwhile, effect 0 selected, history
/// cleared, file name `path`.
void TeskAdoptDocument(TeskFile& document, TeskLoadedDocument loaded, const ZoString& path);

/// The bytes of a project file of `document`.
std::string TeskDocumentToBytes(const TeskFile& document);
/// Loads project-file bytes into `document` (unchanged when this throws).
void TeskLoadDocumentFromBytes(TeskFile& document, std::string_view bytes, const ZoString& path);

/// After a successful open: one message through `sink` per image object
/// (of effect 0, then the foreground and background objects) whose picture
/// file is missing.
void TeskCheckImageFiles(const TeskFile& document, ZoEditor::ZoMessageSink& sink);

/// The Open command around Load: on failure shows "The file '%s' does not
/// exist" or "An error occurred opening the file '%s'", on success checks
/// the image files. The document is unchanged when it fails.
bool TeskOpenProject(TeskFile& document, const ZoString& path, TeskFilePrompter& prompter);
/// The Save command around Save: "An error occurred saving the file '%s'".
bool TeskSaveProject(TeskFile& document, const ZoString& path, TeskFilePrompter& prompter);
