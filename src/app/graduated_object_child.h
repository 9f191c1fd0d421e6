#pragma once
#include <QWidget>
#include <functional>

class QDial;
class QPushButton;
class QSpinBox;
class QToolButton;
class TeskColourButton;
class TeskGradientPicker;
class TeskGraduatedObject;

/// The "Graduated Colour" page of the object dialog: up to eight colour
/// stops, linear or radial, and the angle of a linear gradient.
class TeskGraduatedObjectChild final : public QWidget {
  public:
    /// Edits `object` directly and calls `changed` after every change.
    TeskGraduatedObjectChild(TeskGraduatedObject& object, std::function<void()> changed,
                             QWidget* parent = nullptr);

  private:
    QWidget* MakeTypeButtons();
    QWidget* MakeAngleControls();
    /// Shows the object's values after the stops or their selection changed.
    void ShowStops();
    void Changed();

    TeskGraduatedObject& object_;
    std::function<void()> changed_;
    TeskGradientPicker* picker_;
    QToolButton* linear_;
    QToolButton* radial_;
    TeskColourButton* colour_;
    QSpinBox* position_;
    QPushButton* add_;
    QPushButton* remove_;
    QDial* dial_;
    QSpinBox* angle_;
};
