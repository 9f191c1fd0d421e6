#include "app/solid_object_child.h"

#include <QFormLayout>

#include "app/colour_button.h"
#include "objects/solid_object.h"

TeskSolidObjectChild::TeskSolidObjectChild(TeskSolidObject& object, std::function<void()> changed,
                                           QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("solidPage"));
    auto* colour = new TeskColourButton(object.GetColour());
    colour->setObjectName(QStringLiteral("solidColour"));
    connect(colour, &TeskColourButton::colourChosen, this,
            [&object, changed = std::move(changed)](COLORREF chosen) {
                object.SetColour(chosen);
                changed();
            });
    auto* form = new QFormLayout(this);
    form->addRow(QStringLiteral("&Colour:"), colour);
}
