#pragma once
// A button that shows a colour and lets the user pick another.
#include <QPushButton>

#include "platform/zo_colour.h"

class TeskColourButton final : public QPushButton {
    Q_OBJECT
  public:
    explicit TeskColourButton(COLORREF colour, QWidget* parent = nullptr);

    COLORREF GetColour() const noexcept { return colour_; }
    void SetColour(COLORREF colour);

  private:
    void Choose();

    COLORREF colour_;
};
