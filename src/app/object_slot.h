#pragma once
// One object of an effect on its property page: a preview of the object and
// the button that opens the object dialog on it.
#include <QWidget>
#include <functional>

#include "app/object_dialog.h"
#include "platform/zo_string.h"

class QPushButton;
class TeskFile;
class TeskObjectPreview;
class TeskUserPrompts;

class TeskObjectSlot final : public QWidget {
    Q_OBJECT
  public:
    /// The object shown now (may be null).
    using Source = std::function<TeskObject*()>;

    /// Shows what `source` gives in a movie of `document`; the button,
    /// labelled `buttonText`, opens the dialog titled `title` and hands an
    /// accepted object to `store` in one step named `stepName`. Without
    /// `withPreview` only the button shows (another window draws the object).
    TeskObjectSlot(TeskFile& document, TeskUserPrompts& prompts, TeskObjectDialogContext context,
                   Source source, TeskObjectStore store, QString title, const char* buttonText,
                   std::string_view stepName, bool withPreview = true, QWidget* parent = nullptr);

    /// Shows the object again (it may have been replaced or changed).
    void Refresh();
    /// Opens the object dialog, as the button does.
    void Change();

    QPushButton* GetButton() const noexcept { return button_; }
    /// Null without a preview.
    TeskObjectPreview* GetPreview() const noexcept { return preview_; }

  private:
    /// Takes the document's movie size and background for the dialog.
    void FollowMovie();

    TeskFile& document_;
    TeskUserPrompts& prompts_;
    TeskObjectDialogContext context_;
    Source source_;
    TeskObjectStore store_;
    QString title_;
    ZoString stepName_;
    TeskObjectPreview* preview_ = nullptr;
    QPushButton* button_;
};
