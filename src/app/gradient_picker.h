#pragma once
// The graduated-fill picker: the gradient as a bar with a marker under it
// for every stop. Click a marker to select its stop, drag it to move the
// stop, double-click the bar to add a stop there in the colour the bar has
// at that point; the arrow keys move the selected stop and Delete removes it.
#include <QWidget>

class TeskGraduatedObject;

class TeskGradientPicker final : public QWidget {
    Q_OBJECT
  public:
    explicit TeskGradientPicker(TeskGraduatedObject& object, QWidget* parent = nullptr);

    /// The bar's x coordinate of stop position `position` (0..255), and back.
    int PositionToX(int position) const noexcept;
    int XToPosition(int x) const noexcept;

    QSize sizeHint() const override { return {260, 44}; }

  signals:
    /// The stops changed (moved, added, removed).
    void stopsChanged();
    /// Another stop was selected.
    void selectionChanged();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QRect BarRect() const noexcept;
    /// The stop whose marker is under `x`, -1 for none.
    int StopAt(int x) const noexcept;
    void Select(int stop);
    /// Moves the selected stop to `position`, kept between its neighbours.
    void MoveSelected(int position);
    void AddStopAt(int position);

    TeskGraduatedObject& object_;
    bool dragging_ = false;
};
