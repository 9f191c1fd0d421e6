#include "app/angle_dial.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QWheelEvent>
#include <cmath>
#include <numbers>

namespace {

constexpr int kFineStep = 1;
constexpr int kCoarseStep = 15;

// With Shift held the pointer snaps to the nearest multiple of this.
constexpr int kSnap = 15;

}  // namespace

int TeskNormalDegrees(int64_t degrees) noexcept {
    const int64_t turn = degrees % 360;
    return static_cast<int>(turn < 0 ? turn + 360 : turn);
}

TeskAngleFace::TeskAngleFace(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setMinimumSize(36, 36);
}

void TeskAngleFace::SetDegrees(int degrees) {
    degrees_ = TeskNormalDegrees(degrees);
    update();
}

int TeskAngleFace::DegreesTowards(QPointF offset) noexcept {
    if (offset.isNull())
        return 0;
    // atan2 of (x, -y) measures from "up", clockwise on a y-down screen.
    const double radians = std::atan2(offset.x(), -offset.y());
    return TeskNormalDegrees(std::lround(radians * 180.0 / std::numbers::pi));
}

void TeskAngleFace::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = std::min(width(), height()) - 4.0;
    const QRectF circle((width() - side) / 2.0, (height() - side) / 2.0, side, side);
    const QPointF centre = circle.center();
    const QPalette& colours = palette();
    painter.setPen(QPen(colours.color(QPalette::Mid), 1.0));
    painter.setBrush(colours.color(QPalette::Base));
    painter.drawEllipse(circle);
    // Ticks every 45 degrees help to hit the common directions by eye.
    for (int tick = 0; tick < 360; tick += 45) {
        const double a = tick * std::numbers::pi / 180.0;
        const QPointF along(std::sin(a), -std::cos(a));
        painter.drawLine(centre + along * (side / 2.0 - 4.0), centre + along * (side / 2.0));
    }
    const double a = degrees_ * std::numbers::pi / 180.0;
    const QPointF tip = centre + QPointF(std::sin(a), -std::cos(a)) * (side / 2.0 - 3.0);
    const QColor pointer =
        hasFocus() ? colours.color(QPalette::Highlight) : colours.color(QPalette::WindowText);
    painter.setPen(QPen(pointer, 2.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(centre, tip);
    painter.setBrush(pointer);
    painter.drawEllipse(tip, 2.5, 2.5);
}

void TeskAngleFace::PointAt(QPointF position, Qt::KeyboardModifiers modifiers) {
    const QPointF centre(width() / 2.0, height() / 2.0);
    int degrees = DegreesTowards(position - centre);
    if (modifiers & Qt::ShiftModifier)
        degrees = TeskNormalDegrees((degrees + kSnap / 2) / kSnap * kSnap);
    if (degrees == degrees_)
        return;
    SetDegrees(degrees);
    emit degreesEdited(degrees_);
}

void TeskAngleFace::Turn(int step) {
    SetDegrees(degrees_ + step);
    emit degreesEdited(degrees_);
}

void TeskAngleFace::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        PointAt(event->position(), event->modifiers());
}

void TeskAngleFace::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton)
        PointAt(event->position(), event->modifiers());
}

void TeskAngleFace::keyPressEvent(QKeyEvent* event) {
    const int step = (event->modifiers() & Qt::ShiftModifier) ? kCoarseStep : kFineStep;
    switch (event->key()) {
        case Qt::Key_Right:
        case Qt::Key_Up:
            Turn(step);
            break;
        case Qt::Key_Left:
        case Qt::Key_Down:
            Turn(-step);
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

void TeskAngleFace::wheelEvent(QWheelEvent* event) {
    const int notches = event->angleDelta().y() / 120;
    if (notches == 0) {
        event->ignore();
        return;
    }
    Turn(notches * ((event->modifiers() & Qt::ShiftModifier) ? kCoarseStep : kFineStep));
}

TeskAngleDial::TeskAngleDial(QWidget* parent) : QWidget(parent) {
    face_ = new TeskAngleFace;
    field_ = new QSpinBox;
    field_->setRange(0, 359);
    field_->setWrapping(true);
    field_->setSuffix(QStringLiteral("°"));
    field_->setKeyboardTracking(false);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(face_);
    layout->addWidget(field_);
    layout->addStretch(1);
    setFocusProxy(face_);
    connect(face_, &TeskAngleFace::degreesEdited, this, &TeskAngleDial::TakeEdit);
    connect(field_, &QSpinBox::valueChanged, this, &TeskAngleDial::TakeEdit);
}

void TeskAngleDial::SetAngle(int32_t degrees) {
    angle_ = degrees;
    const QSignalBlocker blockFace(face_);
    const QSignalBlocker blockField(field_);
    face_->SetDegrees(TeskNormalDegrees(degrees));
    field_->setValue(TeskNormalDegrees(degrees));
}

void TeskAngleDial::TakeEdit(int degrees) {
    if (degrees == TeskNormalDegrees(angle_))
        return;
    SetAngle(degrees);
    emit angleEdited(angle_);
}
