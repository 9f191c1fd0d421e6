#pragma once
// The grid control of a grid effect's page: a button whose drop-down panel
// sets how the effect cuts its object into triangles - chosen from a
// triangle budget, or a grid of a given type, across and down. Each
// application of the panel is one undoable change.
#include <QFrame>
#include <QTimer>
#include <QToolButton>

#include "effects/grid_effect.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QSpinBox;
class TeskFile;
class TeskHelpViewer;

/// The drop-down panel.
class TeskGridComboPopup final : public QFrame {
    Q_OBJECT
  public:
    /// Pause after the last keystroke in a number field before it applies.
    static constexpr int kApplyDelayMs = 2000;
    /// What the fields offer.
    static constexpr int kMinTriangles = 10;
    static constexpr int kMaxTriangles = 200;
    static constexpr int kMaxCells = 15;

    TeskGridComboPopup(TeskFile& file, TeskGridEffect& effect, QWidget* parent = nullptr);

    /// Shows the effect's settings.
    void Load();
    /// Records every field that differs from the effect's settings in one
    /// transaction, named after the field when only one differs.
    void Apply();
    /// The timer of the number fields (tests shorten it).
    QTimer& ApplyTimer() noexcept { return applyTimer_; }

  private:
    QSpinBox* AddNumberField(const char* name, int minimum, int maximum);
    void UpdateEnabled();

    TeskFile& file_;
    TeskGridEffect& effect_;
    QCheckBox* chooseGrid_;
    QLabel* maxTrianglesLabel_;
    QSpinBox* maxTriangles_;
    QLabel* gridTypeLabel_;
    QComboBox* gridType_;
    QLabel* acrossLabel_;
    QSpinBox* across_;
    QLabel* downLabel_;
    QSpinBox* down_;
    // What the number fields showed when loaded: a stored value beyond a
    // field's range shows clamped, and is no change until the user edits it.
    TeskGridEffect::GridSettings shown_;
    QTimer applyTimer_;
};

/// The button that drops the panel down.
class TeskGridCombo final : public QToolButton {
    Q_OBJECT
  public:
    /// The What's This texts of the panel's fields.
    static constexpr const char* kContextHelpFile = "::/GridComboPopup.txt";

    /// With `help`, the panel's fields explain themselves (What's This).
    TeskGridCombo(TeskFile& file, TeskGridEffect& effect, const TeskHelpViewer* help = nullptr,
                  QWidget* parent = nullptr);

    TeskGridComboPopup* GetPopup() const noexcept { return popup_; }
    /// Opens the panel below the button with the effect's current settings.
    void ShowPopup();

  private:
    TeskGridComboPopup* popup_;
};
