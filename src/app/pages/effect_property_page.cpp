#include "app/pages/effect_property_page.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QSpinBox>
#include <QVBoxLayout>

#include "app/angle_dial.h"
#include "app/context_help.h"
#include "app/drop_down_button.h"
#include "app/edit_batch.h"
#include "app/grid_combo.h"
#include "app/lighting_control.h"
#include "app/object_slot.h"
#include "app/slider_field.h"
#include "document/file.h"
#include "effects/three_d_effect.h"

TeskEffectPropertyPage::TeskEffectPropertyPage(TeskEffect& effect, const TeskPageContext& context,
                                               std::string_view multiChangeName,
                                               const char* contextHelpFile, QWidget* parent)
    : QWidget(parent),
      effect_(effect),
      context_(context),
      multiChangeName_(multiChangeName),
      contextHelpFile_(contextHelpFile),
      apply_([this] { Apply(); }) {
    setObjectName(QStringLiteral("propertyPage"));
    auto* page = new QVBoxLayout(this);
    objectRow_ = new QHBoxLayout;
    page->addLayout(objectRow_, 1);
    auto* settingsBox = new QGroupBox(QStringLiteral("Settings"));
    settings_ = new QFormLayout(settingsBox);
    settings_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    page->addWidget(settingsBox);
    panelRow_ = new QHBoxLayout;
    page->addLayout(panelRow_);
    panelRow_->addStretch(1);
}

TeskEffectPropertyPage::~TeskEffectPropertyPage() {
    // Edits still waiting for their pause are dropped: the page goes when
    // another effect is shown, and this one may already have left the
    // document.
    DetachFromFile();
}

void TeskEffectPropertyPage::Start() {
    if (context_.help)
        TeskInstallContextHelp(*this, *context_.help, contextHelpFile_);
    Reload();
    AttachToFile(&context_.document);
}

void TeskEffectPropertyPage::Reload() {
    apply_.Stop();
    loading_ = true;
    for (TeskObjectSlot* slot : objectSlots_)
        slot->Refresh();
    for (TeskGridCombo* grid : gridControls_)
        grid->GetPopup()->Load();
    for (TeskLightingControl* lighting : lightingControls_)
        lighting->Load();
    LoadControls();
    loading_ = false;
}

void TeskEffectPropertyPage::Apply() {
    apply_.Stop();
    if (!IsEffectLive())
        return;
    TeskEditBatch batch(context_.document, multiChangeName_);
    ApplyControls(batch);
    // A recorded change reloads the page through the document; otherwise
    // the controls go back to what is stored.
    if (!batch.Commit())
        Reload();
}

void TeskEffectPropertyPage::ChangeAtOnce(
    std::string_view name, const std::function<void(ZoEditor::ZoEditTransaction*)>& change) {
    // Settings still waiting for their pause go first, as their own step.
    apply_.Flush();
    TeskEditBatch batch(context_.document, name);
    batch.Note(name);
    change(batch.GetTransaction());
    batch.Commit();
}

void TeskEffectPropertyPage::ControlEdited() {
    if (!loading_)
        apply_.Restart();
}

void TeskEffectPropertyPage::Watch(QWidget* control) {
    auto edited = [this] { ControlEdited(); };
    if (auto* slider = qobject_cast<TeskSliderField*>(control)) {
        connect(slider, &TeskSliderField::valueEdited, this, edited);
    } else if (auto* dial = qobject_cast<TeskAngleDial*>(control)) {
        connect(dial, &TeskAngleDial::angleEdited, this, edited);
    } else if (auto* list = qobject_cast<QComboBox*>(control)) {
        connect(list, &QComboBox::currentIndexChanged, this, edited);
    } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        connect(button, &QAbstractButton::toggled, this, edited);
    } else if (auto* number = qobject_cast<QSpinBox*>(control)) {
        connect(number, &QSpinBox::valueChanged, this, edited);
        connect(number, &QSpinBox::editingFinished, &apply_, &TeskDelayedApply::Flush);
    } else if (auto* time = qobject_cast<QDoubleSpinBox*>(control)) {
        connect(time, &QDoubleSpinBox::valueChanged, this, edited);
        connect(time, &QDoubleSpinBox::editingFinished, &apply_, &TeskDelayedApply::Flush);
    } else {
        // A group: watch what it holds.
        for (QWidget* child : control->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            Watch(child);
    }
}

void TeskEffectPropertyPage::AddSetting(const char* caption, QWidget* control) {
    Watch(control);
    // Controls are found by what they are called on screen: "&Wavelength:"
    // is "Wavelength", a check box goes by its text.
    QString name = caption ? QString::fromUtf8(caption) : control->property("text").toString();
    if (auto* group = qobject_cast<QGroupBox*>(control))
        name = group->title();
    control->setObjectName(name.remove(QLatin1Char('&')).remove(QLatin1Char(':')).trimmed());
    if (!caption) {
        settings_->addRow(control);
        return;
    }
    auto* label = new QLabel(QString::fromUtf8(caption));
    label->setBuddy(control);
    settings_->addRow(label, control);
}

TeskObjectSlot* TeskEffectPropertyPage::MakeObjectSlot(
    std::function<TeskObject*()> source,
    std::function<void(ZoAutoPtr<TeskObject>&, ZoEditor::ZoEditTransaction*)> store,
    const char* title, const char* buttonText, std::string_view stepName, bool withPreview) {
    TeskObjectDialogContext dialogContext;
    dialogContext.settings = context_.settings;
    dialogContext.help = context_.help;
    auto* view = new TeskObjectSlot(context_.document, context_.prompts, dialogContext,
                                    std::move(source), std::move(store), QString::fromUtf8(title),
                                    buttonText, stepName, withPreview);
    objectSlots_.push_back(view);
    return view;
}

TeskObjectSlot* TeskEffectPropertyPage::AddObjectSlot(int slot, const char* title,
                                                      const char* buttonText,
                                                      std::string_view stepName) {
    TeskEffect& effect = effect_;
    TeskObjectSlot* view = MakeObjectSlot(
        [&effect, slot] { return effect.GetObject(slot); },
        [&effect, slot](ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction) {
            effect.SetObject(object, slot, transaction);
        },
        title, buttonText, stepName, true);
    objectRow_->addWidget(view, 1);
    return view;
}

TeskLightingControl* TeskEffectPropertyPage::AddLightingControl(Tesk3DEffect& effect) {
    auto* lighting = new TeskLightingControl(context_.document, effect, context_.help);
    lightingControls_.push_back(lighting);
    auto* button =
        new TeskDropDownButton(QStringLiteral("Lighting"), TeskLightingControl::Icon(), lighting);
    button->setObjectName(QStringLiteral("lightingButton"));
    button->setToolTip(QStringLiteral("Lighting Control"));
    panelRow_->addWidget(button);
    return lighting;
}

void TeskEffectPropertyPage::OnUpdate(ZoEditor::ZoUpdateHintList&) {
    if (IsEffectLive())
        Reload();
}

void TeskEffectPropertyPage::OnTeskFileDetach() {
    // Detached only when the page closes or the whole document is replaced
    // (New, Open): then the effect goes, and the main window closes the page.
    apply_.Stop();
    orphaned_ = true;
}

bool TeskEffectPropertyPage::IsShowing(const TeskEffect* effect) const noexcept {
    return effect == &effect_ && IsEffectLive();
}

bool TeskEffectPropertyPage::IsEffectLive() const noexcept {
    // Only the pointer is compared: after New or Open it may dangle.
    return !orphaned_ && GetFile() && GetFile()->GetEffectIndex(&effect_) >= 0;
}

void TeskShowPropertyPage(QWidget& area, TeskEffect* effect, const TeskPageContext& context) {
    auto* scroller = area.findChild<QScrollArea*>(QString(), Qt::FindDirectChildrenOnly);
    if (!scroller) {
        auto* layout = new QVBoxLayout(&area);
        layout->setContentsMargins(0, 0, 0, 0);
        scroller = new QScrollArea;
        scroller->setWidgetResizable(true);
        scroller->setFrameShape(QFrame::NoFrame);
        layout->addWidget(scroller);
    }
    auto* shown = qobject_cast<TeskEffectPropertyPage*>(scroller->widget());
    if (shown && shown->IsShowing(effect))
        return;
    // Safe while the document is telling its observers of the change: an
    // observer destroyed meanwhile is skipped.
    delete scroller->takeWidget();
    if (!effect)
        return;
    if (std::unique_ptr<TeskEffectPropertyPage> page = TeskCreatePropertyPage(*effect, context))
        scroller->setWidget(page.release());
}

TeskGridCombo* TeskEffectPropertyPage::AddGridControl(TeskGridEffect& effect) {
    auto* grid = new TeskGridCombo(context_.document, effect, context_.help);
    gridControls_.push_back(grid);
    panelRow_->insertWidget(0, grid);
    return grid;
}
