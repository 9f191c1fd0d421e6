#include "app/object_slot.h"

#include <QPushButton>
#include <QVBoxLayout>

#include "app/object_preview.h"
#include "app/user_prompts.h"
#include "document/file.h"

TeskObjectSlot::TeskObjectSlot(TeskFile& document, TeskUserPrompts& prompts,
                               TeskObjectDialogContext context, Source source,
                               TeskObjectStore store, QString title, const char* buttonText,
                               std::string_view stepName, bool withPreview, QWidget* parent)
    : QWidget(parent),
      document_(document),
      prompts_(prompts),
      context_(context),
      source_(std::move(source)),
      store_(std::move(store)),
      title_(std::move(title)),
      stepName_(stepName) {
    button_ = new QPushButton(QString::fromUtf8(buttonText));
    button_->setToolTip(title_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (withPreview) {
        preview_ = new TeskObjectPreview;
        layout->addWidget(preview_, 1);
    }
    layout->addWidget(button_, 0, Qt::AlignHCenter);
    connect(button_, &QPushButton::clicked, this, &TeskObjectSlot::Change);
    Refresh();
}

void TeskObjectSlot::Refresh() {
    if (!preview_)
        return;
    FollowMovie();
    preview_->SetObject(source_(), context_.movieSize, context_.movieBackground);
    preview_->ObjectChanged();
}

void TeskObjectSlot::FollowMovie() {
    // The movie's size and colour may have changed since the last look.
    context_.movieSize = {document_.GetWidth(), document_.GetHeight()};
    context_.movieBackground = document_.GetBackgroundColour();
}

void TeskObjectSlot::Change() {
    // A slot without a preview is never refreshed: the dialog would wrap
    // text at a size the movie does not have.
    FollowMovie();
    TeskChangeObject(
        document_, [this](QDialog& dialog) { return prompts_.RunDialog(dialog); }, context_, this,
        source_(), title_, stepName_, store_);
}
