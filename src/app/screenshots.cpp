#include "app/screenshots.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPixmap>
#include <algorithm>

#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/preview_pane.h"
#include "document/json_project.h"
#include "effects/register_effects.h"
#include "platform/zo_exception.h"

namespace {

constexpr int kPreviewTimeoutMs = 60000;

/// "Rotate 3D" becomes "effect-rotate-3d.png".
std::filesystem::path PictureName(const ZoString& effectName) {
    ZoString name = "effect-";
    for (const char c : ZoToLowerAscii(effectName))
        name += c == ' ' ? '-' : c;
    return name + ".png";
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
        shots.push_back({project, PictureName(TeskEffect::GetInfo(type).name)});
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
        // A focused field would show its text cursor in whatever phase of
        // blinking the moment catches.
        if (QWidget* focused = QApplication::focusWidget())
            focused->clearFocus();
        QApplication::processEvents();
        const std::filesystem::path path = outFolder / shot.picture;
        if (!window.grab().toImage().save(QString::fromStdString(path.string()), "PNG"))
            throw ZoException("cannot write " + path.string());
        written.push_back(path);
    }
    return written;
}
