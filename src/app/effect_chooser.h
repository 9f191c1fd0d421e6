#pragma once
// The effect chooser of the effect strip: a drop-down whose list shows every
// effect type with a small picture, next to a moving sample of the type the
// pointer is on, so the user sees what an effect does before choosing it.
#include <QComboBox>
#include <QFrame>
#include <QTimer>
#include <optional>

#include "platform/zo_colour.h"
#include "render/movie_player.h"

class QListWidget;
class TeskFile;
class TeskMovieView;

/// The largest size of a sample's aspect (182 : 202) that fits `area`.
QSize TeskEffectSampleSize(QSize area) noexcept;

/// A new effect of registry type `index` in `document`, compiled alone into
/// a movie of `size` pixels at 12 frames a second on `background`. Throws
/// ZoException when the movie cannot be built.
ZoMoviePlayer TeskBuildEffectSample(TeskFile& document, int index, QSize size, COLORREF background);

/// The drop-down part: the list of types and the sample of the one
/// highlighted.
class TeskEffectChooserPopup final : public QFrame {
    Q_OBJECT
  public:
    explicit TeskEffectChooserPopup(TeskFile& document, QWidget* parent = nullptr);

    /// Highlights type `index` and plays its sample.
    void Highlight(int index);
    int GetHighlighted() const;
    /// The sample playing, or null when none could be built.
    const ZoMoviePlayer* GetSample() const noexcept { return sample_ ? &*sample_ : nullptr; }
    /// Whether every type's picture has been drawn (they are drawn one by one
    /// while the list is open, so opening it never waits for all of them).
    bool HasAllIcons() const noexcept;

  signals:
    void effectChosen(int registryIndex);
    /// The picture of type `index` is ready.
    void iconDrawn(int index, const QIcon& icon);

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void DrawNextIcon();
    void AdvanceSample();

    TeskFile& document_;
    QListWidget* list_;
    TeskMovieView* view_;
    std::optional<ZoMoviePlayer> sample_;
    int32_t frame_ = 0;
    int nextIcon_ = 0;
    QTimer playTimer_;
    QTimer iconTimer_;
};

class TeskEffectChooserCombo final : public QComboBox {
    Q_OBJECT
  public:
    /// Lists every registered type; samples are built in `document`.
    explicit TeskEffectChooserCombo(TeskFile& document, QWidget* parent = nullptr);

    TeskEffectChooserPopup& GetPopup() const noexcept { return *popup_; }
    void showPopup() override;
    void hidePopup() override;

  private:
    void Choose(int index);

    TeskEffectChooserPopup* popup_;
};
