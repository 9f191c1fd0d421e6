#pragma once
// Rich text in Qt's editor. Our documents and Qt's are converted run by run;
// every piece of text carries the format it came from, so that what Qt has
// no control for (indents, tab stops, spacing, shadows, tags) survives an
// edit. The clipboard carries RTF as well as Qt's own formats.
#include <QTextEdit>

class QTextDocument;
class ZoRichText;

/// Replaces the content of `document` with `rich`.
void TeskRichTextToDocument(const ZoRichText& rich, QTextDocument& document);
/// Replaces the text of `rich` with the content of `document`. The format
/// of the final paragraph mark, which new typing takes, follows the last
/// paragraph's.
void TeskDocumentToRichText(const QTextDocument& document, ZoRichText& rich);

/// A text editor that copies and pastes RTF ("text/rtf" or
/// "application/rtf") through our reader and writer.
class TeskRichTextEdit final : public QTextEdit {
  public:
    explicit TeskRichTextEdit(QWidget* parent = nullptr);

  protected:
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
};
