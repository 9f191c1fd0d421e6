#include "app/publish_dialog.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/context_help.h"
#include "app/dialog_buttons.h"
#include "app/user_prompts.h"
#include "document/file.h"
#include "publish/publisher.h"

namespace {

constexpr std::string_view kHelpTopic = "::/html/Publishing/Publish.htm";

QCheckBox* AddCheckBox(QVBoxLayout* layout, const char* text, const char* name, bool checked) {
    auto* box = new QCheckBox(QString::fromUtf8(text));
    box->setObjectName(QString::fromUtf8(name));
    box->setChecked(checked);
    layout->addWidget(box);
    return box;
}

}  // namespace

TeskPublishDialog::TeskPublishDialog(TeskFile& file, TeskUserPrompts& prompts, TeskHelpViewer& help,
                                     const std::filesystem::path& homeFolder, QWidget* parent)
    : QDialog(parent), prompts_(prompts) {
    setWindowTitle(QStringLiteral("Publish"));
    const TeskPublishSettings& settings = file.GetPublishSettings();

    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(QStringLiteral("Publish &Location"));
    layout->addWidget(label);
    auto* row = new QHBoxLayout;
    location_ = new QLineEdit(QString::fromStdString(TeskOfferedPublishLocation(file, homeFolder)));
    location_->setObjectName(QStringLiteral("location"));
    location_->setMinimumWidth(320);
    label->setBuddy(location_);
    auto* browse = new QPushButton(QStringLiteral("&Browse"));
    browse->setObjectName(QStringLiteral("browse"));
    row->addWidget(location_);
    row->addWidget(browse);
    layout->addLayout(row);
    embedHTML_ = AddCheckBox(layout, "&Embed with HTML file", "embedHTML", settings.embedHTML);
    testImmediately_ =
        AddCheckBox(layout, "&Test Immediately", "testImmediately", settings.testImmediately);
    offsetForMovieClip_ = AddCheckBox(layout, "&Offset movie to suit movie clip",
                                      "offsetForMovieClip", settings.offsetForMovieClip);

    layout->addWidget(TeskMakeDialogButtons(*this, help, kHelpTopic, "&Help", "&Publish"));

    connect(browse, &QPushButton::clicked, this, &TeskPublishDialog::Browse);
    TeskInstallContextHelp(*this, help, "::/Text/PublishDialog.txt");
}

void TeskPublishDialog::Store(TeskFile& file) const {
    TeskPublishSettings& settings = file.GetPublishSettings();
    settings.embedHTML = embedHTML_->isChecked();
    settings.testImmediately = testImmediately_->isChecked();
    settings.SetLocation(TeskCompletePublishLocation(location_->text().trimmed().toStdString()));
    settings.offsetForMovieClip = offsetForMovieClip_->isChecked();
}

void TeskPublishDialog::Browse() {
    const std::optional<std::filesystem::path> chosen = prompts_.AskSavePath(
        location_->text().toStdString(), "Flash Files (*.swf);;All Files (*)", "swf");
    if (chosen)
        location_->setText(QString::fromStdString(chosen->string()));
}
