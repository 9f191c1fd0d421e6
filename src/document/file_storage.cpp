#include "document/file_storage.h"

#include <sys/stat.h>

#include <filesystem>
#include <iostream>

#include "media/image_path.h"
#include "media/resource_manager.h"
#include "objects/image_object.h"
#include "objects/object.h"
#include "platform/compiled_file.h"
#include "platform/zo_exception.h"

const ZoGuid kTeskProjectFileGuid = *ZoGuid::Parse("{BF954E1B-8A79-4008-BD31-F81D15884DC2}");

namespace {

constexpr uint32_t kIdentifierFolder = 1;
constexpr uint32_t kSettingsFolder = 2;
constexpr uint32_t kEffectsFolder = 3;

static_assert(kTeskProjectTypeTag == ZoFourCC("TSK1"));

class DefaultPrompter final : public TeskFilePrompter {
  public:
    bool AskYesNo(std::string_view text) override {
        std::cerr << text << "\n";
        return false;
    }
    void ShowMessage(std::string_view text) override { std::cerr << text << "\n"; }
};

TeskFilePrompter* gPrompter = nullptr;

// Strings that cannot be read take the default given at their field.
ZoString ReadString(ZoFolderFile& file, const char* defaultText) {
    ZoString text;
    try {
        file.ReadString(text);
    } catch (const ZoFileNonFatalException&) {
        return defaultText;
    }
    return text;
}

void WritePublishSettings(ZoFolderFile& file, const TeskPublishSettings& settings) {
    ZoFolderGuard folder(file, true);
    file.WriteString(settings.GetLocation());
    file.WriteInt32(settings.reserved);
    file.WriteBool(settings.embedHTML);
    file.WriteBool(settings.reservedFlag);
    file.WriteBool(settings.testImmediately);
    file.WriteBool(settings.offsetForMovieClip);
}

// Fields after the location are left to the caller's fallback when short.
void ReadPublishSettings(ZoFolderFile& file, TeskPublishSettings& settings) {
    ZoFolderGuard folder(file, false, false);
    settings.SetLocation(ReadString(file, ""));
    settings.reserved = file.ReadInt32();
    settings.embedHTML = file.ReadBool();
    settings.reservedFlag = file.ReadBool();
    settings.testImmediately = file.ReadBool();
    settings.offsetForMovieClip = file.ReadBool();
}

void WriteState(ZoFolderFile& file, const TeskFile::RealState& state) {
    ZoFolderGuard folder(file, kSettingsFolder, true);
    file.WriteInt32(state.width);
    file.WriteInt32(state.height);
    file.WriteInt32(state.frameRate);
    file.WriteUInt32(state.backgroundColour);
    WritePublishSettings(file, state.publishSettings);
    file.WriteInt32(state.resizeMode);
    file.WriteBool(state.disableRightClick);
    file.WriteBool(state.clipToMovieSize);
    WriteObject(file, state.foregroundObject.get());
    WriteObject(file, state.backgroundObject.get());
    file.WriteBool(state.linkEnabled);
    file.WriteString(state.linkURL);
    file.WriteString(state.linkTarget);
}

// What a settings record that stops early gives; the objects and publish
// settings keep whatever was read of them.
void ApplyLoadDefaults(TeskFile::RealState& state) {
    state.width = 400;
    state.height = 300;
    state.frameRate = 12;
    state.backgroundColour = 0x000000;
    state.resizeMode = kTeskFixedSize;
    state.disableRightClick = true;
    state.clipToMovieSize = false;
    state.linkEnabled = false;
    state.linkURL = TeskFile::kDefaultLinkURL;
    state.linkTarget = "_blank";
}

void ReadStateFields(ZoFolderFile& file, TeskFile::RealState& state) {
    try {
        state.width = file.ReadInt32();
        state.height = file.ReadInt32();
        state.frameRate = file.ReadInt32();
        state.backgroundColour = file.ReadUInt32();
        ReadPublishSettings(file, state.publishSettings);
        state.resizeMode = file.ReadInt32();
        state.disableRightClick = file.ReadBool();
        state.clipToMovieSize = file.ReadBool();
        ReadObject(file, state.foregroundObject);
        ReadObject(file, state.backgroundObject);
    } catch (const ZoFileNonFatalException&) {
        ApplyLoadDefaults(state);
    }
    // Older files end before the link fields; they load with the link off.
    try {
        state.linkEnabled = file.ReadBool();
    } catch (const ZoFileNonFatalException&) {
        state.linkEnabled = false;
    }
    state.linkURL = ReadString(file, TeskFile::kDefaultLinkURL);
    state.linkTarget = ReadString(file, "_blank");
}

ZoAutoPtr<TeskFile::RealState> ReadState(ZoFolderFile& file) {
    auto state = std::make_unique<TeskFile::RealState>();
    try {
        ZoFolderGuard folder(file, kSettingsFolder, false);
        ReadStateFields(file, *state);
    } catch (const ZoFileNonFatalException&) {
        ApplyLoadDefaults(*state);
    }
    state->publishSettings.SetConfirmOverwrite(true);
    return state;
}

void WriteEffects(ZoFolderFile& file, const TeskFile& document) {
    ZoFolderGuard folder(file, kEffectsFolder, true);
    file.WriteInt32(document.GetEffectCount());
    for (int i = 0; i < document.GetEffectCount(); ++i) {
        const TeskEffect& effect = *document.GetEffect(i);
        ZoFolderGuard effectFolder(file, true);
        file.WriteGuid(effect.GetInfo().guid);
        effect.Write(file);
    }
}

ZoAutoPtr<TeskEffect> ReadEffect(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false);
    const ZoGuid guid = file.ReadGuid();
    ZoAutoPtr<TeskEffect> effect;
    TeskEffect::Create(guid, effect);
    if (!effect) {
        throw ZoException(
            ZoFormat("The file uses an effect this version of Vimbo does not know (%s)",
                     guid.ToString().c_str()));
    }
    effect->Read(file);
    return effect;
}

std::vector<ZoAutoPtr<TeskEffect>> ReadEffects(ZoFolderFile& file) {
    std::vector<ZoAutoPtr<TeskEffect>> effects;
    // Effects read their own records tolerantly, so anything short or
    // missing that gets here is the list itself being damaged.
    try {
        ZoFolderGuard folder(file, kEffectsFolder, false);
        const int32_t count = file.ReadInt32();
        if (count < 0)
            throw ZoException("The effect list is damaged (negative count)");
        for (int32_t i = 0; i < count; ++i)
            effects.push_back(ReadEffect(file));
    } catch (const ZoFileNonFatalException& error) {
        throw ZoException(ZoFormat("The effect list is damaged (%s)", error.what()));
    }
    return effects;
}

// A read-only target is only written over once the user agrees.
bool MayOverwrite(const char* path) {
    struct stat status {};
    if (::stat(path, &status) != 0 || (status.st_mode & S_IWUSR) != 0)
        return true;
    TeskFilePrompter& prompter = TeskGetFilePrompter();
    if (!prompter.AskYesNo(ZoFormat(
            "The file %s is write-protected.\n\nDo you want to unprotect the file and save "
            "it?\n\nIf \"\"no\"\" you should save your project under another name\n(use the "
            "\"\"Save As...\"\" option on the file menu",
            path))) {
        return false;
    }
    if (::chmod(path, status.st_mode | S_IWUSR) != 0) {
        prompter.ShowMessage(
            "Could not remove write-protect - is the file on a read only media (e.g. "
            "CD-ROM)?\nUse the \"\"Save As...\"\" option on the File menu to save your project "
            "under a different name.");
    }
    return true;
}

// Absolute, so that picture names resolve whatever the working folder is.
ZoString FolderOf(const ZoString& path) {
    std::error_code error;
    return std::filesystem::absolute(path, error).parent_path().string();
}

}  // namespace

void TeskSetFilePrompter(TeskFilePrompter* prompter) noexcept {
    gPrompter = prompter;
}

TeskFilePrompter& TeskGetFilePrompter() noexcept {
    static DefaultPrompter fallback;
    return gPrompter ? *gPrompter : fallback;
}

void TeskWriteDocument(const TeskFile& document, ZoFolderFile& file) {
    {
        ZoFolderGuard folder(file, kIdentifierFolder, true);
        file.WriteGuid(kTeskProjectFileGuid);
    }
    WriteState(file, document.GetState());
    WriteEffects(file, document);
}

TeskLoadedDocument TeskReadDocument(ZoFolderFile& file) {
    {
        // Read, never compared: older tools wrote other identifiers here.
        ZoFolderGuard folder(file, kIdentifierFolder, false);
        file.ReadGuid();
    }
    TeskLoadedDocument loaded;
    loaded.state = ReadState(file);
    loaded.effects = ReadEffects(file);
    return loaded;
}

void TeskAdoptDocument(TeskFile& document, TeskLoadedDocument loaded, const ZoString& path) {
    const auto observers = document.DetachObservers();
    while (document.GetEffectCount() > 0) {
        ZoAutoPtr<TeskEffect> old;
        document.TakeEffect(old, document.GetEffectCount() - 1);
    }
    ZoAutoPtr<TeskFile::State> state = std::move(loaded.state);
    document.SwapState(state);
    for (auto& effect : loaded.effects)
        document.InsertEffect(effect, document.GetEffectCount(), nullptr);
    document.SetFilename(path.c_str());
    document.GetSelection().Clear();
    document.ValidateSelection();
    document.GetUndoList().Clear();
    document.AttachObservers(observers);
}

std::string TeskDocumentToBytes(const TeskFile& document) {
    ZoCompiledFile file(kTeskProjectTypeTag, kTeskProjectVersion);
    file.Open(true, true);
    TeskWriteDocument(document, file);
    return file.ToBytes();
}

void TeskLoadDocumentFromBytes(TeskFile& document, std::string_view bytes, const ZoString& path) {
    auto file = ZoCompiledFile::FromBytes(bytes, kTeskProjectTypeTag);
    TeskAdoptDocument(document, TeskReadDocument(file), path);
}

bool TeskFile::Save(const char* path) {
    if (!MayOverwrite(path))
        return false;
    ZoCompiledFile file(path, kTeskProjectTypeTag, kTeskProjectVersion);
    if (!file.Open(true, true))
        return false;
    SetFilename(path);
    TeskSetProjectFolder(FolderOf(path));
    try {
        TeskWriteDocument(*this, file);
        file.Close();
    } catch (const ZoException&) {
        return false;
    }
    GetUndoList().MarkSaved();
    return true;
}

bool TeskFile::Load(const char* path) {
    ZoCompiledFile file(path, kTeskProjectTypeTag, kTeskProjectVersion);
    if (!file.Open(false, false))
        return false;
    // Image names inside the file are relative to its folder.
    const ZoString previousFolder = TeskGetProjectFolder();
    TeskSetProjectFolder(FolderOf(path));
    try {
        TeskAdoptDocument(*this, TeskReadDocument(file), path);
    } catch (...) {
        TeskSetProjectFolder(previousFolder);
        throw;
    }
    return true;
}

namespace {

/// Where an image object sits, as the messages about its picture word it.
struct ImageSlot {
    const char* subject;
    const char* remedy;
};

constexpr ImageSlot kEffectSlot{"used by the effect",
                                "Click on the Change button to open the object dialog and then "
                                "click Browse to locate the file, or a replacement."};
constexpr ImageSlot kForegroundSlot{"used for the foreground object",
                                    "Select Foreground Object from the Edit menu and then click "
                                    "Browse to locate the file, or a replacement."};
constexpr ImageSlot kBackgroundSlot{"used for the background object",
                                    "Select Background Object from the Edit menu and then click "
                                    "Browse to locate the file, or a replacement."};

void CheckImageFile(const TeskObject* object, const ImageSlot& slot,
                    ZoEditor::ZoMessageSink& sink) {
    const auto* image = dynamic_cast<const TeskImageObject*>(object);
    if (!image)
        return;
    const ZoString& name = image->GetFileName().GetName();
    if (name.empty() || TeskIsBuiltInImageName(name))
        return;
    std::error_code error;
    if (!std::filesystem::exists(image->GetFullPath(), error)) {
        sink.ShowMessage(ZoFormat("Image file '%s' %s cannot be found.\n%s", name.c_str(),
                                  slot.subject, slot.remedy));
        return;
    }
    // A file that is there but damaged, unreadable or too large would
    // otherwise vanish from the movie without a word.
    const auto resource = TeskGetResourceManager().GetImageResource(image->GetFileName());
    if (resource->GetImage())
        return;
    sink.ShowMessage(ZoFormat("Image file '%s' %s cannot be read: %s\n%s", name.c_str(),
                              slot.subject, resource->GetLoadError().c_str(), slot.remedy));
}

}  // namespace

void TeskCheckImageFiles(const TeskFile& document, ZoEditor::ZoMessageSink& sink) {
    if (document.GetEffectCount() > 0) {
        const TeskEffect& effect = *document.GetEffect(0);
        for (int i = 0; i < effect.GetObjectCount(); ++i)
            CheckImageFile(effect.GetObject(i), kEffectSlot, sink);
    }
    CheckImageFile(document.GetForegroundObject(), kForegroundSlot, sink);
    CheckImageFile(document.GetBackgroundObject(), kBackgroundSlot, sink);
}

bool TeskOpenProject(TeskFile& document, const ZoString& path, TeskFilePrompter& prompter) {
    bool loaded = false;
    try {
        loaded = document.Load(path.c_str());
    } catch (const std::exception&) {
        loaded = false;
    }
    if (!loaded) {
        std::error_code error;
        prompter.ShowMessage(ZoFormat(std::filesystem::exists(path, error)
                                          ? "An error occurred opening the file '%s'"
                                          : "The file '%s' does not exist",
                                      path.c_str()));
        return false;
    }
    TeskCheckImageFiles(document, prompter);
    return true;
}

bool TeskSaveProject(TeskFile& document, const ZoString& path, TeskFilePrompter& prompter) {
    TeskFilePrompter* previous = gPrompter;
    gPrompter = &prompter;
    const bool saved = document.Save(path.c_str());
    gPrompter = previous;
    if (!saved)
        prompter.ShowMessage(ZoFormat("An error occurred saving the file '%s'", path.c_str()));
    return saved;
}
