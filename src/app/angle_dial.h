#pragma once
// An angle as designers set it: a round dial to drag or turn with the keys,
// beside a field for the exact number of degrees. Angles read like a compass
// on the screen: 0 points up and they grow clockwise.
#include <QWidget>
#include <cstdint>

class QSpinBox;

/// The dial's face: a pointer that follows the mouse and the arrow keys.
class TeskAngleFace final : public QWidget {
    Q_OBJECT
  public:
    explicit TeskAngleFace(QWidget* parent = nullptr);

    /// Degrees 0..359.
    int GetDegrees() const noexcept { return degrees_; }
    void SetDegrees(int degrees);

    QSize sizeHint() const override { return {48, 48}; }

    /// The compass angle (0 up, clockwise, 0..359) of the direction from the
    /// centre to `offset` (y down); 0 for the centre itself.
    static int DegreesTowards(QPointF offset) noexcept;

  signals:
    /// The user turned the dial.
    void degreesEdited(int degrees);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void PointAt(QPointF position, Qt::KeyboardModifiers modifiers);
    void Turn(int step);

    int degrees_ = 0;
};

class TeskAngleDial final : public QWidget {
    Q_OBJECT
  public:
    explicit TeskAngleDial(QWidget* parent = nullptr);

    /// The stored angle. An angle outside 0..359 shows as its turn within
    /// the circle but is given back unchanged until the user edits it.
    int32_t GetAngle() const noexcept { return angle_; }
    /// Shows `degrees` without reporting an edit.
    void SetAngle(int32_t degrees);

  signals:
    /// The user changed the angle, by dial or by field.
    void angleEdited(int32_t degrees);

  private:
    void TakeEdit(int degrees);

    TeskAngleFace* face_;
    QSpinBox* field_;
    int32_t angle_ = 0;
};

/// `degrees` brought into 0..359.
int TeskNormalDegrees(int64_t degrees) noexcept;
