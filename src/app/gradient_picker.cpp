#include "app/gradient_picker.h"

#include <QKeyEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "objects/graduated_object.h"

namespace {

constexpr int kMargin = 6;  // room for the end markers to hang past the bar
constexpr int kMarkerHeight = 10;
constexpr int kMarkerHalfWidth = 5;
constexpr int kLargeStep = 10;

QColor ToQColor(const ZoFlash::ZoSWFColour& colour) {
    return QColor(colour.GetRed(), colour.GetGreen(), colour.GetBlue());
}

/// The colour the gradient has at `position`, between the stops around it.
ZoFlash::ZoSWFColour ColourAt(const TeskGraduatedObject& object, int position) {
    const auto& colours = object.GetColours();
    const auto& positions = object.GetPositions();
    if (position <= positions.front())
        return colours.front();
    for (size_t i = 1; i < positions.size(); ++i) {
        if (position > positions[i])
            continue;
        const int span = std::max(positions[i] - positions[i - 1], 1);
        const double t = double(position - positions[i - 1]) / span;
        auto mix = [t](uint8_t a, uint8_t b) {
            return static_cast<uint8_t>(a + (b - a) * t + 0.5);
        };
        const auto& a = colours[i - 1];
        const auto& b = colours[i];
        return {mix(a.GetRed(), b.GetRed()), mix(a.GetGreen(), b.GetGreen()),
                mix(a.GetBlue(), b.GetBlue()), 255};
    }
    return colours.back();
}

}  // namespace

TeskGradientPicker::TeskGradientPicker(TeskGraduatedObject& object, QWidget* parent)
    : QWidget(parent), object_(object) {
    setObjectName(QStringLiteral("gradientPicker"));
    setFocusPolicy(Qt::StrongFocus);
    setMinimumHeight(36);
    setToolTip(QStringLiteral("Drag a marker to move its colour; double-click to add one"));
}

QRect TeskGradientPicker::BarRect() const noexcept {
    return {kMargin, 2, std::max(width() - 2 * kMargin, 1),
            std::max(height() - kMarkerHeight - 4, 4)};
}

int TeskGradientPicker::PositionToX(int position) const noexcept {
    const QRect bar = BarRect();
    return bar.left() + position * (bar.width() - 1) / TeskGraduatedObject::kMaxPosition;
}

int TeskGradientPicker::XToPosition(int x) const noexcept {
    const QRect bar = BarRect();
    const int position =
        ((x - bar.left()) * TeskGraduatedObject::kMaxPosition + (bar.width() - 1) / 2) /
        std::max(bar.width() - 1, 1);
    return std::clamp(position, 0, int(TeskGraduatedObject::kMaxPosition));
}

int TeskGradientPicker::StopAt(int x) const noexcept {
    // The selected stop wins where markers overlap, so that it can always be dragged.
    const auto& positions = object_.GetPositions();
    const int selected = static_cast<int>(object_.GetSelected());
    if (std::abs(PositionToX(positions[selected]) - x) <= kMarkerHalfWidth)
        return selected;
    for (size_t i = 0; i < positions.size(); ++i)
        if (std::abs(PositionToX(positions[i]) - x) <= kMarkerHalfWidth)
            return static_cast<int>(i);
    return -1;
}

void TeskGradientPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect bar = BarRect();
    const auto& colours = object_.GetColours();
    const auto& positions = object_.GetPositions();
    QLinearGradient gradient(bar.topLeft(), bar.topRight());
    for (size_t i = 0; i < colours.size(); ++i)
        gradient.setColorAt(positions[i] / double(TeskGraduatedObject::kMaxPosition),
                            ToQColor(colours[i]));
    painter.fillRect(bar, gradient);
    painter.setPen(palette().mid().color());
    painter.drawRect(bar.adjusted(0, 0, -1, -1));
    painter.setRenderHint(QPainter::Antialiasing);
    for (size_t i = 0; i < colours.size(); ++i) {
        const int x = PositionToX(positions[i]);
        const int top = bar.bottom() + 1;
        const QPolygon marker({{x, top},
                               {x - kMarkerHalfWidth, top + kMarkerHeight},
                               {x + kMarkerHalfWidth, top + kMarkerHeight}});
        const bool selected = i == object_.GetSelected();
        painter.setPen(QPen(selected ? palette().highlight().color() : palette().text().color(),
                            selected ? 2 : 1));
        painter.setBrush(ToQColor(colours[i]));
        painter.drawPolygon(marker);
    }
}

void TeskGradientPicker::Select(int stop) {
    if (stop < 0 || static_cast<size_t>(stop) == object_.GetSelected())
        return;
    object_.SetSelected(static_cast<size_t>(stop));
    update();
    emit selectionChanged();
}

void TeskGradientPicker::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const int stop = StopAt(event->position().toPoint().x());
    Select(stop);
    dragging_ = stop >= 0;
}

void TeskGradientPicker::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_)
        MoveSelected(XToPosition(event->position().toPoint().x()));
}

void TeskGradientPicker::mouseReleaseEvent(QMouseEvent*) {
    dragging_ = false;
}

void TeskGradientPicker::mouseDoubleClickEvent(QMouseEvent* event) {
    const int x = event->position().toPoint().x();
    if (StopAt(x) < 0)
        AddStopAt(XToPosition(x));
}

void TeskGradientPicker::keyPressEvent(QKeyEvent* event) {
    const int step = (event->modifiers() & Qt::ShiftModifier) ? kLargeStep : 1;
    const int position = object_.GetPositions()[object_.GetSelected()];
    switch (event->key()) {
        case Qt::Key_Left:
            return MoveSelected(position - step);
        case Qt::Key_Right:
            return MoveSelected(position + step);
        case Qt::Key_Delete:
            if (object_.RemoveColour(object_.GetSelected())) {
                update();
                emit stopsChanged();
                emit selectionChanged();
            }
            return;
        default:
            QWidget::keyPressEvent(event);
    }
}

void TeskGradientPicker::MoveSelected(int position) {
    std::vector<int32_t> positions = object_.GetPositions();
    const size_t selected = object_.GetSelected();
    const int lowest = selected == 0 ? 0 : positions[selected - 1];
    const int highest = selected + 1 == positions.size() ? TeskGraduatedObject::kMaxPosition
                                                         : positions[selected + 1];
    position = std::clamp(position, lowest, highest);
    if (position == positions[selected])
        return;
    positions[selected] = position;
    object_.SetStops(object_.GetColours(), std::move(positions));
    update();
    emit stopsChanged();
}

void TeskGradientPicker::AddStopAt(int position) {
    std::vector<ZoFlash::ZoSWFColour> colours = object_.GetColours();
    std::vector<int32_t> positions = object_.GetPositions();
    if (colours.size() >= TeskGraduatedObject::kMaxStops)
        return;
    const auto at = std::upper_bound(positions.begin(), positions.end(), position);
    const auto index = at - positions.begin();
    colours.insert(colours.begin() + index, ColourAt(object_, position));
    positions.insert(at, position);
    object_.SetStops(std::move(colours), std::move(positions));
    object_.SetSelected(static_cast<size_t>(index));
    update();
    emit stopsChanged();
    emit selectionChanged();
}
