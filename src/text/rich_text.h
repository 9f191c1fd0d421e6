#pragma once
// The formatted-text document behind the text object: a chain of runs, each
// with a format that inherits from the document's default style, a selection,
// RTF in and out, and the laid-out lines.
//
// Runs are kept normalised after every change: a run is split after every
// "\n" (a paragraph's format is the format of the run that starts it) and
// before every tab (a tab is always the first byte of its run), the final
// "\n" is a run of its own, there are no empty runs, and neighbours that look
// the same are merged unless the first ends a paragraph or the second starts
// with a tab. The document is never empty: it always ends with that "\n".
//
// Offsets and selections count bytes of the UTF-8 text.
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "text/text_format.h"
#include "text/text_layout.h"

/// The logical pixel density Vimbo lays text out at.
inline constexpr int32_t kZoLogPixels = 96;

class ZoRichText {
  public:
    explicit ZoRichText(int32_t logPixels = kZoLogPixels);

    const std::vector<ZoTextRun>& Runs() const noexcept { return runs_; }
    /// The default style ("<default>"); every run format inherits from it.
    const std::shared_ptr<const ZoTextFormat>& DefaultStyle() const noexcept { return styles_[0]; }
    int32_t LogPixels() const noexcept { return settings_.logPixels; }
    /// The whole text, final "\n" included.
    ZoString Text() const;
    size_t Length() const noexcept;

    size_t SelectionStart() const noexcept { return selectionStart_; }
    size_t SelectionEnd() const noexcept { return selectionEnd_; }
    /// Clamped to the text and ordered.
    void SetSelection(size_t start, size_t end) noexcept;
    void SelectAll() noexcept { SetSelection(0, Length()); }

    /// Back to one "\n" in the default style.
    void Clear();
    /// Inserts UTF-8 `text` at `offset` in `format` (the default style when
    /// null) and leaves the caret after it.
    void InsertText(size_t offset, std::string_view text,
                    std::shared_ptr<const ZoTextFormat> format = nullptr);
    /// Deletes [start, end); the final paragraph mark always stays.
    void DeleteText(size_t start, size_t end);
    /// Applies `change` to copies of the formats of the text in [start, end).
    void ModifyFormat(size_t start, size_t end, const std::function<void(ZoTextFormat&)>& change);
    /// Applies `change` to every run of the paragraphs that [start, end)
    /// touches, so that paragraph attributes stay the same across a paragraph.
    void ModifyParagraphs(size_t start, size_t end,
                          const std::function<void(ZoTextFormat&)>& change);
    /// The format of the run holding `offset`.
    const std::shared_ptr<const ZoTextFormat>& FormatAt(size_t offset) const noexcept;

    /// The whole text as RTF.
    bool GetRTF(ZoString& rtf);
    /// Replaces the document with `rtf`; false, leaving an empty document, if
    /// it does not begin with "{\rtf".
    bool SetRTF(std::string_view rtf);
    /// The selected runs as RTF; "\id" tags are left out when `suppressIds`.
    void WriteRTF(ZoString& rtf, bool suppressIds) const;
    /// Replaces the selection with `rtf`; false, inserting nothing, if it does
    /// not begin with "{\rtf".
    bool ReadRTF(std::string_view rtf, bool suppressIds);

    /// True when both documents hold the same text in the same appearance.
    bool SameContent(const ZoRichText& other) const;

    const ZoTextLayoutSettings& LayoutSettings() const noexcept { return settings_; }
    void SetPageSize(int32_t width, int32_t height) noexcept;
    void SetDefaultTabWidth(int32_t pixels) noexcept;
    void SetZoom(double zoom) noexcept;
    void SetVerticalAlignment(ZoVerticalAlignment alignment) noexcept;
    /// The laid-out lines, laid out again if anything changed since.
    const std::vector<ZoTextLine>& Lines();
    /// The laid-out size in pixels (largest right edge, bottom of last line).
    void GetTextSize(int32_t& width, int32_t& height);

  private:
    size_t RunIndexAt(size_t offset) const noexcept;
    /// Splits the run holding `offset` so that a run starts there; returns
    /// that run's index (runs_.size() - 1 for the final mark's offset).
    size_t SplitAt(size_t offset);
    void Normalise();
    void Changed() noexcept { layoutValid_ = false; }

    std::vector<ZoTextRun> runs_;
    std::vector<std::shared_ptr<const ZoTextFormat>> styles_;
    size_t selectionStart_ = 0;
    size_t selectionEnd_ = 0;
    ZoTextLayoutSettings settings_;
    std::vector<ZoTextLine> lines_;
    bool layoutValid_ = false;
};
