#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QElapsedTimer>

#include "app/app_test_support.h"
#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/preview_pane.h"
#include "objects/object.h"

namespace {

/// Runs the event loop until `done` or a generous limit for a busy machine.
template <typename Done>
bool WaitFor(Done done) {
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < 60000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
}

std::array<uint8_t, 3> CentrePixel(const ZoRgbaImage& image) {
    const size_t at = (static_cast<size_t>(image.height / 2) * image.width + image.width / 2) * 4;
    return {image.rgba[at], image.rgba[at + 1], image.rgba[at + 2]};
}

TEST(PreviewPane, ShowsTheChangedDocumentOnceTheBuilderHasFinished) {
    AppTest::TempSettings settings;
    AppTest::ScriptedPrompts prompts;
    TeskEditorApp app(settings.Get(), prompts, {"/nonexistent", "/nonexistent"});
    // Without objects every pixel of the movie is its background.
    TeskEffect& effect = *app.GetDocument().GetEffect(0);
    for (int i = 0; i < effect.GetObjectCount(); ++i) {
        ZoAutoPtr<TeskObject> none;
        effect.SetObject(none, i);
    }
    TeskEditorDlg window(app);
    window.show();
    TeskPreviewPane& pane = *window.GetPreviewPane();
    ASSERT_TRUE(WaitFor([&] { return pane.HasMovie(); }));
    EXPECT_EQ(CentrePixel(pane.GetShownFrame()), (std::array<uint8_t, 3>{255, 255, 255}));

    int loads = 0;
    QObject::connect(&pane, &TeskPreviewPane::previewLoaded, [&] { ++loads; });
    auto transaction = std::make_unique<TeskFile::Transaction>("Edit Background Colour");
    app.GetDocument().GetUndoList().Begin(transaction.get());
    app.GetDocument().SetBackgroundColour(ZoRGB(0x99, 0x66, 0x33), transaction.get());
    app.GetDocument().GetUndoList().Add(transaction);
    ASSERT_TRUE(WaitFor([&] { return loads > 0; }));
    EXPECT_EQ(CentrePixel(pane.GetShownFrame()), (std::array<uint8_t, 3>{0x99, 0x66, 0x33}));

    pane.Stop();
    EXPECT_EQ(pane.GetCurrentFrame(), 0);
    QElapsedTimer idle;
    idle.start();
    WaitFor([&] { return idle.elapsed() > 300; });
    EXPECT_EQ(pane.GetCurrentFrame(), 0) << "a paused preview stays on its frame";
    pane.ShowFrame(pane.GetFrameCount() + 5);
    EXPECT_EQ(pane.GetCurrentFrame(), pane.GetFrameCount() - 1);
}

}  // namespace
