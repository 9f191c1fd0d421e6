#pragma once
// Objects have no drawing of their own: they describe themselves as SWF. A
// preview therefore builds a one-frame movie holding the object and lets our
// player draw it, so what the dialogs show is what the movie will show.
#include <QImage>
#include <QWidget>
#include <cstdint>
#include <vector>

#include "platform/zo_colour.h"
#include "platform/zo_rect.h"
#include "platform/zo_string.h"

class TeskObject;

/// A one-frame movie of `movieSize` pixels on `background` that shows
/// `object` (none: the background alone); empty when it cannot be made.
/// Making it is cheap next to drawing it, so it also tells whether an object
/// still looks as it did.
std::vector<uint8_t> TeskObjectMovie(TeskObject* object, ZoSize movieSize, COLORREF background);
/// The first frame of `movie` drawn at `size`; a null image when it cannot be.
QImage TeskRenderMovie(const std::vector<uint8_t>& movie, QSize size);
/// Both at once.
QImage TeskRenderObject(TeskObject* object, ZoSize movieSize, COLORREF background, QSize size);
/// Whether `object` (may be null) shows the picture file at `fullPath`.
bool TeskObjectShowsPicture(const TeskObject* object, const ZoString& fullPath);

/// A window that shows one object at the movie's aspect ratio, centred.
class TeskObjectPreview final : public QWidget {
    // Known to the meta-object system, so that windows can find them.
    Q_OBJECT

  public:
    explicit TeskObjectPreview(QWidget* parent = nullptr);

    /// Shows `object` (not owned; null for none) in a movie of `movieSize`
    /// pixels on `background`.
    void SetObject(TeskObject* object, ZoSize movieSize, COLORREF background);
    /// Draws the object again after it changed. Changes arriving together
    /// are drawn once, when the event loop next runs.
    void ObjectChanged();
    /// Draws the object again if it shows the picture file at `fullPath`,
    /// which has changed on disk.
    void PictureChanged(const ZoString& fullPath);
    /// The picture shown now (for tests and screenshots).
    const QImage& Picture() const noexcept { return picture_; }
    /// Draws at once rather than when the event loop next runs.
    void RenderNow();

    QSize sizeHint() const override { return {160, 120}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QRect PictureRect() const;

    TeskObject* object_ = nullptr;
    ZoSize movieSize_{1, 1};
    COLORREF background_ = 0xFFFFFF;
    QImage picture_;
    bool pending_ = false;
};
