#include "app/lighting_control.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QPainter>
#include <QRadialGradient>

#include "app/angle_dial.h"
#include "app/colour_button.h"
#include "app/context_help.h"
#include "app/edit_batch.h"
#include "app/slider_field.h"
#include "effects/three_d_effect.h"

namespace {

QLabel* MakeTitle(const char* text) {
    auto* title = new QLabel(QString::fromUtf8(text));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    large.setBold(true);
    title->setFont(large);
    return title;
}

}  // namespace

TeskLightingControl::TeskLightingControl(TeskFile& document, Tesk3DEffect& effect,
                                         const TeskHelpViewer* help, QWidget* parent)
    : QFrame(parent), document_(document), effect_(effect), apply_([this] { Apply(); }) {
    setObjectName(QStringLiteral("lightingControl"));
    setFrameShape(QFrame::StyledPanel);
    useLighting_ = new QCheckBox(QStringLiteral("Use lighting"));
    brightness_ = new TeskSliderField(0, 100, "Dark", "Bright");
    contrast_ = new TeskSliderField(0, 100, "Flat", "Strong");
    lightColour_ = new TeskColourButton(0);
    lightStrength_ = new TeskSliderField(0, 255, "None", "Full");
    darkColour_ = new TeskColourButton(0);
    darkStrength_ = new TeskSliderField(0, 255, "None", "Full");
    lightDirection_ = new TeskAngleDial;
    lightAngle_ = new TeskAngleDial;

    auto* form = new QFormLayout(this);
    form->addRow(MakeTitle("Lighting Control"));
    form->addRow(useLighting_);
    const std::pair<const char*, QWidget*> rows[] = {
        {"Brightness:", brightness_},          {"Contrast:", contrast_},
        {"Light Colour:", lightColour_},       {"Light Strength:", lightStrength_},
        {"Shadow Colour:", darkColour_},       {"Shadow Strength:", darkStrength_},
        {"Light Direction:", lightDirection_}, {"Light Angle:", lightAngle_},
    };
    for (const auto& [caption, control] : rows)
        form->addRow(QString::fromUtf8(caption), control);
    const std::pair<const char*, QWidget*> names[] = {
        {"useLighting", useLighting_},     {"brightness", brightness_},
        {"contrast", contrast_},           {"lightColour", lightColour_},
        {"lightStrength", lightStrength_}, {"darkColour", darkColour_},
        {"darkStrength", darkStrength_},   {"lightDirection", lightDirection_},
        {"lightAngle", lightAngle_},
    };
    for (const auto& [name, control] : names)
        control->setObjectName(QString::fromUtf8(name));
    if (help)
        TeskInstallContextHelp(*this, *help, kContextHelpFile);

    connect(useLighting_, &QCheckBox::toggled, this, [this] {
        UpdateEnabled();
        if (!loading_)
            Apply();
    });
    for (TeskColourButton* colour : {lightColour_, darkColour_})
        connect(colour, &TeskColourButton::colourChosen, this, [this] {
            if (!loading_)
                Apply();
        });
    for (TeskSliderField* slider : {brightness_, contrast_, lightStrength_, darkStrength_})
        connect(slider, &TeskSliderField::valueEdited, this, &TeskLightingControl::Edited);
    for (TeskAngleDial* dial : {lightDirection_, lightAngle_})
        connect(dial, &TeskAngleDial::angleEdited, this, &TeskLightingControl::Edited);
    Load();
}

void TeskLightingControl::Load() {
    apply_.Stop();
    loading_ = true;
    const TeskLighting& lighting = effect_.GetLighting();
    useLighting_->setChecked(lighting.useLighting);
    brightness_->SetValue(lighting.brightness);
    contrast_->SetValue(lighting.contrast);
    lightColour_->SetColour(lighting.lightColour);
    lightStrength_->SetValue(lighting.lightStrength);
    darkColour_->SetColour(lighting.darkColour);
    darkStrength_->SetValue(lighting.darkStrength);
    lightDirection_->SetAngle(lighting.lightDirection);
    lightAngle_->SetAngle(lighting.lightAngle);
    loading_ = false;
    UpdateEnabled();
}

TeskLighting TeskLightingControl::GetShownLighting() const {
    TeskLighting shown;
    shown.useLighting = useLighting_->isChecked();
    shown.brightness = brightness_->GetValue();
    shown.contrast = contrast_->GetValue();
    shown.lightColour = lightColour_->GetColour();
    shown.lightStrength = lightStrength_->GetValue();
    shown.darkColour = darkColour_->GetColour();
    shown.darkStrength = darkStrength_->GetValue();
    shown.lightDirection = lightDirection_->GetAngle();
    shown.lightAngle = lightAngle_->GetAngle();
    return shown;
}

void TeskLightingControl::Apply() {
    apply_.Stop();
    const TeskLighting shown = GetShownLighting();
    const TeskLighting& stored = effect_.GetLighting();
    TeskEditBatch batch(document_, kLightingName);
    // Every differing field is named; the whole block is then set in one go.
    const std::pair<bool, const char*> fields[] = {
        {shown.useLighting != stored.useLighting, kUseLightingName},
        {shown.brightness != stored.brightness, kBrightnessName},
        {shown.contrast != stored.contrast, kContrastName},
        {shown.lightColour != stored.lightColour, kLightColourName},
        {shown.lightStrength != stored.lightStrength, kLightStrengthName},
        {shown.darkColour != stored.darkColour, kDarkColourName},
        {shown.darkStrength != stored.darkStrength, kDarkStrengthName},
        {shown.lightDirection != stored.lightDirection, kLightDirectionName},
        {shown.lightAngle != stored.lightAngle, kLightAngleName},
    };
    for (const auto& [differs, name] : fields) {
        if (differs)
            batch.Note(name);
    }
    if (batch.GetChangeCount() > 0)
        effect_.SetLighting(shown, batch.GetTransaction());
    batch.Commit();
}

void TeskLightingControl::Edited() {
    if (!loading_)
        apply_.Restart();
}

void TeskLightingControl::UpdateEnabled() {
    // Without lighting the other settings have no effect on the movie.
    const bool on = useLighting_->isChecked();
    for (QWidget* control :
         std::initializer_list<QWidget*>{brightness_, contrast_, lightColour_, lightStrength_,
                                         darkColour_, darkStrength_, lightDirection_, lightAngle_})
        control->setEnabled(on);
}

QIcon TeskLightingControl::Icon() {
    QPixmap picture(32, 32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    // Lit from the top left, as the default light direction is.
    QRadialGradient shade(QPointF(11, 10), 22);
    shade.setColorAt(0.0, Qt::white);
    shade.setColorAt(0.5, QColor(0xf0, 0xc0, 0x40));
    shade.setColorAt(1.0, QColor(0x60, 0x40, 0x10));
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade);
    painter.drawEllipse(QRectF(3, 3, 26, 26));
    return QIcon(picture);
}

void TeskLightingControl::hideEvent(QHideEvent* event) {
    apply_.Flush();
    QFrame::hideEvent(event);
}
