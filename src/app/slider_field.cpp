#include "app/slider_field.h"

#include <QGridLayout>
#include <QLabel>
#include <QSlider>
#include <algorithm>

TeskSliderField::TeskSliderField(int minimum, int maximum, const char* lowText,
                                 const char* highText, QWidget* parent)
    : QWidget(parent) {
    slider_ = new QSlider(Qt::Horizontal);
    slider_->setRange(minimum, maximum);
    // Page Up/Down and clicks beside the handle move a tenth of the range.
    slider_->setPageStep(std::max(1, (maximum - minimum) / 10));
    number_ = new QLabel;
    number_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    number_->setMinimumWidth(number_->fontMetrics().horizontalAdvance(QStringLiteral("-0000")));
    auto* low = new QLabel(QString::fromUtf8(lowText));
    auto* high = new QLabel(QString::fromUtf8(highText));
    high->setAlignment(Qt::AlignRight);
    for (QLabel* end : {low, high}) {
        QFont small = end->font();
        small.setPointSizeF(small.pointSizeF() * 0.85);
        end->setFont(small);
        end->setForegroundRole(QPalette::PlaceholderText);
    }
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(0);
    grid->addWidget(slider_, 0, 0, 1, 2);
    grid->addWidget(number_, 0, 2);
    grid->addWidget(low, 1, 0);
    grid->addWidget(high, 1, 1);
    setFocusProxy(slider_);
    connect(slider_, &QSlider::valueChanged, this, [this](int value) {
        if (quiet_)
            return;
        value_ = value;
        ShowValue(value);
        emit valueEdited(value);
    });
    SetValue(slider_->value());
}

void TeskSliderField::SetValue(int value) {
    value_ = value;
    quiet_ = true;
    slider_->setValue(value);
    quiet_ = false;
    ShowValue(value);
}

void TeskSliderField::ShowValue(int value) {
    number_->setText(QString::number(value));
}
