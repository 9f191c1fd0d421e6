#include <gtest/gtest.h>
#include <QApplication>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QImage>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

#include "app/app_test_support.h"
#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/external_preview_window.h"
#include "app/movie_view.h"
#include "app/object_preview.h"
#include "app/preview_pane.h"
#include "objects/image_object.h"

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

void RemoveEffectObjects(TeskEffect& effect) {
    for (int i = 0; i < effect.GetObjectCount(); ++i) {
        ZoAutoPtr<TeskObject> none;
        effect.SetObject(none, i);
    }
}

/// Right-clicks the middle of `view`; when a menu shows, triggers its item
/// named `choose` and answers true.
bool RightClick(QWidget& view, const char* choose = "") {
    bool shown = false;
    QTimer::singleShot(0, [&] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()); menu) {
            shown = true;
            if (auto* chosen = menu->findChild<QAction*>(choose); chosen)
                chosen->trigger();
            menu->close();
        }
    });
    const QPoint at = view.rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, view.mapToGlobal(at));
    QApplication::sendEvent(&view, &event);
    QCoreApplication::processEvents();  // the look for a menu runs when none showed too
    return shown;
}

TEST(PreviewPane, ShowsTheChangedDocumentOnceTheBuilderHasFinished) {
    AppTest::TempSettings settings;
    AppTest::ScriptedPrompts prompts;
    TeskEditorApp app(settings.Get(), prompts, {"/nonexistent", "/nonexistent"});
    // Without objects every pixel of the movie is its background.
    RemoveEffectObjects(*app.GetDocument().GetEffect(0));
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

TEST(MovieView, ZoomingKeepsThePointAskedForInTheMiddleWhileTheStageCoversTheView) {
    struct Case {
        QRect fitted;
        int zoom;
        QPointF centre;
        QRect expected;
    };
    const Case cases[] = {
        {{0, 17, 400, 266}, 1, {0.2, 0.2}, {0, 17, 400, 266}},
        {{0, 17, 400, 266}, 2, {0.0, 0.0}, {0, 0, 800, 532}},  // no gap beside a corner
        {{0, 17, 400, 266}, 4, {1.0, 1.0}, {-1200, -764, 1600, 1064}},
        {{162, 0, 75, 300}, 2, {0.5, 0.25}, {125, 0, 150, 600}},  // narrow: stays centred
    };
    for (const Case& c : cases)
        EXPECT_EQ(TeskZoomedRect(c.fitted, {400, 300}, c.zoom, c.centre), c.expected) << c.zoom;
}

TEST(PreviewPane, PlayerMenuFollowsTheRightClickSettingAndDrivesThePlayer) {
    AppTest::TempSettings settings;
    AppTest::ScriptedPrompts prompts;
    // With the shipped help, the window around the movie has a right-click
    // menu of its own that must not stand in for the player's.
    TeskEditorApp app(
        settings.Get(), prompts,
        {std::filesystem::path(VIMBO_SOURCE_DIR) / "resources" / "help", "/nonexistent"});
    TeskFile& document = app.GetDocument();
    RemoveEffectObjects(*document.GetEffect(0));
    document.SetDisableRightClick(false, nullptr);
    TeskEditorDlg window(app);
    window.show();
    TeskPreviewPane& pane = *window.GetPreviewPane();
    ASSERT_TRUE(WaitFor([&] { return pane.HasMovie(); }));
    auto& view = *window.findChild<TeskMovieView*>("previewCanvas");
    pane.Pause();
    pane.ShowFrame(2);

    struct Step {
        const char* item;
        int32_t frame;  // -1 while playing
        bool playing, looping;
        int zoom;
    };
    const Step steps[] = {
        {"forward", 3, false, true, 1}, {"back", 2, false, true, 1},
        {"zoomIn", 2, false, true, 2},  {"showAll", 2, false, true, 1},
        {"play", -1, true, true, 1},    {"play", -1, false, true, 1},
        {"loop", -1, false, false, 1},  {"rewind", 0, false, false, 1},
    };
    for (const Step& s : steps) {
        ASSERT_TRUE(RightClick(view, s.item)) << s.item;
        EXPECT_TRUE(s.frame < 0 || pane.GetCurrentFrame() == s.frame) << s.item;
        EXPECT_EQ(pane.IsPlaying(), s.playing) << s.item;
        EXPECT_EQ(pane.IsLooping(), s.looping) << s.item;
        EXPECT_EQ(view.GetZoom(), s.zoom) << s.item;
    }
    pane.ShowFrame(pane.GetFrameCount() - 2);
    pane.Play();
    ASSERT_TRUE(WaitFor([&] { return !pane.IsPlaying(); })) << "stops at the end without a loop";
    EXPECT_EQ(pane.GetCurrentFrame(), pane.GetFrameCount() - 1);
    pane.Play();
    EXPECT_EQ(pane.GetCurrentFrame(), 0) << "and plays again from the start";

    auto transaction = std::make_unique<TeskFile::Transaction>("Edit Disable Right Click");
    document.GetUndoList().Begin(transaction.get());
    document.SetDisableRightClick(true, transaction.get());
    document.GetUndoList().Add(transaction);
    EXPECT_FALSE(RightClick(view)) << "no menu at all, not even the window's";
    pane.SetExternalPreview(true);
    TeskMovieView& external = pane.GetExternalWindow()->GetView();
    EXPECT_FALSE(RightClick(external));
    document.GetUndoList().Undo();
    EXPECT_TRUE(RightClick(external, "zoomIn"));
    EXPECT_EQ(external.GetZoom(), 2);
    EXPECT_EQ(view.GetZoom(), 1);
}

TEST(PreviewPane, APictureChangedOnDiskIsShownAgain) {
    AppTest::TempSettings settings;
    AppTest::ScriptedPrompts prompts;
    const std::filesystem::path file = settings.Folder() / "picture.png";
    const auto paint = [&](QColor colour, QSize size) {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(colour);
        ASSERT_TRUE(picture.save(QString::fromStdString(file.string())));
    };
    paint(Qt::red, {40, 30});
    TeskEditorApp app(settings.Get(), prompts, {"/nonexistent", "/nonexistent"});
    ZoAutoPtr<TeskObject> image = std::make_unique<TeskImageObject>(file.string());
    app.GetDocument().GetEffect(0)->SetObject(image, 0);
    TeskEditorDlg window(app);
    window.show();
    TeskPreviewPane& pane = *window.GetPreviewPane();
    auto& object = *window.findChild<TeskObjectPreview*>();
    // The wave lights its object, so only the strongest channel is certain:
    // that of the pane's first frame and that of the object preview.
    const auto strongest = [&] {
        pane.Stop();
        const std::array<uint8_t, 3> frame = CentrePixel(pane.GetShownFrame());
        const QColor drawn = object.Picture().pixelColor(object.Picture().rect().center());
        const std::array<int, 3> preview = {drawn.red(), drawn.green(), drawn.blue()};
        return std::pair(std::max_element(frame.begin(), frame.end()) - frame.begin(),
                         std::max_element(preview.begin(), preview.end()) - preview.begin());
    };
    ASSERT_TRUE(WaitFor([&] { return pane.HasMovie() && !object.Picture().isNull(); }));
    EXPECT_EQ(strongest(), std::pair(0L, 0L));
    paint(Qt::blue, {50, 20});
    EXPECT_TRUE(WaitFor([&] { return strongest() == std::pair(2L, 2L); }));
    EXPECT_EQ(app.GetDocument().GetUndoList().GetCount(), 0) << "the document did not change";
}
