#pragma once
#include <QWidget>
#include <functional>

#include "platform/zo_rect.h"

class QButtonGroup;
class QComboBox;
class QFontComboBox;
class QTextCharFormat;
class QToolButton;
class TeskColourButton;
class TeskRichTextEdit;
class TeskTextObject;

/// The "Text" page of the object dialog: the rich text, wrapped at the
/// movie's width, with the font, size, colours, styles and alignments.
class TeskTextObjectChild final : public QWidget {
  public:
    /// Edits `object` directly and calls `changed` after every change.
    /// `page` is the movie's size in pixels, where the text wraps.
    TeskTextObjectChild(TeskTextObject& object, ZoSize page, std::function<void()> changed,
                        QWidget* parent = nullptr);

    TeskRichTextEdit* GetEditor() const noexcept { return editor_; }

  private:
    QWidget* MakeFontBar();
    QWidget* MakeStyleBar();
    QToolButton* AddToggle(QWidget* bar, const char* name, const QString& text, const char* tip);
    /// Applies `change` to the selection, or to what is typed next.
    void MergeFormat(const QTextCharFormat& change);
    void ShowFormat();
    void TextChanged();

    TeskTextObject& object_;
    std::function<void()> changed_;
    TeskRichTextEdit* editor_;
    QFontComboBox* fontName_;
    QComboBox* pointSize_;
    TeskColourButton* colour_;
    TeskColourButton* backColour_;
    QToolButton* bold_;
    QToolButton* italic_;
    QToolButton* underline_;
    QToolButton* subscript_;
    QToolButton* superscript_;
    QButtonGroup* alignment_;
    QButtonGroup* verticalAlignment_;
};
