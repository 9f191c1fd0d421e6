#include "app/pages/animation_path_combo.h"

#include <QListView>
#include <QPainter>
#include <QPainterPath>
#include <array>
#include <cmath>

namespace {

constexpr int kColumns = 4;
constexpr QSize kPictureSize(56, 42);
// Samples along a path for its picture; enough for the curved presets.
constexpr int kSamples = 96;

constexpr std::array<const char*, TeskAnimationPath::kPresetCount> kPresetNames{
    "Left to right",
    "Right to left",
    "Top to bottom",
    "Bottom to top",
    "Top left to bottom right",
    "Bottom right to top left",
    "Top right to bottom left",
    "Bottom left to top right",
    "Clockwise circle",
    "Anticlockwise circle",
    "Square, clockwise",
    "Square, anticlockwise",
    "Figure of eight",
    "Zigzag",
    "Arch",
    "Wave"};

// Where an arrow head goes on the segment that starts at node `i`, and which
// way it points; nothing for nodes that start no drawn segment.
std::optional<std::pair<TeskPoint2D, TeskPoint2D>> SegmentMiddle(const TeskAnimationPath& path,
                                                                 int32_t i) {
    const int32_t kind = path.GetNode(i).kind;
    auto at = [&](int32_t k) { return path.GetNode(i + k).point; };
    if (kind == TeskAnimationPath::kLine && i + 1 < path.GetNodeCount()) {
        const TeskPoint2D a = at(0), b = at(1);
        return std::pair{TeskPoint2D{(a.x + b.x) / 2, (a.y + b.y) / 2},
                         TeskPoint2D{b.x - a.x, b.y - a.y}};
    }
    if (kind == TeskAnimationPath::kCubic && i + 3 < path.GetNodeCount()) {
        const TeskPoint2D p0 = at(0), p1 = at(1), p2 = at(2), p3 = at(3);
        // The curve and its direction at parameter one half.
        return std::pair{TeskPoint2D{(p0.x + 3 * p1.x + 3 * p2.x + p3.x) / 8,
                                     (p0.y + 3 * p1.y + 3 * p2.y + p3.y) / 8},
                         TeskPoint2D{p3.x + p2.x - p1.x - p0.x, p3.y + p2.y - p1.y - p0.y}};
    }
    return std::nullopt;
}

void DrawArrowHead(QPainter& painter, QPointF tip, QPointF direction) {
    const double length = std::hypot(direction.x(), direction.y());
    if (length == 0.0)
        return;
    const QPointF along = direction / length * 5.0;
    const QPointF across(-along.y() * 0.6, along.x() * 0.6);
    painter.drawPolygon(QPolygonF{tip + along, tip - along + across, tip - along - across});
}

}  // namespace

TeskAnimationPathCombo::TeskAnimationPathCombo(QWidget* parent) : QComboBox(parent) {
    auto* grid = new QListView;
    grid->setViewMode(QListView::IconMode);
    grid->setFlow(QListView::LeftToRight);
    grid->setWrapping(true);
    grid->setMovement(QListView::Static);
    grid->setResizeMode(QListView::Adjust);
    grid->setSpacing(4);
    grid->setIconSize(kPictureSize);
    grid->setGridSize(kPictureSize + QSize(10, 10));
    grid->setMinimumWidth(kColumns * (kPictureSize.width() + 10) + 8);
    setView(grid);
    setIconSize(kPictureSize);
    for (int32_t i = 0; i < TeskAnimationPath::kPresetCount; ++i) {
        addItem(QIcon(DrawPath(TeskAnimationPath::Preset(i), kPictureSize)), QString(), i);
        setItemData(i, QString::fromUtf8(kPresetNames[i]), Qt::ToolTipRole);
    }
}

void TeskAnimationPathCombo::SetSelectedPath(const TeskAnimationPath& path) {
    for (int32_t i = 0; i < TeskAnimationPath::kPresetCount; ++i) {
        if (TeskAnimationPath::Preset(i) == path) {
            setCurrentIndex(i);
            return;
        }
    }
    setCurrentIndex(-1);
}

std::optional<TeskAnimationPath> TeskAnimationPathCombo::GetSelectedPath() const {
    if (currentIndex() < 0)
        return std::nullopt;
    return TeskAnimationPath::Preset(currentIndex());
}

QPixmap TeskAnimationPathCombo::DrawPath(const TeskAnimationPath& path, QSize size) {
    QPixmap picture(size);
    picture.fill(Qt::white);
    if (path.GetKeyCount() < 2)
        return picture;
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    // Presets reach a tenth beyond the object; the frame shows the object.
    const QRectF object(size.width() * 0.15, size.height() * 0.15, size.width() * 0.7,
                        size.height() * 0.7);
    auto place = [&](TeskPoint2D p) {
        return QPointF(object.left() + p.x * object.width(), object.top() + p.y * object.height());
    };
    painter.setPen(QPen(Qt::lightGray, 1.0, Qt::DashLine));
    painter.drawRect(object);
    QPainterPath line(place(path.Evaluate(0.0)));
    for (int s = 1; s <= kSamples; ++s)
        line.lineTo(place(path.Evaluate(static_cast<double>(s) / kSamples)));
    painter.setPen(QPen(Qt::darkBlue, 1.5));
    painter.drawPath(line);
    painter.setBrush(Qt::darkBlue);
    for (int32_t i = 0; i < path.GetNodeCount(); ++i) {
        if (const auto middle = SegmentMiddle(path, i))
            DrawArrowHead(
                painter, place(middle->first),
                QPointF(middle->second.x * object.width(), middle->second.y * object.height()));
    }
    return picture;
}
