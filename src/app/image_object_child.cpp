#include "app/image_object_child.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

#include "app/colour_button.h"
#include "media/image_path.h"
#include "objects/image_object.h"

namespace {

// In placement code order.
constexpr const char* kPlacementNames[] = {
    "Fixed, top left",
    "Fixed, top centre",
    "Fixed, top right",
    "Fixed, centre left",
    "Fixed, centre",
    "Fixed, centre right",
    "Fixed, bottom left",
    "Fixed, bottom centre",
    "Fixed, bottom right",
    "Tiled",
    "Stretch",
    "Stretch - maintaining aspect",
};

constexpr const char* kImageFilter = "Images (*.png *.jpg *.jpeg *.gif *.bmp);;All Files (*)";

QString AskForPicture(QWidget* parent, const QString& folder) {
    return QFileDialog::getOpenFileName(parent, QStringLiteral("Choose a Picture"), folder,
                                        QString::fromUtf8(kImageFilter));
}

}  // namespace

TeskImageObjectChild::TeskImageObjectChild(TeskImageObject& object, std::function<void()> changed,
                                           QWidget* parent)
    : QWidget(parent), object_(object), changed_(std::move(changed)), chooser_(AskForPicture) {
    setObjectName(QStringLiteral("imagePage"));
    fileName_ = new QLineEdit(QString::fromStdString(object.GetFileName().GetName()));
    fileName_->setObjectName(QStringLiteral("fileName"));
    auto* browse = new QPushButton(QStringLiteral("Browse..."));
    browse->setObjectName(QStringLiteral("browse"));
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(fileName_, 1);
    fileRow->addWidget(browse);

    placement_ = new QComboBox;
    placement_->setObjectName(QStringLiteral("placement"));
    for (const char* name : kPlacementNames)
        placement_->addItem(QString::fromUtf8(name));
    placement_->setCurrentIndex(object.GetPlacement() >= 0 &&
                                        object.GetPlacement() < placement_->count()
                                    ? object.GetPlacement()
                                    : kTeskStretch);

    useTransparent_ = new QCheckBox(QStringLiteral("Use &transparent colour"));
    useTransparent_->setObjectName(QStringLiteral("useTransparent"));
    useTransparent_->setChecked(object.GetUseTransparent());
    autoTransparent_ = new QCheckBox(QStringLiteral("&Automatically pick the transparent colour"));
    autoTransparent_->setObjectName(QStringLiteral("autoTransparent"));
    autoTransparent_->setChecked(object.GetAutoTransparent());
    transparentColour_ = new TeskColourButton(object.GetTransparentColour());
    transparentColour_->setObjectName(QStringLiteral("transparentColour"));
    tolerance_ = new QSlider(Qt::Horizontal);
    tolerance_->setObjectName(QStringLiteral("tolerance"));
    tolerance_->setRange(0, 255);
    tolerance_->setValue(object.GetTolerance());

    auto* form = new QFormLayout(this);
    auto* fileLabel = new QLabel(QStringLiteral("&Image Filename:"));
    fileLabel->setBuddy(fileName_);
    form->addRow(fileLabel, fileRow);
    form->addRow(QStringLiteral("&Sizing and positioning options: "), placement_);
    form->addRow(useTransparent_);
    form->addRow(autoTransparent_);
    form->addRow(QStringLiteral("Transparent colour:"), transparentColour_);
    form->addRow(QStringLiteral("T&olerance:"), tolerance_);

    connect(browse, &QPushButton::clicked, this, &TeskImageObjectChild::Browse);
    connect(fileName_, &QLineEdit::editingFinished, this, [this] {
        if (fileName_->text().toStdString() != object_.GetFileName().GetName())
            ChooseFile(fileName_->text());
    });
    connect(placement_, &QComboBox::currentIndexChanged, this, [this](int index) {
        object_.SetPlacement(index);
        Changed();
    });
    connect(useTransparent_, &QCheckBox::toggled, this, [this](bool on) {
        object_.SetUseTransparent(on);
        Changed();
    });
    connect(autoTransparent_, &QCheckBox::toggled, this, [this](bool on) {
        object_.SetAutoTransparent(on);
        Changed();
    });
    connect(transparentColour_, &TeskColourButton::colourChosen, this, [this](COLORREF colour) {
        object_.SetTransparentColour(colour);
        Changed();
    });
    connect(tolerance_, &QSlider::valueChanged, this, [this](int value) {
        object_.SetTolerance(value);
        Changed();
    });
    UpdateEnabled();
}

void TeskImageObjectChild::ChooseFile(const QString& path) {
    object_.SetFileName(path.toStdString());
    // Shows the name as stored: relative when the picture lies beside the project.
    fileName_->setText(QString::fromStdString(object_.GetFileName().GetName()));
    Changed();
}

void TeskImageObjectChild::Browse() {
    const std::string current = object_.GetFullPath();
    const QString folder = TeskIsBuiltInImageName(current) || current.empty()
                               ? QString::fromStdString(TeskGetProjectFolder())
                               : QFileInfo(QString::fromStdString(current)).absolutePath();
    const QString path = chooser_(this, folder);
    if (!path.isEmpty())
        ChooseFile(path);
}

void TeskImageObjectChild::Changed() {
    UpdateEnabled();
    changed_();
}

void TeskImageObjectChild::UpdateEnabled() {
    const bool keyed = useTransparent_->isChecked();
    autoTransparent_->setEnabled(keyed);
    transparentColour_->setEnabled(keyed && !autoTransparent_->isChecked());
    tolerance_->setEnabled(keyed);
}
