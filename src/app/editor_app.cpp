#include "app/editor_app.h"

#include <QSettings>
#include <QStandardPaths>
#include <QSysInfo>
#include <algorithm>

#include "app/app_settings.h"
#include "app/publish_dialog.h"
#include "app/support_mail.h"
#include "app/user_prompts.h"
#include "document/json_project.h"
#include "effects/register_effects.h"
#include "media/resource_manager.h"
#include "platform/temp_directory.h"
#include "platform/zo_exception.h"
#include "platform/zo_guid.h"
#include "publish/publisher.h"

namespace {

constexpr const char* kProjectFilter = "Vimbo Files (*.vmb);;All Files (*)";

/// Publishing's questions, answered by the editor's boxes.
class PromptsPublishUi final : public TeskPublishUi {
  public:
    explicit PromptsPublishUi(TeskUserPrompts& prompts) : prompts_(prompts) {}

    OverwriteAnswer AskOverwrite(const ZoString& question,
                                 const std::vector<std::filesystem::path>&) override {
        OverwriteAnswer answer;
        answer.overwrite = prompts_.AskOverwrite(question, answer.doNotAskAgain);
        return answer;
    }
    void ShowMessage(const ZoString& message) override { prompts_.ShowMessage(message); }
    void MovieNotWritten(const ZoString& reason) override { prompts_.ShowMessage(reason); }
    bool Open(const std::filesystem::path& path) override {
        return prompts_.OpenWithDesktop(path.string());
    }

  private:
    TeskUserPrompts& prompts_;
};

bool IsSampleName(const std::filesystem::path& path) {
    const ZoString extension = ZoToLowerAscii(path.extension().string());
    return extension == ".vmb" || extension == ".json";
}

std::filesystem::path DocumentsFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
}

// The effect types must be known before the first document is made.
TeskInstallFolders RegisterEffectsFirst(TeskInstallFolders folders) {
    TeskRegisterEffects();
    return folders;
}

}  // namespace

TeskEditorApp::TeskEditorApp(QSettings& settings, TeskUserPrompts& prompts,
                             TeskInstallFolders folders)
    : settings_(settings),
      prompts_(prompts),
      folders_(RegisterEffectsFirst(std::move(folders))),
      help_(folders_.help, prompts),
      recentFiles_(settings) {
    TeskSetFilePrompter(&prompts_);
    recentFiles_.Load();
    // The windows that show pictures hear of changed files through the
    // resource manager, which only looks when asked.
    QObject::connect(&idle_, &QTimer::timeout,
                     [] { TeskGetResourceManager().CheckNextResource(); });
    idle_.start(kIdleMilliseconds);
}

TeskEditorApp::~TeskEditorApp() {
    TeskSetFilePrompter(nullptr);
}

bool TeskEditorApp::SaveModified() {
    if (!document_.IsModified())
        return true;
    switch (prompts_.AskYesNoCancel("Do you want to save your changes?")) {
        case TeskUserPrompts::Answer::kYes:
            return OnFileSave();
        case TeskUserPrompts::Answer::kNo:
            return true;
        case TeskUserPrompts::Answer::kCancel:
            break;
    }
    return false;
}

void TeskEditorApp::OnFileNew() {
    if (SaveModified())
        document_.New();
}

void TeskEditorApp::OnFileOpen() {
    if (!SaveModified())
        return;
    const std::optional<std::filesystem::path> path =
        prompts_.AskOpenPath(TeskReadDialogFolder(settings_, kTeskOpenFolderValue));
    if (!path)
        return;
    Open(path->string());
    TeskWriteDialogFolder(settings_, kTeskOpenFolderValue, path->parent_path());
}

bool TeskEditorApp::Open(const ZoString& path) {
    if (!TeskOpenProject(document_, path, prompts_))
        return false;
    recentFiles_.Add(path);
    return true;
}

bool TeskEditorApp::OnFileSave() {
    const ZoString path = document_.GetFilename();
    if (path.empty())
        return OnFileSaveAs();
    if (!TeskSaveProject(document_, path, prompts_))
        return false;
    recentFiles_.Add(path);
    return true;
}

bool TeskEditorApp::OnFileSaveAs() {
    const std::filesystem::path current(document_.GetFilename());
    const std::filesystem::path initial =
        current.empty() ? TeskReadDialogFolder(settings_, kTeskSaveAsFolderValue) / "Untitled.vmb"
                        : current;
    const std::optional<std::filesystem::path> path =
        prompts_.AskSavePath(initial, kProjectFilter, "vmb");
    if (!path || path->empty())
        return false;
    TeskWriteDialogFolder(settings_, kTeskSaveAsFolderValue, path->parent_path());
    document_.SetFilename(path->string().c_str());
    return OnFileSave();
}

void TeskEditorApp::OnOpenRecentFile(int index) {
    const std::vector<ZoString>& entries = recentFiles_.GetEntries();
    if (index < 0 || static_cast<size_t>(index) >= entries.size() || !SaveModified())
        return;
    // Opening reorders the list, so the path is copied first.
    const ZoString path = entries[static_cast<size_t>(index)];
    Open(path);
}

void TeskEditorApp::OnPublish() {
    TeskPublishDialog dialog(document_, prompts_, help_, DocumentsFolder());
    if (!prompts_.RunDialog(dialog))
        return;
    dialog.Store(document_);
    Publish();
}

void TeskEditorApp::OnQuickPublish() {
    if (document_.GetPublishSettings().GetLocation().empty())
        OnPublish();
    else
        Publish();
}

bool TeskEditorApp::Publish() {
    PromptsPublishUi ui(prompts_);
    return TeskPublisher(document_, ui, ZoProcessTempDirectory()).Publish();
}

std::vector<std::filesystem::path> TeskEditorApp::GetSamples() const {
    std::vector<std::filesystem::path> samples;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folders_.samples, error)) {
        if (entry.is_regular_file(error) && IsSampleName(entry.path()))
            samples.push_back(entry.path());
    }
    std::sort(samples.begin(), samples.end());
    return samples;
}

bool TeskEditorApp::OpenSample(const std::filesystem::path& path) {
    if (!SaveModified())
        return false;
    try {
        TeskLoadProjectFile(document_, path.string());
    } catch (const ZoException&) {
        prompts_.ShowMessage(
            ZoFormat("An error occurred opening the file '%s'", path.string().c_str()));
        return false;
    }
    // A sample is a starting point: saving asks where, never over the sample.
    document_.SetFilename("");
    return true;
}

void TeskEditorApp::OnContactSupport() {
    const ZoString info = TeskSystemInfoBlock(QSysInfo::prettyProductName().toStdString());
    if (!prompts_.OpenWithDesktop(TeskSupportMailUrl(ZoGuid::NewRandom().data1, info)))
        prompts_.ShowMessage("There was an error submitting the e-mail to Kestrane.");
}
