#pragma once
// A slider for a setting with a range, the words for its two ends beneath it
// ("Short" ... "Long") and its exact value beside it.
#include <QWidget>

class QLabel;
class QSlider;

class TeskSliderField final : public QWidget {
    Q_OBJECT
  public:
    TeskSliderField(int minimum, int maximum, const char* lowText, const char* highText,
                    QWidget* parent = nullptr);

    /// The value shown; a stored value beyond the range is kept, with the
    /// slider at its end, until the user moves it.
    int GetValue() const noexcept { return value_; }
    /// Shows `value` without reporting an edit.
    void SetValue(int value);
    QSlider* GetSlider() const noexcept { return slider_; }

  signals:
    void valueEdited(int value);

  private:
    void ShowValue(int value);

    QSlider* slider_;
    QLabel* number_;
    int value_ = 0;
    bool quiet_ = false;
};
