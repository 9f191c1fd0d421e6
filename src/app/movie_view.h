#pragma once
// A window that shows one frame of a movie drawn by our renderer: the
// preview pane's player, the external preview and the effect chooser's
// sample all paint through it.
#include <QColor>
#include <QRect>
#include <QWidget>

#include "render/movie_player.h"

/// How the stage fills a view of another size, as the movie's resize modes
/// do in the browser (0, 1, 2 in the document).
enum class TeskMovieScale { kNoScale = 0, kExactFit = 1, kShowAll = 2 };

/// The scale of a document's resize mode; unknown modes keep the aspect.
TeskMovieScale TeskMovieScaleOf(int resizeMode) noexcept;

/// Where a stage of `stage` pixels lies in a view of `view` pixels: centred,
/// at its own size, stretched to the whole view, or as large as fits with
/// its aspect kept.
QRect TeskMovieRect(QSize stage, QSize view, TeskMovieScale scale) noexcept;

class TeskMovieView final : public QWidget {
  public:
    explicit TeskMovieView(QWidget* parent = nullptr);

    void SetScale(TeskMovieScale scale);
    /// The colour around the stage.
    void SetBackground(const QColor& colour);
    /// Shown while there is no movie.
    void SetMessage(const QString& message);

    /// Draws frame `frame` of `player` (which must outlive its use here, or
    /// be replaced first); null shows the message.
    void ShowFrame(const ZoMoviePlayer* player, int32_t frame);
    /// The stage as last drawn (empty before the first frame).
    const ZoRgbaImage& GetPicture() const noexcept { return picture_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Render();

    const ZoMoviePlayer* player_ = nullptr;
    int32_t frame_ = 0;
    TeskMovieScale scale_ = TeskMovieScale::kShowAll;
    QColor background_;
    QString message_;
    ZoRgbaImage picture_;
};
