#pragma once
// "Tip of the Day": one short hint at a time about getting more out of
// Vimbo, offered when the editor opens until the user turns it off, and
// always available from the Help menu. Tips are shown in turn across runs.
#include <QDialog>
#include <span>

class QCheckBox;
class QLabel;
class QSettings;

class TeskTipOfTheDay final : public QDialog {
    Q_OBJECT
  public:
    /// Where the choice and the place in the tips are kept.
    static constexpr const char* kShowAtStartupKey = "Tip of the Day/Show At Startup";
    static constexpr const char* kNextTipKey = "Tip of the Day/Next Tip";

    /// Every tip, in the order they are shown.
    static std::span<const char* const> Tips();

    /// Opens on the next tip of `settings`; closing it moves the place on
    /// and stores the "show at startup" choice.
    explicit TeskTipOfTheDay(QSettings& settings, QWidget* parent = nullptr);

    /// Whether the user wants tips when the editor opens (true at first).
    static bool ShowsAtStartup(QSettings& settings);

    /// The tip on show.
    int GetTipIndex() const noexcept { return tip_; }
    void ShowNextTip();

  protected:
    void done(int result) override;

  private:
    void ShowTip(int index);

    QSettings& settings_;
    int tip_ = 0;
    QLabel* text_;
    QCheckBox* showAtStartup_;
};
