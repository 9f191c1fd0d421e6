#include "app/graduated_object_child.h"

#include <QButtonGroup>
#include <QDial>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLinearGradient>
#include <QPainter>
#include <QPushButton>
#include <QRadialGradient>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

#include "app/colour_button.h"
#include "app/gradient_picker.h"
#include "objects/graduated_object.h"

namespace {

constexpr int kFullTurn = 360;
// The dial's zero points down and it turns clockwise; the gradient's zero
// points right and also turns clockwise on screen.
constexpr int kDialOffset = 270;

int NormalisedAngle(int degrees) {
    return ((degrees % kFullTurn) + kFullTurn) % kFullTurn;
}

QIcon GradientIcon(bool radial) {
    QPixmap pixmap(24, 24);
    QPainter painter(&pixmap);
    if (radial) {
        QRadialGradient gradient(QPointF(12, 12), 12);
        gradient.setColorAt(0, Qt::white);
        gradient.setColorAt(1, Qt::black);
        painter.fillRect(pixmap.rect(), gradient);
    } else {
        QLinearGradient gradient(0, 0, 24, 0);
        gradient.setColorAt(0, Qt::white);
        gradient.setColorAt(1, Qt::black);
        painter.fillRect(pixmap.rect(), gradient);
    }
    return QIcon(pixmap);
}

}  // namespace

TeskGraduatedObjectChild::TeskGraduatedObjectChild(TeskGraduatedObject& object,
                                                   std::function<void()> changed, QWidget* parent)
    : QWidget(parent), object_(object), changed_(std::move(changed)) {
    setObjectName(QStringLiteral("graduatedPage"));
    picker_ = new TeskGradientPicker(object);
    colour_ = new TeskColourButton(0);
    colour_->setObjectName(QStringLiteral("stopColour"));
    position_ = new QSpinBox;
    position_->setObjectName(QStringLiteral("stopPosition"));
    position_->setRange(0, TeskGraduatedObject::kMaxPosition);
    // Typing "120" passes through 1 and 12, which a left neighbour at 100
    // would refuse, putting the old value back under the user's fingers.
    position_->setKeyboardTracking(false);
    add_ = new QPushButton(QStringLiteral("&Add"));
    add_->setObjectName(QStringLiteral("addColour"));
    add_->setToolTip(QStringLiteral("Add Colour"));
    remove_ = new QPushButton(QStringLiteral("Re&move"));
    remove_->setObjectName(QStringLiteral("removeColour"));
    remove_->setToolTip(QStringLiteral("Remove Colour"));

    auto* stopRow = new QHBoxLayout;
    stopRow->addWidget(colour_);
    stopRow->addWidget(position_);
    stopRow->addStretch(1);
    stopRow->addWidget(add_);
    stopRow->addWidget(remove_);

    auto* form = new QFormLayout(this);
    form->addRow(MakeTypeButtons());
    form->addRow(picker_);
    form->addRow(QStringLiteral("Colour:"), stopRow);
    form->addRow(QStringLiteral("A&ngle:"), MakeAngleControls());

    connect(picker_, &TeskGradientPicker::stopsChanged, this, [this] { Changed(); });
    connect(picker_, &TeskGradientPicker::selectionChanged, this,
            &TeskGraduatedObjectChild::ShowStops);
    connect(colour_, &TeskColourButton::colourChosen, this, [this](COLORREF colour) {
        object_.SetColour(object_.GetSelected(), ZoFlash::ZoSWFColour(colour, 255));
        Changed();
    });
    connect(position_, &QSpinBox::valueChanged, this, [this](int position) {
        std::vector<int32_t> positions = object_.GetPositions();
        positions[object_.GetSelected()] = position;
        if (object_.SetStops(object_.GetColours(), std::move(positions)))
            Changed();
        else
            ShowStops();  // out of order: back to where it was
    });
    connect(add_, &QPushButton::clicked, this, [this] {
        if (object_.AddColour())
            Changed();
    });
    connect(remove_, &QPushButton::clicked, this, [this] {
        if (object_.RemoveColour(object_.GetSelected()))
            Changed();
    });
    ShowStops();
}

QWidget* TeskGraduatedObjectChild::MakeTypeButtons() {
    auto* strip = new QWidget;
    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* group = new QButtonGroup(strip);
    const struct {
        QToolButton*& button;
        const char* name;
        const char* tip;
        int32_t type;
    } types[] = {{linear_, "linearGradient", "Linear Gradient", kTeskLinearGradient},
                 {radial_, "radialGradient", "Radial Gradient", kTeskRadialGradient}};
    for (const auto& type : types) {
        type.button = new QToolButton;
        type.button->setObjectName(QString::fromUtf8(type.name));
        type.button->setToolTip(QString::fromUtf8(type.tip));
        type.button->setIcon(GradientIcon(type.type == kTeskRadialGradient));
        type.button->setCheckable(true);
        type.button->setChecked(object_.GetGradientType() == type.type);
        group->addButton(type.button, type.type);
        layout->addWidget(type.button);
    }
    layout->addStretch(1);
    connect(group, &QButtonGroup::idClicked, this, [this](int type) {
        object_.SetGradientType(type);
        Changed();
    });
    return strip;
}

QWidget* TeskGraduatedObjectChild::MakeAngleControls() {
    dial_ = new QDial;
    dial_->setObjectName(QStringLiteral("angleDial"));
    dial_->setRange(0, kFullTurn - 1);
    dial_->setWrapping(true);
    dial_->setNotchesVisible(true);
    dial_->setNotchTarget(15);
    dial_->setFixedSize(56, 56);
    angle_ = new QSpinBox;
    angle_->setObjectName(QStringLiteral("angle"));
    angle_->setRange(0, kFullTurn - 1);
    angle_->setWrapping(true);
    angle_->setSuffix(QStringLiteral("\u00b0"));
    const int angle = NormalisedAngle(object_.GetAngle());
    angle_->setValue(angle);
    dial_->setValue(NormalisedAngle(angle + kDialOffset));
    connect(dial_, &QDial::valueChanged, this,
            [this](int value) { angle_->setValue(NormalisedAngle(value - kDialOffset)); });
    connect(angle_, &QSpinBox::valueChanged, this, [this](int degrees) {
        const QSignalBlocker quiet(dial_);
        dial_->setValue(NormalisedAngle(degrees + kDialOffset));
        object_.SetAngle(degrees);
        Changed();
    });
    auto* strip = new QWidget;
    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(dial_);
    layout->addWidget(angle_);
    layout->addStretch(1);
    return strip;
}

void TeskGraduatedObjectChild::ShowStops() {
    const size_t selected = object_.GetSelected();
    colour_->SetColour(object_.GetColours()[selected].GetCOLORREF());
    {
        const QSignalBlocker quiet(position_);
        position_->setValue(object_.GetPositions()[selected]);
    }
    add_->setEnabled(object_.GetColours().size() < TeskGraduatedObject::kMaxStops);
    remove_->setEnabled(object_.GetColours().size() > 1);
    const bool linear = object_.GetGradientType() == kTeskLinearGradient;
    dial_->setEnabled(linear);
    angle_->setEnabled(linear);
    picker_->update();
}

void TeskGraduatedObjectChild::Changed() {
    ShowStops();
    changed_();
}
