#include "app/movie_properties_dialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>
#include <functional>
#include <vector>

#include "app/colour_button.h"
#include "app/context_help.h"
#include "app/dialog_buttons.h"
#include "document/file.h"

namespace {

constexpr std::string_view kHelpTopic = "::/html/General/MovieProperties.htm";

QSpinBox* MakeSpinBox(const char* name, int minimum, int maximum, int value) {
    auto* box = new QSpinBox;
    box->setObjectName(QString::fromUtf8(name));
    box->setRange(minimum, maximum);
    box->setValue(value);
    return box;
}

QCheckBox* MakeCheckBox(const char* text, const char* name, bool checked) {
    auto* box = new QCheckBox(QString::fromUtf8(text));
    box->setObjectName(QString::fromUtf8(name));
    box->setChecked(checked);
    return box;
}

/// One setting the dialog may change: its undo name and how to set it.
struct SettingChange {
    const char* name;
    bool differs;
    std::function<void(TeskFile::Transaction*)> apply;
};

}  // namespace

TeskMoviePropertiesDialog::TeskMoviePropertiesDialog(const TeskFile& file, TeskHelpViewer& help,
                                                     QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(QStringLiteral("Movie Properties"));
    width_ = MakeSpinBox("width", 1, 2000, file.GetWidth());
    height_ = MakeSpinBox("height", 1, 2000, file.GetHeight());
    frameRate_ = MakeSpinBox("frameRate", 1, 50, file.GetFrameRate());
    frameRate_->setSuffix(QStringLiteral(" fps"));
    background_ = new TeskColourButton(file.GetBackgroundColour());
    background_->setObjectName(QStringLiteral("backgroundColour"));

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("&Width"), width_);
    form->addRow(QStringLiteral("&Height"), height_);
    form->addRow(QStringLiteral("&Frame Rate"), frameRate_);
    form->addRow(QStringLiteral("&Background Colour"), background_);

    auto* resizeGroup = new QGroupBox;
    auto* resizeLayout = new QVBoxLayout(resizeGroup);
    const char* resizeTexts[3] = {"Movie stays a fixed &size", "Movie &resizes to fill the area",
                                  "Movie resizes maintaining the &aspect ratio"};
    for (int mode = 0; mode < 3; ++mode) {
        resizeModes_[mode] = new QRadioButton(QString::fromUtf8(resizeTexts[mode]));
        resizeModes_[mode]->setObjectName(QStringLiteral("resizeMode%1").arg(mode));
        resizeLayout->addWidget(resizeModes_[mode]);
    }
    const int mode = file.GetResizeMode();
    resizeModes_[mode >= 0 && mode < 3 ? mode : 0]->setChecked(true);

    disableRightClick_ =
        MakeCheckBox("&Disable right click menu", "disableRightClick", file.GetDisableRightClick());
    clipToMovieSize_ =
        MakeCheckBox("&Clip to movie size", "clipToMovieSize", file.GetClipToMovieSize());

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(resizeGroup);
    layout->addWidget(disableRightClick_);
    layout->addWidget(clipToMovieSize_);
    layout->addWidget(TeskMakeDialogButtons(*this, help, kHelpTopic, "H&elp"));
    TeskInstallContextHelp(*this, help, "::/Text/MoviePropertiesDialog.txt");
}

int TeskMoviePropertiesDialog::ResizeMode() const {
    for (int mode = 0; mode < 3; ++mode) {
        if (resizeModes_[mode]->isChecked())
            return mode;
    }
    return kTeskFixedSize;
}

void TeskMoviePropertiesDialog::Apply(TeskFile& file) const {
    const int width = width_->value();
    const int height = height_->value();
    const int frameRate = frameRate_->value();
    const COLORREF colour = background_->GetColour();
    const int resizeMode = ResizeMode();
    const bool noMenu = disableRightClick_->isChecked();
    const bool clip = clipToMovieSize_->isChecked();
    const std::vector<SettingChange> changes = {
        {"Edit Movie Width", width != file.GetWidth(), [&](auto* t) { file.SetWidth(width, t); }},
        {"Edit Movie Height", height != file.GetHeight(),
         [&](auto* t) { file.SetHeight(height, t); }},
        {"Edit Frame Rate", frameRate != file.GetFrameRate(),
         [&](auto* t) { file.SetFrameRate(frameRate, t); }},
        {"Edit Background Colour", colour != file.GetBackgroundColour(),
         [&](auto* t) { file.SetBackgroundColour(colour, t); }},
        {"Edit Resize Mode", resizeMode != file.GetResizeMode(),
         [&](auto* t) { file.SetResizeMode(resizeMode, t); }},
        {"Edit Disable Right Click", noMenu != file.GetDisableRightClick(),
         [&](auto* t) { file.SetDisableRightClick(noMenu, t); }},
        {"Edit Clip to Movie Size", clip != file.GetClipToMovieSize(),
         [&](auto* t) { file.SetClipToMovieSize(clip, t); }},
    };
    auto transaction = std::make_unique<TeskFile::Transaction>();
    file.GetUndoList().Begin(transaction.get());
    int changed = 0;
    for (const SettingChange& change : changes) {
        if (!change.differs)
            continue;
        change.apply(transaction.get());
        transaction->SetName(++changed == 1 ? change.name : "Edit Movie Properties");
    }
    if (changed == 0)
        file.GetUndoList().Cancel(transaction.get());
    else
        file.GetUndoList().Add(transaction);
}
