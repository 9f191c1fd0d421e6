#include "app/grid_combo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPainter>
#include <QSpinBox>
#include <QVBoxLayout>
#include <functional>

#include "app/context_help.h"
#include "document/file.h"

namespace {

struct GridTypeItem {
    const char* text;
    int32_t type;
};

// In the order the list shows them.
constexpr GridTypeItem kGridTypes[] = {
    {"Rectangular NWSE", TeskGridEffect::kRectangularNWSE},
    {"Rectangular NESW", TeskGridEffect::kRectangularNESW},
    {"Triangular", TeskGridEffect::kTriangular},
};

/// A grid of cut squares, the face of the button.
QIcon GridIcon() {
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(QPen(Qt::darkGray, 1));
    for (int i = 0; i <= 3; ++i) {
        painter.drawLine(2 + i * 9, 2, 2 + i * 9, 29);
        painter.drawLine(2, 2 + i * 9, 29, 2 + i * 9);
    }
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            painter.drawLine(2 + i * 9, 2 + j * 9, 11 + i * 9, 11 + j * 9);
    return QIcon(pixmap);
}

}  // namespace

TeskGridComboPopup::TeskGridComboPopup(TeskFile& file, TeskGridEffect& effect, QWidget* parent)
    : QFrame(parent, Qt::Popup), file_(file), effect_(effect) {
    setObjectName(QStringLiteral("gridPanel"));
    setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    auto* title = new QLabel(QStringLiteral("Grid Control"));
    QFont big = title->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.3);
    title->setFont(big);
    chooseGrid_ = new QCheckBox(QStringLiteral("&Intelligently choose grid"));
    chooseGrid_->setObjectName(QStringLiteral("chooseGrid"));
    maxTriangles_ = AddNumberField("maxTriangles", kMinTriangles, kMaxTriangles);
    gridType_ = new QComboBox;
    gridType_->setObjectName(QStringLiteral("gridType"));
    for (const GridTypeItem& item : kGridTypes)
        gridType_->addItem(QString::fromUtf8(item.text), item.type);
    across_ = AddNumberField("across", 1, kMaxCells);
    down_ = AddNumberField("down", 1, kMaxCells);

    auto* form = new QFormLayout;
    auto addRow = [form](const char* caption, QWidget* field) {
        auto* label = new QLabel(QString::fromUtf8(caption));
        label->setBuddy(field);
        form->addRow(label, field);
        return label;
    };
    form->addRow(chooseGrid_);
    maxTrianglesLabel_ = addRow("&Maximum triangles", maxTriangles_);
    gridTypeLabel_ = addRow("&Grid Type:", gridType_);
    acrossLabel_ = addRow("&Across", across_);
    downLabel_ = addRow("&Down", down_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addLayout(form);

    applyTimer_.setSingleShot(true);
    applyTimer_.setInterval(kApplyDelayMs);
    connect(&applyTimer_, &QTimer::timeout, this, &TeskGridComboPopup::Apply);
    connect(chooseGrid_, &QCheckBox::clicked, this, [this] {
        UpdateEnabled();
        Apply();
    });
    connect(gridType_, &QComboBox::activated, this, &TeskGridComboPopup::Apply);
    Load();
}

QSpinBox* TeskGridComboPopup::AddNumberField(const char* name, int minimum, int maximum) {
    auto* field = new QSpinBox;
    field->setObjectName(QString::fromUtf8(name));
    field->setRange(minimum, maximum);
    field->setKeyboardTracking(true);
    connect(field, &QSpinBox::valueChanged, this, [this] { applyTimer_.start(); });
    connect(field, &QSpinBox::editingFinished, this, &TeskGridComboPopup::Apply);
    return field;
}

void TeskGridComboPopup::Load() {
    const TeskGridEffect::GridSettings& settings = effect_.GetGridSettings();
    const QSignalBlocker quietTriangles(maxTriangles_);
    const QSignalBlocker quietAcross(across_);
    const QSignalBlocker quietDown(down_);
    chooseGrid_->setChecked(settings.chooseGrid);
    maxTriangles_->setValue(settings.maxTriangles);
    const int type = gridType_->findData(settings.gridType);
    gridType_->setCurrentIndex(type >= 0 ? type : 0);
    across_->setValue(settings.across);
    down_->setValue(settings.down);
    shown_ = settings;
    shown_.maxTriangles = maxTriangles_->value();
    shown_.across = across_->value();
    shown_.down = down_->value();
    UpdateEnabled();
}

void TeskGridComboPopup::UpdateEnabled() {
    const bool automatic = chooseGrid_->isChecked();
    for (QWidget* field :
         {static_cast<QWidget*>(maxTrianglesLabel_), static_cast<QWidget*>(maxTriangles_)})
        field->setEnabled(automatic);
    for (QWidget* field : {static_cast<QWidget*>(gridTypeLabel_), static_cast<QWidget*>(gridType_),
                           static_cast<QWidget*>(acrossLabel_), static_cast<QWidget*>(across_),
                           static_cast<QWidget*>(downLabel_), static_cast<QWidget*>(down_)})
        field->setEnabled(!automatic);
}

void TeskGridComboPopup::Apply() {
    applyTimer_.stop();
    TeskGridEffect::GridSettings settings = effect_.GetGridSettings();
    auto transaction = std::make_unique<TeskFile::Transaction>();
    int changes = 0;
    auto compare = [&](auto& field, auto value, const char* name) {
        if (field == value)
            return;
        field = value;
        transaction->SetName(name);
        ++changes;
    };
    // A number field left as it was loaded keeps the stored value.
    auto edited = [](QSpinBox* box, int32_t shown, int32_t stored) {
        return box->value() == shown ? stored : box->value();
    };
    compare(settings.chooseGrid, chooseGrid_->isChecked(), "Edit Intelligent Triangles");
    compare(settings.maxTriangles,
            edited(maxTriangles_, shown_.maxTriangles, settings.maxTriangles),
            "Edit Maximum Triangles");
    compare(settings.gridType, gridType_->currentData().toInt(), "Edit Grid Type");
    compare(settings.across, edited(across_, shown_.across, settings.across), "Edit Grid Across");
    compare(settings.down, edited(down_, shown_.down, settings.down), "Edit Grid Down");
    if (changes == 0)
        return;
    if (changes > 1)
        transaction->SetName("Edit Grid");
    file_.GetUndoList().Begin(transaction.get());
    effect_.SetGridSettings(settings, transaction.get());
    file_.GetUndoList().Add(transaction);
    Load();
}

TeskGridCombo::TeskGridCombo(TeskFile& file, TeskGridEffect& effect, const TeskHelpViewer* help,
                             QWidget* parent)
    : QToolButton(parent), popup_(new TeskGridComboPopup(file, effect, this)) {
    if (help)
        TeskInstallContextHelp(*popup_, *help, kContextHelpFile);
    setObjectName(QStringLiteral("gridCombo"));
    setIcon(GridIcon());
    setIconSize({32, 32});
    setText(QStringLiteral("Grid"));
    setToolTip(QStringLiteral("Grid Control"));
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setArrowType(Qt::NoArrow);
    setPopupMode(QToolButton::InstantPopup);
    connect(this, &QToolButton::clicked, this, &TeskGridCombo::ShowPopup);
}

void TeskGridCombo::ShowPopup() {
    popup_->Load();
    popup_->adjustSize();
    popup_->move(mapToGlobal(rect().bottomLeft()));
    popup_->show();
}
