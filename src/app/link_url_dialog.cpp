#include "app/link_url_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "app/context_help.h"
#include "app/dialog_buttons.h"
#include "document/file.h"

namespace {

constexpr std::string_view kHelpTopic = "::/html/publishing/hyperlink.htm";
constexpr int kNamedWindow = 4;
constexpr std::array<const char*, 4> kStandardTargets = {"_blank", "_self", "_top", "_parent"};
constexpr std::array<const char*, 4> kExplanations = {
    "The link opens the page in a new browser window.",
    "The link opens the page in the frame or window that shows the movie.",
    "The link opens the page in the whole browser window, replacing any frames.",
    "The link opens the page in the parent of the frame that shows the movie.",
};

int TargetPosition(const ZoString& target) {
    for (size_t i = 0; i < kStandardTargets.size(); ++i) {
        if (target == kStandardTargets[i])
            return static_cast<int>(i);
    }
    return kNamedWindow;
}

}  // namespace

TeskLinkURLDialog::TeskLinkURLDialog(const TeskFile& file, TeskHelpViewer& help, QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(QStringLiteral("Link URL"));
    enabled_ =
        new QCheckBox(QStringLiteral("&Link to a web page when the user clicks on the movie"));
    enabled_->setObjectName(QStringLiteral("linkEnabled"));
    enabled_->setChecked(file.GetLinkEnabled());
    url_ = new QLineEdit(QString::fromStdString(file.GetLinkURL()));
    url_->setObjectName(QStringLiteral("linkURL"));
    url_->setMinimumWidth(320);
    target_ = new QComboBox;
    target_->setObjectName(QStringLiteral("linkTarget"));
    for (const char* name : kStandardTargets)
        target_->addItem(QString::fromUtf8(name), target_->count());
    target_->addItem(QStringLiteral("<Named Window>"), kNamedWindow);
    name_ = new QLineEdit;
    name_->setObjectName(QStringLiteral("windowName"));
    const int position = TargetPosition(file.GetLinkTarget());
    target_->setCurrentIndex(position);
    if (position == kNamedWindow)
        name_->setText(QString::fromStdString(file.GetLinkTarget()));
    explanation_ = new QLabel;
    explanation_->setObjectName(QStringLiteral("explanation"));
    explanation_->setWordWrap(true);

    auto* urlLabel = new QLabel(QStringLiteral("Link &URL:"));
    urlLabel->setBuddy(url_);
    nameLabel_ = new QLabel(QStringLiteral("Name:"));
    nameLabel_->setBuddy(name_);
    auto* grid = new QGridLayout;
    grid->addWidget(urlLabel, 0, 0);
    grid->addWidget(url_, 0, 1);
    auto* targetLabel = new QLabel(QStringLiteral("Link Target Window:"));
    targetLabel->setBuddy(target_);
    grid->addWidget(targetLabel, 1, 0);
    grid->addWidget(target_, 1, 1);
    grid->addWidget(nameLabel_, 2, 0);
    grid->addWidget(name_, 2, 1);

    connect(enabled_, &QCheckBox::toggled, this, &TeskLinkURLDialog::UpdateControls);
    connect(target_, &QComboBox::currentIndexChanged, this, &TeskLinkURLDialog::UpdateControls);
    connect(name_, &QLineEdit::textChanged, this, &TeskLinkURLDialog::UpdateControls);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(enabled_);
    layout->addLayout(grid);
    layout->addWidget(explanation_);
    layout->addWidget(TeskMakeDialogButtons(*this, help, kHelpTopic, "&Help"));
    UpdateControls();
    TeskInstallContextHelp(*this, help, "::/Text/LinkURLDialog.txt");
}

QString TeskLinkURLDialog::GetTarget() const {
    const int position = target_->currentData().toInt();
    return position == kNamedWindow
               ? name_->text()
               : QString::fromUtf8(kStandardTargets[static_cast<size_t>(position)]);
}

void TeskLinkURLDialog::UpdateControls() {
    const bool linked = enabled_->isChecked();
    const int position = target_->currentData().toInt();
    url_->setEnabled(linked);
    target_->setEnabled(linked);
    name_->setEnabled(linked && position == kNamedWindow);
    nameLabel_->setEnabled(linked && position == kNamedWindow);
    explanation_->setText(
        position == kNamedWindow
            ? QStringLiteral("The link appears in the browse window called '%1'. The name must be "
                             "setup in the HTML code.")
                  .arg(name_->text())
            : QString::fromUtf8(kExplanations[static_cast<size_t>(position)]));
}

void TeskLinkURLDialog::Apply(TeskFile& file) const {
    const bool linked = enabled_->isChecked();
    const ZoString url = url_->text().toStdString();
    const ZoString target = GetTarget().toStdString();
    if (linked == file.GetLinkEnabled() && url == file.GetLinkURL() &&
        target == file.GetLinkTarget())
        return;
    auto transaction = std::make_unique<TeskFile::Transaction>("Edit Link URL");
    file.GetUndoList().Begin(transaction.get());
    file.SetLinkEnabled(linked, transaction.get());
    file.SetLinkURL(url, transaction.get());
    file.SetLinkTarget(target, transaction.get());
    file.GetUndoList().Add(transaction);
}
