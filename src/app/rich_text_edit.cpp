#include "app/rich_text_edit.h"

#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <cmath>
#include <memory>

#include "app/colour_button.h"
#include "text/rich_text.h"

namespace {

using FormatRef = std::shared_ptr<const ZoTextFormat>;

// The format a piece of text came from.
constexpr int kSourceFormat = QTextFormat::UserProperty + 1;

const QString kRtfMime = QStringLiteral("text/rtf");
const QString kRtfMimeAlternative = QStringLiteral("application/rtf");

Qt::Alignment ToQtAlignment(ZoTextAlignment alignment) {
    switch (alignment) {
        case ZoTextAlignment::Right:
            return Qt::AlignRight;
        case ZoTextAlignment::Centre:
            return Qt::AlignHCenter;
        case ZoTextAlignment::Justify:
            return Qt::AlignJustify;
        default:
            return Qt::AlignLeft;
    }
}

ZoTextAlignment FromQtAlignment(Qt::Alignment alignment) {
    if (alignment & Qt::AlignRight)
        return ZoTextAlignment::Right;
    if (alignment & Qt::AlignHCenter)
        return ZoTextAlignment::Centre;
    if (alignment & Qt::AlignJustify)
        return ZoTextAlignment::Justify;
    return ZoTextAlignment::Left;
}

QTextCharFormat ToCharFormat(const FormatRef& format) {
    QTextCharFormat out;
    out.setFontFamilies({QString::fromStdString(format->FontName())});
    out.setFontPointSize(format->PointSize());
    out.setFontWeight(format->IsBold() ? QFont::Bold : QFont::Normal);
    out.setFontItalic(format->IsItalic());
    out.setFontUnderline(format->IsUnderlined());
    out.setVerticalAlignment(format->IsSubscript()     ? QTextCharFormat::AlignSubScript
                             : format->IsSuperscript() ? QTextCharFormat::AlignSuperScript
                                                       : QTextCharFormat::AlignNormal);
    out.setForeground(TeskToQColor(format->Colour()));
    if (!format->HasTransparentBack())
        out.setBackground(TeskToQColor(format->BackColour()));
    out.setProperty(kSourceFormat, QVariant::fromValue(format));
    return out;
}

QTextBlockFormat ToBlockFormat(const ZoTextFormat& format) {
    QTextBlockFormat out;
    out.setAlignment(ToQtAlignment(format.Alignment()));
    out.setLeftMargin(format.LeftIndent());
    out.setRightMargin(format.RightIndent());
    out.setTextIndent(format.FirstIndent());
    return out;
}

/// Copies into `format` each attribute that Qt shows and that differs
/// between `chars`/`block` (as Qt has them now) and `was`/`wasBlock` (as
/// they were shown). What the user left alone stays as it was, even where
/// Qt cannot show it (subscript and superscript together, say).
void ApplyQtFormat(ZoTextFormat& format, const QTextCharFormat& chars,
                   const QTextBlockFormat& block, const QTextCharFormat& was,
                   const QTextBlockFormat& wasBlock) {
    if (chars.font().family() != was.font().family())
        format.SetFontName(chars.font().family().toStdString());
    if (chars.fontPointSize() > 0 && chars.fontPointSize() != was.fontPointSize())
        format.SetPointSize(static_cast<int32_t>(std::lround(chars.fontPointSize())));
    const bool bold = chars.fontWeight() >= QFont::DemiBold;
    if (bold != (was.fontWeight() >= QFont::DemiBold))
        format.SetFlag(kZoTextBold, bold);
    if (chars.fontItalic() != was.fontItalic())
        format.SetFlag(kZoTextItalic, chars.fontItalic());
    if (chars.fontUnderline() != was.fontUnderline())
        format.SetFlag(kZoTextUnderline, chars.fontUnderline());
    if (chars.verticalAlignment() != was.verticalAlignment()) {
        format.SetFlag(kZoTextSubscript,
                       chars.verticalAlignment() == QTextCharFormat::AlignSubScript);
        format.SetFlag(kZoTextSuperscript,
                       chars.verticalAlignment() == QTextCharFormat::AlignSuperScript);
    }
    if (chars.foreground() != was.foreground())
        format.SetColour(TeskFromQColor(chars.foreground().color()));
    if (chars.background() != was.background()) {
        const bool back = chars.background().style() != Qt::NoBrush;
        format.SetBackColour(
            back ? TeskFromQColor(chars.background().color()) : format.BackColour(), !back);
    }
    if (block.alignment() != wasBlock.alignment())
        format.SetAlignment(FromQtAlignment(block.alignment()));
    if (block.leftMargin() != wasBlock.leftMargin())
        format.SetLeftIndent(static_cast<int32_t>(block.leftMargin()));
    if (block.rightMargin() != wasBlock.rightMargin())
        format.SetRightIndent(static_cast<int32_t>(block.rightMargin()));
    if (block.textIndent() != wasBlock.textIndent())
        format.SetFirstIndent(static_cast<int32_t>(block.textIndent()));
}

FormatRef SourceOf(const QTextCharFormat& chars, const ZoRichText& rich) {
    const FormatRef source = chars.property(kSourceFormat).value<FormatRef>();
    return source ? source : rich.DefaultStyle();
}

/// Applies to `format` what Qt changed in text that came from `source`.
void ApplyQtChanges(ZoTextFormat& format, const FormatRef& source, const QTextCharFormat& chars,
                    const QTextBlockFormat& block) {
    ApplyQtFormat(format, chars, block, ToCharFormat(source), ToBlockFormat(*source));
}

/// The format for text that looks like `chars` in a paragraph like `block`,
/// keeping whatever else the text's own format held.
FormatRef FromQtFormat(const QTextCharFormat& chars, const QTextBlockFormat& block,
                       const ZoRichText& rich) {
    const FormatRef source = SourceOf(chars, rich);
    // Copies keep their source's parent, so that formats do not nest deeper
    // with every edit; the default style is the one every format inherits from.
    auto format = std::make_shared<ZoTextFormat>();
    if (source->parent)
        *format = *source;
    else
        format->parent = source;
    ApplyQtChanges(*format, source, chars, block);
    return format;
}

}  // namespace

void TeskRichTextToDocument(const ZoRichText& rich, QTextDocument& document) {
    document.clear();
    QTextCursor cursor(&document);
    const auto& runs = rich.Runs();
    bool paragraphStart = true;
    for (size_t i = 0; i < runs.size(); ++i) {
        const ZoTextRun& run = runs[i];
        const QTextCharFormat chars = ToCharFormat(run.format);
        if (paragraphStart) {
            cursor.setBlockFormat(ToBlockFormat(*run.format));
            cursor.setBlockCharFormat(chars);
            paragraphStart = false;
        }
        const bool last = i + 1 == runs.size();
        QString text = QString::fromStdString(run.text);
        // The document's final mark ends Qt's last block; it is no text of its own.
        if (last && text.endsWith(QLatin1Char('\n')))
            text.chop(1);
        const QStringList paragraphs = text.split(QLatin1Char('\n'));
        for (qsizetype p = 0; p < paragraphs.size(); ++p) {
            if (p > 0) {
                cursor.insertBlock(QTextBlockFormat(), chars);
                paragraphStart = true;
            }
            if (!paragraphs[p].isEmpty())
                cursor.insertText(paragraphs[p], chars);
        }
    }
}

void TeskDocumentToRichText(const QTextDocument& document, ZoRichText& rich) {
    rich.DeleteText(0, rich.Length() - 1);
    size_t offset = 0;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextBlockFormat paragraph = block.blockFormat();
        QTextCharFormat lastChars = block.charFormat();
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const std::string text = fragment.text().toStdString();
            rich.InsertText(offset, text, FromQtFormat(fragment.charFormat(), paragraph, rich));
            offset += text.size();
            lastChars = fragment.charFormat();
        }
        if (block.next().isValid()) {
            rich.InsertText(offset, "\n", FromQtFormat(lastChars, paragraph, rich));
            offset += 1;
        } else {
            const FormatRef mark = FromQtFormat(lastChars, paragraph, rich);
            rich.ModifyFormat(rich.Length() - 1, rich.Length(),
                              [&mark](ZoTextFormat& format) { format = *mark; });
        }
    }
    rich.SetSelection(0, 0);
}

TeskRichTextEdit::TeskRichTextEdit(QWidget* parent) : QTextEdit(parent) {
    setObjectName(QStringLiteral("richText"));
    setAcceptRichText(true);
}

QMimeData* TeskRichTextEdit::createMimeDataFromSelection() const {
    QMimeData* mime = QTextEdit::createMimeDataFromSelection();
    QTextDocument part;
    QTextCursor(&part).insertFragment(textCursor().selection());
    ZoRichText rich;
    TeskDocumentToRichText(part, rich);
    ZoString rtf;
    rich.GetRTF(rtf);
    mime->setData(kRtfMime, QByteArray::fromStdString(rtf));
    return mime;
}

bool TeskRichTextEdit::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasFormat(kRtfMime) || source->hasFormat(kRtfMimeAlternative) ||
           QTextEdit::canInsertFromMimeData(source);
}

void TeskRichTextEdit::insertFromMimeData(const QMimeData* source) {
    const QString type = source->hasFormat(kRtfMime) ? kRtfMime : kRtfMimeAlternative;
    ZoRichText rich;
    if (!source->hasFormat(type) || !rich.SetRTF(source->data(type).toStdString())) {
        QTextEdit::insertFromMimeData(source);
        return;
    }
    QTextDocument part;
    TeskRichTextToDocument(rich, part);
    textCursor().insertFragment(QTextDocumentFragment(&part));
}
