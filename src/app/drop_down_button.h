#pragma once
// A button that drops a panel of further settings down beneath itself, as
// the grid and lighting controls of the property pages do. The panel closes
// when the user clicks elsewhere or presses Escape.
#include <QToolButton>

class TeskDropDownButton final : public QToolButton {
    Q_OBJECT
  public:
    /// Takes `panel` (made a pop-up window) and shows it on a click.
    TeskDropDownButton(const QString& text, const QIcon& icon, QWidget* panel,
                       QWidget* parent = nullptr);

    QWidget* GetPanel() const noexcept { return panel_; }
    void ShowPanel();

  private:
    QWidget* panel_;
};
