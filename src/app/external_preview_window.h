#pragma once
// A free-floating copy of the preview, for a look at the movie at its own
// size or stretched as the published page will show it. It reopens where it
// was last closed.
#include <QWidget>

class QSettings;
class TeskMovieView;

/// The section and values of its position in the settings.
inline constexpr const char* kTeskPreviewWindowSection = "Preview Window Settings";

class TeskExternalPreviewWnd final : public QWidget {
    Q_OBJECT
  public:
    /// The client size it opens with.
    static constexpr int kWidth = 400;
    static constexpr int kHeight = 300;

    /// Placed at the stored position (0, 0 when none), inside the screen.
    explicit TeskExternalPreviewWnd(QSettings& settings, QWidget* parent = nullptr);

    TeskMovieView& GetView() const noexcept { return *view_; }

  signals:
    /// The user closed the window; its position has been stored.
    void closed();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    QSettings& settings_;
    TeskMovieView* view_;
};
