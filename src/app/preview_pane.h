#pragma once
// The live preview of the main window: asks the background builder for a
// new movie on every change of the document, picks finished movies up by
// polling, and plays them with our own renderer at their frame rate.
#include <QColor>
#include <QTimer>
#include <QWidget>
#include <optional>

#include "app/movie_view.h"

#include "publish/preview_builder.h"
#include "render/movie_player.h"

class QLabel;
class QPushButton;
class QSettings;
class QSlider;
class TeskExternalPreviewWnd;
class TeskFile;

class TeskPreviewPane final : public QWidget {
    Q_OBJECT
  public:
    /// How often the pane looks for a finished preview.
    static constexpr int kPollMilliseconds = 100;

    /// `settings` keep where the external preview was last closed.
    explicit TeskPreviewPane(QSettings& settings, QWidget* parent = nullptr);
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
    const ZoRgbaImage& GetShownFrame() const noexcept { return view_->GetPicture(); }
    /// Where finished previews are written.
    const std::filesystem::path& GetPreviewFile() const noexcept { return session_.PreviewFile(); }
    /// The external preview window while it is open, otherwise null.
    TeskExternalPreviewWnd* GetExternalWindow() const noexcept { return externalWindow_; }

    /// Plays on from the frame shown; a movie that stopped at its end
    /// without looping starts again.
    void Play();
    void Pause();
    /// Pauses on the first frame.
    void Stop();
    /// Shows frame `frame` (zero based) without changing play or pause.
    void ShowFrame(int32_t frame);
    /// Pauses on the next or the previous frame.
    void StepForward();
    void StepBack();
    /// Whether playing goes on from the first frame after the last (on by
    /// default, as in the player); otherwise it stops on the last.
    bool IsLooping() const noexcept { return looping_; }
    void SetLooping(bool loop) noexcept { looping_ = loop; }

    /// Whether a right click on the movie offers the player's menu: unless
    /// the document turns the menu off, as the published movie does.
    bool HasPlayerMenu() const noexcept { return playerMenu_; }
    /// Opens or closes the external preview window.
    void SetExternalPreview(bool open);

  signals:
    /// A newly built movie is on screen.
    void previewLoaded();

  private:
    void LoadMovie(const std::filesystem::path& file);
    void AdvanceFrame();
    void RenderCurrentFrame();
    void UpdateReadOuts();
    void SliderPressed();
    void SliderReleased();
    void ExternalPreviewClosed();
    /// Lets `view` offer the player's menu, or no menu at all.
    void FollowMenuSetting(TeskMovieView& view);
    void ShowPlayerMenu(TeskMovieView& view, QPoint at);

    QSettings& settings_;
    TeskPreviewSession session_;
    std::optional<ZoMoviePlayer> player_;
    int32_t frame_ = 0;
    bool playing_ = true;
    bool playAfterDrag_ = false;
    bool looping_ = true;
    bool playerMenu_ = false;
    QTimer pollTimer_;
    QTimer playTimer_;
    TeskMovieView* view_;
    QSlider* slider_;
    QPushButton* playPause_;
    QPushButton* externalToggle_;
    TeskExternalPreviewWnd* externalWindow_ = nullptr;
    // The document's look as the external window shows it.
    QColor background_;
    TeskMovieScale externalScale_ = TeskMovieScale::kShowAll;
    QLabel* frameReadOut_;
    QLabel* timeReadOut_;
};
