#include "app/screenshots.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPixmap>
#include <algorithm>

#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/object_dialog.h"
#include "app/object_preview.h"
#include "app/preview_pane.h"
#include "document/json_project.h"
#include "document/object_kinds.h"
#include "effects/register_effects.h"
#include "platform/zo_exception.h"

namespace {

constexpr int kPreviewTimeoutMs = 60000;
// Wide enough for the text page's tool bars, and fixed: a placement the
// dialog remembers must not change the pictures.
constexpr QSize kObjectDialogSize(680, 420);

// The dialog's buttons, in their order; no object comes last.
constexpr int32_t kObjectKinds[] = {kTeskImageObject, kTeskGraduatedObject, kTeskTextObject,
                                    kTeskSolidObject};

/// "Rotate 3D" with `prefix` "effect-" becomes "effect-rotate-3d.png".
std::filesystem::path PictureName(std::string_view prefix, std::string_view displayName) {
    ZoString name(prefix);
    for (const char c : ZoToLowerAscii(displayName))
        name += c == ' ' ? '-' : c;
    return name + ".png";
}

/// The first object of `kind` in `document`: the foreground, the
/// background, then each effect's objects in turn.
const TeskObject* FirstObjectOfKind(const TeskFile& document, int32_t kind) {
    std::vector<const TeskObject*> objects = {document.GetForegroundObject(),
                                              document.GetBackgroundObject()};
    for (int e = 0; e < document.GetEffectCount(); ++e) {
        const TeskEffect& effect = *document.GetEffect(e);
        for (int i = 0; i < effect.GetObjectCount(); ++i)
            objects.push_back(effect.GetObject(i));
    }
    for (const TeskObject* object : objects)
        if (object && object->GetType() == kind)
            return object;
    return nullptr;
}

/// Lets pending drawing happen and takes the focus away: a focused field
/// would show its text cursor in whatever phase of blinking the moment
/// catches.
void Settle() {
    if (QWidget* focused = QApplication::focusWidget())
        focused->clearFocus();
    QApplication::processEvents();
}

void SavePicture(QWidget& widget, const std::filesystem::path& path) {
    if (!widget.grab().toImage().save(QString::fromStdString(path.string()), "PNG"))
        throw ZoException("cannot write " + path.string());
}

int EffectTypeOf(const std::filesystem::path& project) {
    TeskFile document;
    TeskLoadProjectFile(document, project.string());
    const ZoGuid& guid = document.GetEffect(0)->GetInfo().guid;
    for (int i = 0; i < TeskEffect::GetCount(); ++i) {
        if (TeskEffect::GetInfo(i).guid == guid)
            return i;
    }
    return -1;
}

std::vector<std::filesystem::path> SortedProjects(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> projects;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        const auto& path = entry.path();
        if (entry.is_regular_file(error) &&
            (path.extension() == ".json" || path.extension() == ".vmb"))
            projects.push_back(path);
    }
    std::sort(projects.begin(), projects.end());
    return projects;
}

void WaitForPreview(const TeskPreviewPane& pane, const std::filesystem::path& project) {
    QElapsedTimer clock;
    clock.start();
    while (!(pane.HasMovie() && pane.IsUpToDate())) {
        if (clock.elapsed() > kPreviewTimeoutMs)
            throw ZoException("no preview of " + project.string() + " within a minute");
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
}

}  // namespace

std::vector<TeskScreenshotShot> TeskPlanScreenshots(const std::filesystem::path& examplesFolder) {
    TeskRegisterEffects();  // the examples name their effects by type
    std::vector<TeskScreenshotShot> shots = {{{}, "main-window.png"}};
    std::vector<bool> taken(static_cast<size_t>(TeskEffect::GetCount()), false);
    for (const std::filesystem::path& project : SortedProjects(examplesFolder)) {
        int type = -1;
        try {
            type = EffectTypeOf(project);
        } catch (const ZoException&) {
            continue;
        }
        if (type < 0 || taken[static_cast<size_t>(type)])
            continue;
        taken[static_cast<size_t>(type)] = true;
        shots.push_back({project, PictureName("effect-", TeskEffect::GetInfo(type).name)});
    }
    return shots;
}

std::vector<std::filesystem::path> TeskTakeScreenshots(TeskEditorApp& app, TeskEditorDlg& window,
                                                       const std::vector<TeskScreenshotShot>& shots,
                                                       const std::filesystem::path& outFolder) {
    std::filesystem::create_directories(outFolder);
    TeskPreviewPane& pane = *window.GetPreviewPane();
    std::vector<std::filesystem::path> written;
    for (const TeskScreenshotShot& shot : shots) {
        if (shot.project.empty())
            app.GetDocument().New();
        else if (!app.OpenSample(shot.project))
            throw ZoException("cannot open " + shot.project.string());
        WaitForPreview(pane, shot.project);
        pane.Pause();
        pane.ShowFrame(pane.GetFrameCount() / 2);
        Settle();
        written.push_back(outFolder / shot.picture);
        SavePicture(window, written.back());
    }
    return written;
}

std::vector<TeskObjectShot> TeskPlanObjectScreenshots(const std::filesystem::path& examplesFolder) {
    TeskRegisterEffects();
    std::vector<std::filesystem::path> found(std::size(kObjectKinds));
    for (const std::filesystem::path& project : SortedProjects(examplesFolder)) {
        TeskFile document;
        try {
            TeskLoadProjectFile(document, project.string());
        } catch (const ZoException&) {
            continue;
        }
        for (size_t k = 0; k < std::size(kObjectKinds); ++k)
            if (found[k].empty() && FirstObjectOfKind(document, kObjectKinds[k]))
                found[k] = project;
    }
    std::vector<TeskObjectShot> shots;
    for (size_t k = 0; k < std::size(kObjectKinds); ++k)
        if (!found[k].empty())
            shots.push_back({kObjectKinds[k], found[k],
                             PictureName("object-", TeskObjectKindName(kObjectKinds[k]))});
    shots.push_back({kTeskNoObject, {}, "object-no-object.png"});
    return shots;
}

std::vector<std::filesystem::path> TeskTakeObjectScreenshots(
    TeskEditorApp& app, const std::vector<TeskObjectShot>& shots,
    const std::filesystem::path& outFolder) {
    std::filesystem::create_directories(outFolder);
    std::vector<std::filesystem::path> written;
    for (const TeskObjectShot& shot : shots) {
        const TeskObject* object = nullptr;
        if (shot.project.empty()) {
            app.GetDocument().New();
        } else {
            // Opening the project also makes its pictures' names resolve.
            if (!app.OpenSample(shot.project))
                throw ZoException("cannot open " + shot.project.string());
            object = FirstObjectOfKind(app.GetDocument(), shot.kind);
            if (!object)
                throw ZoException(shot.project.string() + " holds no object of its shot's kind");
        }
        TeskObjectDialog dialog(object, QStringLiteral("Object Properties"),
                                TeskObjectContextFor(app));
        dialog.resize(kObjectDialogSize);
        dialog.show();
        Settle();
        // Showing resized the preview, which would draw only on a later turn.
        dialog.GetPreview().RenderNow();
        written.push_back(outFolder / shot.picture);
        SavePicture(dialog, written.back());
    }
    return written;
}
