#pragma once
// The menu a right click on the preview offers, as a movie player's own
// menu does: magnify the stage, play or pause, loop, and go back to the
// start or one frame either way.
#include <QPoint>
#include <memory>

class QMenu;
class TeskMovieView;
class TeskPreviewPane;

/// The menu for a right click at `at` on `view` (the pane's own view or
/// the external window's): playing commands act on `pane`, zoom commands on
/// `view`, zooming in about `at`. Items that would change nothing are
/// disabled.
std::unique_ptr<QMenu> TeskMakePlayerMenu(TeskPreviewPane& pane, TeskMovieView& view, QPoint at);
