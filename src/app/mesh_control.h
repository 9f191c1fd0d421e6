#pragma once
// The window in which the user edits a morph mesh: one object with one point
// set of its triangulation drawn over it. Points are picked and dragged with
// the mouse (Ctrl drags the point's whole row, Shift its column) or nudged
// with the arrow keys; the right button offers the "Morph Grid" commands.
// Two controls are linked for the start and end objects: they share the
// selected point, the zoom and the scroll position.
#include <QAbstractScrollArea>
#include <QImage>
#include <cstdint>
#include <vector>

#include "geometry/point_2d.h"
#include "platform/zo_colour.h"
#include "platform/zo_rect.h"
#include "platform/zo_string.h"

class QMenu;
class TeskEditGridNode;
class TeskObject;
class TeskTriangulation;

class TeskMeshCtrl final : public QAbstractScrollArea {
    Q_OBJECT
  public:
    /// Steps of the zoom factor.
    static constexpr int32_t kMinZoom = 1;
    static constexpr int32_t kMaxZoom = 4;

    explicit TeskMeshCtrl(QWidget* parent = nullptr);
    ~TeskMeshCtrl() override;

    /// Shows point set `pointSet` of `triangulation` over `object` in a
    /// movie of `movieSize` pixels on `background`, linked to `partner`.
    /// None of the pointers is owned; all may be null.
    void SetMesh(TeskTriangulation* triangulation, int32_t pointSet, TeskObject* object,
                 TeskMeshCtrl* partner, ZoSize movieSize, COLORREF background);
    TeskTriangulation* GetTriangulation() const noexcept { return triangulation_; }
    int32_t GetPointSet() const noexcept { return pointSet_; }

    int32_t GetZoom() const noexcept { return zoom_; }
    bool CanZoomIn() const noexcept { return zoom_ < kMaxZoom; }
    bool CanZoomOut() const noexcept { return zoom_ > kMinZoom; }
    /// Doubles (halves) the zoom, and the partner's too when `passOn`.
    void ZoomIn(bool passOn = true);
    void ZoomOut(bool passOn = true);

    /// The editable point picked, -1 for none.
    int32_t GetSelectedPoint() const noexcept { return selectedPoint_; }
    /// Selects `index` here and in the partner.
    void SetSelectedPoint(int32_t index);
    /// Draws the object again if it shows the picture file at `fullPath`,
    /// which has changed on disk.
    void PictureChanged(const ZoString& fullPath);
    /// Forgets a selection that no longer names a point.
    void ValidateSelection();

    /// Where a unit point of the object lies in the viewport, and back.
    QPoint UnitToClient(const TeskPoint2D& unit) const noexcept;
    TeskPoint2D ClientToUnit(QPoint client) const noexcept;
    /// The viewport rectangle the object covers, before scrolling.
    QRect ObjectRect() const noexcept { return objectRect_; }

  signals:
    /// The mesh changed (a drag ended, a nudge, a grid command).
    void meshChanged();
    /// The zoom factor changed.
    void zoomChanged(int zoom);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

  private:
    void SetZoom(int32_t zoom, bool passOn);
    void LayOut();
    void RenderObject();
    void PaintMesh(QPainter& painter) const;
    void SelectAt(QPoint client);
    void Drag(QPoint client, Qt::KeyboardModifiers modifiers);
    /// Moves the selected point to `target` by the checked move, carrying
    /// its row or column along when asked.
    void MoveSelected(TeskPoint2D target, Qt::KeyboardModifiers modifiers);
    void MoveLine(TeskPoint2D target, bool row);
    void Nudge(int dx, int dy, Qt::KeyboardModifiers modifiers);
    void ShowGridMenu(QPoint client);
    void MeshChanged();
    void SyncScroll();

    TeskTriangulation* triangulation_ = nullptr;
    int32_t pointSet_ = 0;
    TeskObject* object_ = nullptr;
    TeskMeshCtrl* partner_ = nullptr;
    ZoSize movieSize_{1, 1};
    COLORREF background_ = 0xFFFFFF;
    int32_t zoom_ = kMinZoom;
    int32_t selectedPoint_ = -1;
    bool buttonDown_ = false;
    QPoint downPosition_;
    bool dragging_ = false;
    TeskPoint2D dragStart_;
    QRect objectRect_;
    bool syncing_ = false;
    QImage bitmap_;
    /// The movie `bitmap_` was drawn from.
    std::vector<uint8_t> bitmapMovie_;
};
