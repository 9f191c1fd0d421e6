#pragma once
// A button that shows a colour and drops down a palette: common colours,
// the colours chosen lately in any button, optionally "Transparent", and
// "More Colours..." for the full chooser with its screen picker.
#include <QPushButton>

#include "platform/zo_colour.h"

class QMenu;

/// Our colour values as Qt's colours, and back.
QColor TeskToQColor(COLORREF colour);
COLORREF TeskFromQColor(const QColor& colour);

class TeskColourButton final : public QPushButton {
    Q_OBJECT
  public:
    /// `allowTransparent` adds the "Transparent" entry, which stands for
    /// kZoNoColour.
    explicit TeskColourButton(COLORREF colour, QWidget* parent = nullptr,
                              bool allowTransparent = false);

    COLORREF GetColour() const noexcept { return colour_; }
    /// Shows `colour` without telling anyone.
    void SetColour(COLORREF colour);

  signals:
    /// The user picked `colour` (kZoNoColour for "Transparent").
    void colourChosen(COLORREF colour);

  private:
    void Choose(COLORREF colour);
    void ChooseMore();
    void RebuildPalette();

    COLORREF colour_;
    bool allowTransparent_;
    QMenu* palette_;
};
