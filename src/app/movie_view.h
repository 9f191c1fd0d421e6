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

/// `fitted` (the stage as TeskMovieRect places it) magnified `zoom` times
/// about `centre` (a point of the stage, 0 ... 1 across and down), which
/// comes to the middle of `view` as far as the stage still covers the view;
/// a side smaller than the view stays centred.
QRect TeskZoomedRect(QRect fitted, QSize view, int zoom, QPointF centre) noexcept;

class TeskMovieView final : public QWidget {
    // Known to the meta-object system, so that windows can find them.
    Q_OBJECT

  public:
    explicit TeskMovieView(QWidget* parent = nullptr);

    void SetScale(TeskMovieScale scale);
    /// The colour around the stage.
    void SetBackground(const QColor& colour);
    /// Shown while there is no movie.
    void SetMessage(const QString& message);

    /// Magnification of the stage as its scale places it: 1 shows it all.
    static constexpr int kMaxZoom = 8;
    int GetZoom() const noexcept { return zoom_; }
    /// Doubles the magnification, bringing the stage point under `at` (a
    /// point of this view) to the middle.
    void ZoomIn(QPoint at);
    /// Halves the magnification about the same point.
    void ZoomOut();
    /// Back to the whole stage.
    void ShowAll();
    /// Where the stage is drawn now (empty without a movie).
    QRect StageRect() const noexcept;

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
    void SetZoom(int zoom);

    const ZoMoviePlayer* player_ = nullptr;
    int32_t frame_ = 0;
    TeskMovieScale scale_ = TeskMovieScale::kShowAll;
    int zoom_ = 1;
    QPointF centre_{0.5, 0.5};
    QColor background_;
    QString message_;
    ZoRgbaImage picture_;
};
