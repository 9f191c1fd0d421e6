#pragma once
// The live preview of the main window: asks the background builder for a
// new movie on every change of the document, picks finished movies up by
// polling, and plays them with our own renderer at their frame rate.
#include <QTimer>
#include <QWidget>
#include <optional>

#include "publish/preview_builder.h"
#include "render/movie_player.h"

class QLabel;
class QPushButton;
class QSlider;
class TeskFile;

class TeskPreviewPane final : public QWidget {
    Q_OBJECT
  public:
    /// How often the pane looks for a finished preview.
    static constexpr int kPollMilliseconds = 100;

    explicit TeskPreviewPane(QWidget* parent = nullptr);
    ~TeskPreviewPane() override;

    /// Asks for a preview of `document` as it is now.
    void RequestPreview(const TeskFile& document);
    /// Loads the newest finished preview, if there is one the pane has not
    /// shown; the pane's timer calls it every kPollMilliseconds.
    void PollPreview();

    bool HasMovie() const noexcept { return player_.has_value(); }
    /// Whether the movie shown is the newest one asked for.
    bool IsUpToDate() const noexcept { return session_.ShowsNewestRequest(); }
    bool IsPlaying() const noexcept { return playing_; }
    int32_t GetCurrentFrame() const noexcept { return frame_; }
    int32_t GetFrameCount() const noexcept;
    /// The picture on screen (null before the first preview).
    const ZoRgbaImage& GetShownFrame() const noexcept { return picture_; }

    void Play();
    void Pause();
    /// Pauses on the first frame.
    void Stop();
    /// Shows frame `frame` (zero based) without changing play or pause.
    void ShowFrame(int32_t frame);

  signals:
    /// A newly built movie is on screen.
    void previewLoaded();

  private:
    class Canvas;

    void LoadMovie(const std::filesystem::path& file);
    void AdvanceFrame();
    void RenderCurrentFrame();
    void UpdateReadOuts();
    void SliderPressed();
    void SliderReleased();

    TeskPreviewSession session_;
    std::optional<ZoMoviePlayer> player_;
    ZoRgbaImage picture_;
    int32_t frame_ = 0;
    bool playing_ = true;
    bool playAfterDrag_ = false;
    QTimer pollTimer_;
    QTimer playTimer_;
    Canvas* canvas_;
    QSlider* slider_;
    QPushButton* playPause_;
    QLabel* frameReadOut_;
    QLabel* timeReadOut_;
};
