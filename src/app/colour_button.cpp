#include "app/colour_button.h"

#include <QColorDialog>
#include <QPixmap>

TeskColourButton::TeskColourButton(COLORREF colour, QWidget* parent)
    : QPushButton(parent), colour_(colour) {
    SetColour(colour);
    connect(this, &QPushButton::clicked, this, &TeskColourButton::Choose);
}

void TeskColourButton::SetColour(COLORREF colour) {
    colour_ = colour;
    QPixmap swatch(32, 16);
    swatch.fill(QColor(ZoGetRed(colour), ZoGetGreen(colour), ZoGetBlue(colour)));
    setIcon(QIcon(swatch));
    setIconSize(swatch.size());
}

void TeskColourButton::Choose() {
    const QColor chosen = QColorDialog::getColor(
        QColor(ZoGetRed(colour_), ZoGetGreen(colour_), ZoGetBlue(colour_)), this);
    if (chosen.isValid())
        SetColour(ZoRGB(static_cast<uint8_t>(chosen.red()), static_cast<uint8_t>(chosen.green()),
                        static_cast<uint8_t>(chosen.blue())));
}
