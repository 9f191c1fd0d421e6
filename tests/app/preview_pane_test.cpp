#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPushButton>

#include "app/app_test_support.h"
#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/external_preview_window.h"
#include "app/movie_view.h"
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

TEST(MovieView, StagesFillTheViewAsTheResizeModeSays) {
    struct Case {
        int resizeMode;
        QSize stage, view;
        QRect expected;
    };
    const Case cases[] = {
        {0, {300, 200}, {400, 300}, {50, 50, 300, 200}},    // fixed size, centred
        {0, {300, 200}, {200, 100}, {-50, -50, 300, 200}},  // larger than the view
        {1, {300, 200}, {400, 300}, {0, 0, 400, 300}},      // stretched to fill
        {2, {300, 200}, {400, 300}, {0, 17, 400, 266}},     // aspect kept
        {2, {100, 400}, {400, 300}, {162, 0, 75, 300}},
        {7, {300, 200}, {600, 400}, {0, 0, 600, 400}},  // unknown modes keep the aspect
        {2, {300, 200}, {0, 0}, {}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(TeskMovieRect(c.stage, c.view, TeskMovieScaleOf(c.resizeMode)), c.expected)
            << c.resizeMode << " " << c.view.width();
    }
}

TEST(PreviewPane, ExternalPreviewReopensWhereItWasClosedAndShowsTheSameFrame) {
    AppTest::TempSettings settings;
    AppTest::ScriptedPrompts prompts;
    settings.Get().setValue(AppTest::Key(kTeskPreviewWindowSection, "Window x pos"), 30);
    settings.Get().setValue(AppTest::Key(kTeskPreviewWindowSection, "Window y pos"), 40);
    TeskEditorApp app(settings.Get(), prompts, {"/nonexistent", "/nonexistent"});
    app.GetDocument().SetResizeMode(1, nullptr);  // the published movie fills its area
    TeskEditorDlg window(app);
    window.show();
    TeskPreviewPane& pane = *window.GetPreviewPane();
    ASSERT_TRUE(WaitFor([&] { return pane.HasMovie(); }));
    pane.Pause();
    pane.ShowFrame(3);

    auto* toggle = window.findChild<QPushButton*>("externalPreview");
    ASSERT_NE(toggle, nullptr);
    toggle->click();
    TeskExternalPreviewWnd* external = pane.GetExternalWindow();
    ASSERT_NE(external, nullptr);
    EXPECT_EQ(external->windowTitle(), "Vimbo - Macromedia Flash Player Preview");
    EXPECT_EQ(external->pos(), QPoint(30, 40));
    EXPECT_EQ(external->size(), QSize(400, 300));
    // Stretched: drawn at the larger of the two scales, then fitted.
    const double scale =
        std::max(400.0 / app.GetDocument().GetWidth(), 300.0 / app.GetDocument().GetHeight());
    const ZoRgbaImage& picture = external->GetView().GetPicture();
    const ZoRgbaImage expected =
        ZoMoviePlayer::FromFile(pane.GetPreviewFile()).RenderFrame(3, scale);
    EXPECT_GE(std::min(picture.width - 400, picture.height - 300), 0) << "covers the window";
    EXPECT_EQ(picture.rgba, expected.rgba) << "the pane's frame, not the first";

    external->move(70, 80);
    external->close();
    EXPECT_EQ(pane.GetExternalWindow(), nullptr);
    EXPECT_FALSE(toggle->isChecked());
    toggle->click();
    ASSERT_NE(pane.GetExternalWindow(), nullptr);
    EXPECT_EQ(pane.GetExternalWindow()->pos(), QPoint(70, 80));
    toggle->click();
    EXPECT_EQ(pane.GetExternalWindow(), nullptr);
}
