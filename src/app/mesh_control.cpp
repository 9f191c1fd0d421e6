#include "app/mesh_control.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "app/object_preview.h"
#include "geometry/edit_grid_triangulation.h"

namespace {

// A press farther than this from every point picks none; a press must move
// this far before it becomes a drag, so that a click never moves a point.
constexpr double kPickRadius = 5.0;
constexpr int kDragThreshold = 4;
// Arrow keys move the selected point by a screen pixel, with Shift by ten.
constexpr int kNudgeStep = 1;
constexpr int kLargeNudgeStep = 10;

/// The cells leading from the root to `node`, so that the same node can be
/// found in a copy of the grid.
std::vector<size_t> CellPath(const TeskEditGridNode* node) {
    std::vector<size_t> path;
    for (; node->parent; node = node->parent) {
        const auto& cells = node->parent->cells;
        for (size_t i = 0; i < cells.size(); ++i) {
            if (cells[i].child.get() == node) {
                path.push_back(i);
                break;
            }
        }
    }
    std::reverse(path.begin(), path.end());
    return path;
}

TeskEditGridNode& NodeAt(TeskEditGridTriangulation& grid, const std::vector<size_t>& path) {
    TeskEditGridNode* node = &grid.Root();
    for (size_t cell : path)
        node = node->cells[cell].child.get();
    return *node;
}

/// Whether `change` on a copy of `grid`, at the copy of `node`, succeeds and
/// leaves the whole grid valid.
bool WorksOnCopy(const TeskEditGridTriangulation& grid, const TeskEditGridNode& node,
                 const std::function<bool(TeskEditGridTriangulation&, TeskEditGridNode&)>& change) {
    TeskEditGridTriangulation copy(grid);
    return change(copy, NodeAt(copy, CellPath(&node))) && copy.IsValid();
}

struct GridCommand {
    const char* text;
    bool enabled;
    std::function<void()> run;
};

}  // namespace

TeskMeshCtrl::TeskMeshCtrl(QWidget* parent) : QAbstractScrollArea(parent) {
    setObjectName(QStringLiteral("meshCtrl"));
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(80, 80);
    viewport()->setMouseTracking(false);
}

TeskMeshCtrl::~TeskMeshCtrl() {
    if (partner_ && partner_->partner_ == this)
        partner_->partner_ = nullptr;
}

void TeskMeshCtrl::SetMesh(TeskTriangulation* triangulation, int32_t pointSet, TeskObject* object,
                           TeskMeshCtrl* partner, ZoSize movieSize, COLORREF background) {
    triangulation_ = triangulation;
    pointSet_ = pointSet;
    object_ = object;
    partner_ = partner;
    movieSize_ = {std::max(movieSize.cx, 1), std::max(movieSize.cy, 1)};
    background_ = background;
    buttonDown_ = dragging_ = false;
    ValidateSelection();
    LayOut();
    RenderObject();
    viewport()->update();
}

void TeskMeshCtrl::ZoomIn(bool passOn) {
    if (CanZoomIn())
        SetZoom(zoom_ * 2, passOn);
}

void TeskMeshCtrl::ZoomOut(bool passOn) {
    if (CanZoomOut())
        SetZoom(zoom_ / 2, passOn);
}

void TeskMeshCtrl::SetZoom(int32_t zoom, bool passOn) {
    zoom_ = zoom;
    LayOut();
    viewport()->update();
    if (passOn && partner_)
        partner_->SetZoom(zoom, false);
    emit zoomChanged(zoom_);
}

void TeskMeshCtrl::SetSelectedPoint(int32_t index) {
    if (index == selectedPoint_)
        return;
    selectedPoint_ = index;
    viewport()->update();
    if (partner_) {
        partner_->selectedPoint_ = index;
        partner_->viewport()->update();
    }
}

void TeskMeshCtrl::PictureChanged(const ZoString& fullPath) {
    if (!TeskObjectShowsPicture(object_, fullPath))
        return;
    RenderObject();
    viewport()->update();
}

void TeskMeshCtrl::ValidateSelection() {
    const int32_t count = triangulation_ ? triangulation_->GetPointCount() : 0;
    if (selectedPoint_ < -1 || selectedPoint_ >= count)
        selectedPoint_ = -1;
}

QPoint TeskMeshCtrl::UnitToClient(const TeskPoint2D& unit) const noexcept {
    const int sx = horizontalScrollBar()->value();
    const int sy = verticalScrollBar()->value();
    return {static_cast<int>((objectRect_.width() - 1) * unit.x + objectRect_.left() - sx),
            static_cast<int>((objectRect_.height() - 1) * unit.y + objectRect_.top() - sy)};
}

TeskPoint2D TeskMeshCtrl::ClientToUnit(QPoint client) const noexcept {
    const int sx = horizontalScrollBar()->value();
    const int sy = verticalScrollBar()->value();
    return {double(client.x() - objectRect_.left() + sx) / std::max(objectRect_.width() - 1, 1),
            double(client.y() - objectRect_.top() + sy) / std::max(objectRect_.height() - 1, 1)};
}

void TeskMeshCtrl::LayOut() {
    const QSize client = viewport()->size();
    // The zoomed client area reduced to the movie's shape.
    int64_t width = int64_t(client.width()) * zoom_;
    int64_t height = int64_t(client.height()) * zoom_;
    if (width * movieSize_.cy > height * movieSize_.cx)
        width = height * movieSize_.cx / movieSize_.cy;
    else
        height = width * movieSize_.cy / movieSize_.cx;
    const int w = static_cast<int>(std::max<int64_t>(width, 2));
    const int h = static_cast<int>(std::max<int64_t>(height, 2));
    objectRect_ = QRect(w < client.width() ? (client.width() - w) / 2 : 0,
                        h < client.height() ? (client.height() - h) / 2 : 0, w, h);
    horizontalScrollBar()->setRange(0, std::max(0, w - client.width()));
    horizontalScrollBar()->setPageStep(client.width());
    verticalScrollBar()->setRange(0, std::max(0, h - client.height()));
    verticalScrollBar()->setPageStep(client.height());
    if (bitmap_.size() != objectRect_.size())
        RenderObject();
}

void TeskMeshCtrl::RenderObject() {
    // Every stored mesh change gives the page fresh copies of the objects;
    // drawing one again only when it looks different keeps editing quick.
    std::vector<uint8_t> movie = TeskObjectMovie(object_, movieSize_, background_);
    if (movie == bitmapMovie_ && bitmap_.size() == objectRect_.size())
        return;
    bitmapMovie_ = std::move(movie);
    bitmap_ = TeskRenderMovie(bitmapMovie_, objectRect_.size());
}

void TeskMeshCtrl::resizeEvent(QResizeEvent*) {
    LayOut();
}

void TeskMeshCtrl::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().base());
    const QPoint scroll(horizontalScrollBar()->value(), verticalScrollBar()->value());
    if (!bitmap_.isNull())
        painter.drawImage(objectRect_.topLeft() - scroll, bitmap_);
    PaintMesh(painter);
}

void TeskMeshCtrl::PaintMesh(QPainter& painter) const {
    if (!triangulation_)
        return;
    // Inverted lines stay visible over any picture.
    painter.setCompositionMode(QPainter::RasterOp_NotDestination);
    painter.setPen(Qt::black);
    for (int32_t i = 0; i < triangulation_->GetLineCount(); ++i) {
        TeskPoint2D from, to;
        triangulation_->GetLine(i, pointSet_, from, to);
        painter.drawLine(UnitToClient(from), UnitToClient(to));
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::white);
    for (int32_t i = 0; i < triangulation_->GetPointCount(); ++i) {
        const QPoint at = UnitToClient(triangulation_->GetPoint(i, pointSet_));
        if (i == selectedPoint_) {
            painter.setBrush(Qt::black);
            painter.drawEllipse(QRect(at.x() - 3, at.y() - 3, 7, 7));
        } else {
            painter.setBrush(Qt::red);
            painter.drawEllipse(QRect(at.x() - 2, at.y() - 2, 5, 5));
        }
    }
}

void TeskMeshCtrl::mousePressEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    if (event->button() == Qt::LeftButton) {
        buttonDown_ = true;
        downPosition_ = at;
        dragging_ = false;
        SelectAt(at);
    } else if (event->button() == Qt::RightButton) {
        ShowGridMenu(at);
    }
}

void TeskMeshCtrl::SelectAt(QPoint client) {
    if (!triangulation_)
        return;
    const TeskPoint2D p = ClientToUnit(client);
    const double reach = kPickRadius / objectRect_.width();
    int32_t picked = -1;
    for (int32_t i = 0; i < triangulation_->GetPointCount(); ++i) {
        const TeskPoint2D& q = triangulation_->GetPoint(i, pointSet_);
        if (std::abs(q.x - p.x) <= reach && std::abs(q.y - p.y) <= reach) {
            picked = i;
            break;
        }
    }
    SetSelectedPoint(picked);
}

void TeskMeshCtrl::mouseMoveEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    if (!buttonDown_ || selectedPoint_ < 0 || !triangulation_)
        return;
    if (!dragging_) {
        if (std::abs(at.x() - downPosition_.x()) < kDragThreshold &&
            std::abs(at.y() - downPosition_.y()) < kDragThreshold)
            return;
        dragging_ = true;
        dragStart_ = triangulation_->GetPoint(selectedPoint_, pointSet_);
    }
    Drag(at, event->modifiers());
}

void TeskMeshCtrl::Drag(QPoint client, Qt::KeyboardModifiers modifiers) {
    // The mouse's way in unit space, added without rounding to the screen's
    // pixels, so that a straight drag moves the point straight.
    const QPoint way = client - downPosition_;
    const TeskPoint2D target =
        dragStart_ + TeskPoint2D{double(way.x()) / std::max(objectRect_.width() - 1, 1),
                                 double(way.y()) / std::max(objectRect_.height() - 1, 1)};
    MoveSelected(target, modifiers);
    viewport()->update();
}

void TeskMeshCtrl::MoveSelected(TeskPoint2D target, Qt::KeyboardModifiers modifiers) {
    const bool grid = dynamic_cast<TeskEditGridTriangulation*>(triangulation_) != nullptr;
    if (grid && (modifiers & Qt::ControlModifier))
        MoveLine(target, true);
    else if (grid && (modifiers & Qt::ShiftModifier))
        MoveLine(target, false);
    else
        triangulation_->MovePoint(selectedPoint_, pointSet_, target);
}

void TeskMeshCtrl::MoveLine(TeskPoint2D target, bool row) {
    auto& grid = static_cast<TeskEditGridTriangulation&>(*triangulation_);
    TeskEditGridNode* node = nullptr;
    int32_t c = 0, r = 0;
    if (!grid.Root().LocatePoint(selectedPoint_, node, c, r))
        return;
    const TeskPoint2D before = node->At(c, r, pointSet_);
    node->MovePoint(c, r, pointSet_, target);
    // The others follow the point as far as it actually went.
    const TeskPoint2D shift = node->At(c, r, pointSet_) - before;
    const int32_t last = row ? node->across : node->down;
    for (int32_t k = 0; k <= last; ++k) {
        const int32_t kc = row ? k : c;
        const int32_t kr = row ? r : k;
        if (kc == c && kr == r)
            continue;
        TeskPoint2D moved = node->At(kc, kr, pointSet_) + shift;
        node->MovePoint(kc, kr, pointSet_, moved);
    }
}

void TeskMeshCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    buttonDown_ = false;
    if (dragging_) {
        dragging_ = false;
        MeshChanged();
    }
}

void TeskMeshCtrl::mouseDoubleClickEvent(QMouseEvent*) {
    buttonDown_ = false;
}

void TeskMeshCtrl::keyPressEvent(QKeyEvent* event) {
    const int step = (event->modifiers() & Qt::ShiftModifier) ? kLargeNudgeStep : kNudgeStep;
    const int32_t count = triangulation_ ? triangulation_->GetPointCount() : 0;
    switch (event->key()) {
        case Qt::Key_Left:
            return Nudge(-step, 0, event->modifiers());
        case Qt::Key_Right:
            return Nudge(step, 0, event->modifiers());
        case Qt::Key_Up:
            return Nudge(0, -step, event->modifiers());
        case Qt::Key_Down:
            return Nudge(0, step, event->modifiers());
        case Qt::Key_PageDown:
            if (count > 0)
                SetSelectedPoint((selectedPoint_ + 1) % count);
            return;
        case Qt::Key_PageUp:
            if (count > 0)
                SetSelectedPoint((selectedPoint_ + count - 1) % count);
            return;
        case Qt::Key_Escape:
            return SetSelectedPoint(-1);
        case Qt::Key_Plus:
            return ZoomIn();
        case Qt::Key_Minus:
            return ZoomOut();
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

void TeskMeshCtrl::Nudge(int dx, int dy, Qt::KeyboardModifiers modifiers) {
    if (!triangulation_ || selectedPoint_ < 0 || buttonDown_)
        return;
    const TeskPoint2D at = triangulation_->GetPoint(selectedPoint_, pointSet_);
    const TeskPoint2D step{double(dx) / std::max(objectRect_.width() - 1, 1),
                           double(dy) / std::max(objectRect_.height() - 1, 1)};
    // Shift sets the step size here, so only Ctrl carries a row along.
    MoveSelected(at + step, modifiers & Qt::ControlModifier);
    MeshChanged();
}

void TeskMeshCtrl::ShowGridMenu(QPoint client) {
    auto* grid = dynamic_cast<TeskEditGridTriangulation*>(triangulation_);
    TeskEditGridNode* node = nullptr;
    int32_t column = 0, row = 0;
    if (!grid || !grid->HitTest(ClientToUnit(client), pointSet_, node, column, row))
        return;
    const int32_t set = pointSet_;
    const int32_t selected = selectedPoint_;
    const int32_t deleteColumn = std::min(column, node->across - 2);
    const int32_t deleteRow = std::min(row, node->down - 2);
    const auto flipped = [node, column, row] {
        bool& diagonal = node->CellAt(column, row).diagonal;
        diagonal = !diagonal;
        const bool valid = node->IsValid();
        diagonal = !diagonal;
        return valid;
    };
    const auto snaps = [grid, node, selected, set] {
        return selected >= 0 && grid->GetPointSetCount() > 1 &&
               WorksOnCopy(*grid, *node, [&](TeskEditGridTriangulation& copy, TeskEditGridNode&) {
                   const TeskPoint2D there = copy.GetPoint(selected, 1 - set);
                   TeskPoint2D moved = there;
                   copy.MovePoint(selected, set, moved);
                   return copy.GetPoint(selected, set) == there;
               });
    };
    const auto grows = [grid, node](bool columns, int32_t at) {
        return WorksOnCopy(*grid, *node, [&](TeskEditGridTriangulation&, TeskEditGridNode& n) {
            const int32_t before = columns ? n.across : n.down;
            columns ? n.InsertColumn(at) : n.InsertRow(at);
            return (columns ? n.across : n.down) > before;
        });
    };
    const auto shrinks = [grid, node](bool columns, int32_t at) {
        return (columns ? node->across : node->down) > 1 &&
               WorksOnCopy(*grid, *node, [&](TeskEditGridTriangulation&, TeskEditGridNode& n) {
                   columns ? n.DeleteColumn(at) : n.DeleteRow(at);
                   return true;
               });
    };
    const GridCommand commands[] = {
        {"Reverse Diagonal", flipped(), [=] { node->ReverseDiagonal(column, row); }},
        {"Snap Point", snaps(),
         [=] {
             TeskPoint2D there = grid->GetPoint(selected, 1 - set);
             grid->MovePoint(selected, set, there);
         }},
        {"Insert Column", grows(true, column), [=] { node->InsertColumn(column); }},
        {"Delete Column", shrinks(true, deleteColumn), [=] { node->DeleteColumn(deleteColumn); }},
        {"Insert Row", grows(false, row), [=] { node->InsertRow(row); }},
        {"Delete Row", shrinks(false, deleteRow), [=] { node->DeleteRow(deleteRow); }},
        {"Split Grid", node->parent == nullptr,
         [=] { node->SplitCell(column, row)->Resize(2, 2); }},
        {"Unsplit Grid", node->parent != nullptr,
         [=] {
             TeskEditGridNode* parent = node->parent;
             const size_t cell = CellPath(node).back();
             parent->UnsplitCell(static_cast<int32_t>(cell % parent->across),
                                 static_cast<int32_t>(cell / parent->across));
         }},
        {"Reset Uniform Grid", true, [=] { grid->ResetUniform(); }},
    };
    QMenu menu(QStringLiteral("Morph Grid"), this);
    menu.setObjectName(QStringLiteral("morphGridMenu"));
    const std::function<void()>* chosen = nullptr;
    for (const GridCommand& command : commands) {
        QAction* action = menu.addAction(QString::fromUtf8(command.text));
        action->setEnabled(command.enabled);
        connect(action, &QAction::triggered, this, [&chosen, &command] { chosen = &command.run; });
    }
    menu.exec(viewport()->mapToGlobal(client));
    if (!chosen)
        return;
    (*chosen)();
    ValidateSelection();
    if (partner_)
        partner_->ValidateSelection();
    MeshChanged();
}

void TeskMeshCtrl::MeshChanged() {
    viewport()->update();
    if (partner_)
        partner_->viewport()->update();
    emit meshChanged();
}

void TeskMeshCtrl::scrollContentsBy(int, int) {
    viewport()->update();
    SyncScroll();
}

void TeskMeshCtrl::SyncScroll() {
    if (syncing_ || !partner_)
        return;
    syncing_ = true;
    partner_->horizontalScrollBar()->setValue(horizontalScrollBar()->value());
    partner_->verticalScrollBar()->setValue(verticalScrollBar()->value());
    syncing_ = false;
}
