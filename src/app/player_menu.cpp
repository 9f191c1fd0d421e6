#include "app/player_menu.h"

#include <QMenu>

#include "app/movie_view.h"
#include "app/preview_pane.h"

namespace {

template <typename Handler>
QAction* AddItem(QMenu& menu, const char* text, const char* name, bool enabled, Handler handler) {
    QAction* action = menu.addAction(QString::fromUtf8(text));
    action->setObjectName(QString::fromUtf8(name));
    action->setEnabled(enabled);
    QObject::connect(action, &QAction::triggered, &menu, handler);
    return action;
}

void AddZoomItems(QMenu& menu, TeskMovieView& view, QPoint at, bool hasMovie) {
    const int zoom = view.GetZoom();
    AddItem(menu, "Zoom &In", "zoomIn", hasMovie && zoom < TeskMovieView::kMaxZoom,
            [&view, at] { view.ZoomIn(at); });
    AddItem(menu, "Zoom &Out", "zoomOut", zoom > 1, [&view] { view.ZoomOut(); });
    AddItem(menu, "Show &All", "showAll", zoom > 1, [&view] { view.ShowAll(); });
}

void AddPlayingItems(QMenu& menu, TeskPreviewPane& pane, bool hasMovie) {
    QAction* play = AddItem(menu, "&Play", "play", hasMovie,
                            [&pane](bool checked) { checked ? pane.Play() : pane.Pause(); });
    play->setCheckable(true);
    play->setChecked(pane.IsPlaying());
    QAction* loop = AddItem(menu, "&Loop", "loop", hasMovie,
                            [&pane](bool checked) { pane.SetLooping(checked); });
    loop->setCheckable(true);
    loop->setChecked(pane.IsLooping());
}

void AddFrameItems(QMenu& menu, TeskPreviewPane& pane, bool hasMovie) {
    const int32_t frame = pane.GetCurrentFrame();
    AddItem(menu, "&Rewind", "rewind", hasMovie, [&pane] { pane.Stop(); });
    AddItem(menu, "&Forward", "forward", hasMovie && frame < pane.GetFrameCount() - 1,
            [&pane] { pane.StepForward(); });
    AddItem(menu, "&Back", "back", hasMovie && frame > 0, [&pane] { pane.StepBack(); });
}

}  // namespace

std::unique_ptr<QMenu> TeskMakePlayerMenu(TeskPreviewPane& pane, TeskMovieView& view, QPoint at) {
    auto menu = std::make_unique<QMenu>();
    menu->setObjectName(QStringLiteral("playerMenu"));
    const bool hasMovie = pane.HasMovie();
    AddZoomItems(*menu, view, at, hasMovie);
    menu->addSeparator();
    AddPlayingItems(*menu, pane, hasMovie);
    menu->addSeparator();
    AddFrameItems(*menu, pane, hasMovie);
    return menu;
}
