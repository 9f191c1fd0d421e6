#pragma once
// Number fields with spin buttons: whole numbers, and times that are stored
// in milliseconds but shown and typed in seconds.
#include <QDoubleSpinBox>
#include <QSpinBox>
#include <cstdint>
#include <optional>

/// A whole number within a range, stepped by the buttons, the arrow keys
/// (ten at a time with Page Up and Down) and the mouse wheel.
class TeskIntegerField final : public QSpinBox {
    Q_OBJECT
  public:
    TeskIntegerField(int minimum, int maximum, QWidget* parent = nullptr);
};

/// A time in milliseconds, shown in seconds ("1.50 s"). Typing "750 ms"
/// gives 750 ms, a bare number means seconds.
class TeskTimeField final : public QDoubleSpinBox {
    Q_OBJECT
  public:
    TeskTimeField(int32_t minimumMs, int32_t maximumMs, QWidget* parent = nullptr);

    int32_t GetMilliseconds() const noexcept;
    void SetMilliseconds(int32_t ms);

    /// The seconds that `text` stands for ("1.5", "1.5 s", "1500 ms",
    /// "2 secs"), or nothing when it is not a time.
    static std::optional<double> ParseSeconds(const QString& text);

  protected:
    double valueFromText(const QString& text) const override;
    QValidator::State validate(QString& text, int& position) const override;
};
