// How soon the editor shows its preview, how soon a change becomes visible,
// and what a paused preview costs. Runs offscreen; the editor's windows are
// real, only the screen is not.
#include <benchmark/benchmark.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <ctime>
#include <memory>

#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/preview_pane.h"
#include "app/user_prompts.h"

namespace {

QApplication& Application() {
    static int argc = 1;
    static char name[] = "bench_app";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication application(argc, argv);
    return application;
}

/// The editor as `vimbo` starts it, with settings in a temporary file.
struct Editor {
    QTemporaryDir folder;
    QSettings settings{folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat};
    TeskQtUserPrompts prompts;
    TeskEditorApp app{settings, prompts, {"/nonexistent", "/nonexistent"}};
    TeskEditorDlg window{app};

    Editor() { window.show(); }
    TeskPreviewPane& Pane() { return *window.GetPreviewPane(); }
    /// Runs the event loop until the next preview is on screen.
    void WaitForNextPreview() {
        QEventLoop loop;
        QObject::connect(&Pane(), &TeskPreviewPane::previewLoaded, &loop, &QEventLoop::quit);
        loop.exec();
    }
};

/// Runs the event loop, sleeping between events, for `ms` milliseconds.
void RunEventLoop(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void StartToFirstPreviewFrame(benchmark::State& state) {
    Application();
    for (auto _ : state) {
        auto editor = std::make_unique<Editor>();
        editor->WaitForNextPreview();
        state.PauseTiming();
        editor.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(StartToFirstPreviewFrame)->Unit(benchmark::kMillisecond)->UseRealTime();

void ChangeToVisiblePreview(benchmark::State& state) {
    Application();
    Editor editor;
    editor.WaitForNextPreview();
    COLORREF colour = 0;
    for (auto _ : state) {
        auto transaction = std::make_unique<TeskFile::Transaction>("Edit Background Colour");
        TeskFile& document = editor.app.GetDocument();
        document.GetUndoList().Begin(transaction.get());
        document.SetBackgroundColour(++colour, transaction.get());
        document.GetUndoList().Add(transaction);
        editor.WaitForNextPreview();
    }
}
BENCHMARK(ChangeToVisiblePreview)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Process CPU time over two seconds of the event loop, as a share of one core.
double CpuShareOfTwoSeconds() {
    const std::clock_t cpuStart = std::clock();
    QElapsedTimer wall;
    wall.start();
    RunEventLoop(2000);
    return static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC /
           (static_cast<double>(wall.elapsed()) / 1000.0);
}

/// What the preview costs while it shows the default document, paused or playing.
void PreviewCpu(benchmark::State& state) {
    Application();
    Editor editor;
    editor.WaitForNextPreview();
    const bool playing = state.range(0) != 0;
    playing ? editor.Pane().Play() : editor.Pane().Pause();
    double share = 0;
    for (auto _ : state)
        share = CpuShareOfTwoSeconds();
    state.counters["cpu_percent_of_core"] = share * 100.0;
    state.SetLabel(playing ? "playing" : "paused");
}
BENCHMARK(PreviewCpu)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();

}  // namespace
