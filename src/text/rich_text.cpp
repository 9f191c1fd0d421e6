#include "text/rich_text.h"

#include <algorithm>

#include "text/rtf_reader.h"
#include "text/rtf_writer.h"

namespace {

bool EndsParagraph(const ZoTextRun& run) noexcept {
    return !run.text.empty() && run.text.back() == '\n';
}

bool StartsWithTab(const ZoTextRun& run) noexcept {
    return !run.text.empty() && run.text.front() == '\t';
}

// Cuts a run after every "\n" and before every tab.
void AppendPieces(const ZoTextRun& run, std::vector<ZoTextRun>& out) {
    size_t begin = 0;
    for (size_t i = 0; i < run.text.size(); ++i) {
        const bool cutBefore = run.text[i] == '\t' && i > begin;
        if (cutBefore) {
            out.push_back({run.text.substr(begin, i - begin), run.format});
            begin = i;
        }
        if (run.text[i] == '\n') {
            out.push_back({run.text.substr(begin, i + 1 - begin), run.format});
            begin = i + 1;
        }
    }
    if (begin < run.text.size()) {
        out.push_back({run.text.substr(begin), run.format});
    }
}

}  // namespace

ZoRichText::ZoRichText(int32_t logPixels) {
    settings_.logPixels = logPixels > 0 ? logPixels : kZoLogPixels;
    styles_.push_back(std::make_shared<const ZoTextFormat>(ZoTextFormat::DefaultStyle()));
    Clear();
}

ZoString ZoRichText::Text() const {
    ZoString text;
    text.reserve(Length());
    for (const auto& run : runs_) {
        text += run.text;
    }
    return text;
}

size_t ZoRichText::Length() const noexcept {
    size_t length = 0;
    for (const auto& run : runs_) {
        length += run.text.size();
    }
    return length;
}

void ZoRichText::SetSelection(size_t start, size_t end) noexcept {
    const size_t length = Length();
    start = std::min(start, length);
    end = std::min(end, length);
    selectionStart_ = std::min(start, end);
    selectionEnd_ = std::max(start, end);
}

void ZoRichText::Clear() {
    runs_.assign(1, ZoTextRun{"\n", DefaultStyle()});
    selectionStart_ = selectionEnd_ = 0;
    Changed();
}

size_t ZoRichText::RunIndexAt(size_t offset) const noexcept {
    size_t begin = 0;
    for (size_t i = 0; i < runs_.size(); ++i) {
        if (offset < begin + runs_[i].text.size()) {
            return i;
        }
        begin += runs_[i].text.size();
    }
    return runs_.size() - 1;
}

size_t ZoRichText::SplitAt(size_t offset) {
    size_t begin = 0;
    for (size_t i = 0; i < runs_.size(); ++i) {
        const size_t size = runs_[i].text.size();
        if (offset == begin) {
            return i;
        }
        if (offset < begin + size) {
            ZoTextRun tail{runs_[i].text.substr(offset - begin), runs_[i].format};
            runs_[i].text.resize(offset - begin);
            runs_.insert(runs_.begin() + static_cast<ptrdiff_t>(i) + 1, std::move(tail));
            return i + 1;
        }
        begin += size;
    }
    return runs_.size();
}

void ZoRichText::Normalise() {
    std::vector<ZoTextRun> pieces;
    pieces.reserve(runs_.size() + 1);
    for (const auto& run : runs_) {
        AppendPieces(run, pieces);
    }
    std::vector<ZoTextRun> merged;
    merged.reserve(pieces.size() + 1);
    for (auto& piece : pieces) {
        if (!merged.empty() && !EndsParagraph(merged.back()) && !StartsWithTab(piece) &&
            merged.back().format->SameAppearance(*piece.format)) {
            merged.back().text += piece.text;
        } else {
            merged.push_back(std::move(piece));
        }
    }
    if (merged.empty() || !EndsParagraph(merged.back())) {
        merged.push_back({"\n", merged.empty() ? DefaultStyle() : merged.back().format});
    } else if (merged.back().text.size() > 1) {
        merged.back().text.pop_back();
        merged.push_back({"\n", merged.back().format});
    }
    runs_ = std::move(merged);
    Changed();
}

void ZoRichText::InsertText(size_t offset, std::string_view text,
                            std::shared_ptr<const ZoTextFormat> format) {
    offset = std::min(offset, Length() - 1);
    if (!format) {
        format = DefaultStyle();
    }
    const size_t index = SplitAt(offset);
    runs_.insert(runs_.begin() + static_cast<ptrdiff_t>(index),
                 ZoTextRun{ZoString(text), std::move(format)});
    Normalise();
    SetSelection(offset + text.size(), offset + text.size());
}

void ZoRichText::DeleteText(size_t start, size_t end) {
    end = std::min(end, Length() - 1);
    if (start >= end) {
        return;
    }
    const size_t first = SplitAt(start);
    const size_t last = SplitAt(end);
    runs_.erase(runs_.begin() + static_cast<ptrdiff_t>(first),
                runs_.begin() + static_cast<ptrdiff_t>(last));
    Normalise();
    SetSelection(start, start);
}

void ZoRichText::ModifyFormat(size_t start, size_t end,
                              const std::function<void(ZoTextFormat&)>& change) {
    end = std::min(end, Length());
    if (start >= end) {
        return;
    }
    const size_t first = SplitAt(start);
    const size_t last = SplitAt(end);
    for (size_t i = first; i < last; ++i) {
        ZoTextFormat format = *runs_[i].format;
        change(format);
        runs_[i].format = std::make_shared<const ZoTextFormat>(std::move(format));
    }
    Normalise();
}

void ZoRichText::ModifyParagraphs(size_t start, size_t end,
                                  const std::function<void(ZoTextFormat&)>& change) {
    const ZoString text = Text();
    start = std::min(start, text.size() - 1);
    end = std::clamp(end, start + 1, text.size());
    const size_t previousMark = start == 0 ? ZoString::npos : text.rfind('\n', start - 1);
    const size_t paragraphStart = previousMark == ZoString::npos ? 0 : previousMark + 1;
    const size_t paragraphEnd = text.find('\n', end - 1) + 1;
    ModifyFormat(paragraphStart, paragraphEnd, change);
}

const std::shared_ptr<const ZoTextFormat>& ZoRichText::FormatAt(size_t offset) const noexcept {
    return runs_[RunIndexAt(offset)].format;
}

bool ZoRichText::GetRTF(ZoString& rtf) {
    const size_t start = selectionStart_;
    const size_t end = selectionEnd_;
    SelectAll();
    WriteRTF(rtf, false);
    SetSelection(start, end);
    return true;
}

bool ZoRichText::SetRTF(std::string_view rtf) {
    Clear();
    SelectAll();
    return ReadRTF(rtf, false);
}

void ZoRichText::WriteRTF(ZoString& rtf, bool suppressIds) const {
    ZoRtfWriteOptions options;
    options.selectionStart = selectionStart_;
    options.selectionEnd = selectionEnd_;
    options.logPixels = settings_.logPixels;
    options.suppressIds = suppressIds;
    rtf = ZoWriteRtf(runs_, *DefaultStyle(), options);
}

bool ZoRichText::ReadRTF(std::string_view rtf, bool suppressIds) {
    auto pieces = ZoReadRtf(rtf, DefaultStyle(), settings_.logPixels, suppressIds);
    if (!pieces) {
        return false;
    }
    DeleteText(selectionStart_, selectionEnd_);
    const size_t caret = std::min(selectionStart_, Length() - 1);
    size_t inserted = 0;
    for (const auto& piece : *pieces) {
        inserted += piece.text.size();
    }
    const size_t index = SplitAt(caret);
    runs_.insert(runs_.begin() + static_cast<ptrdiff_t>(index), pieces->begin(), pieces->end());
    // An empty last paragraph would otherwise keep the look of the old text.
    const size_t after = index + pieces->size();
    if (!pieces->empty() && after + 1 == runs_.size() && runs_[after].text == "\n") {
        runs_[after].format = pieces->back().format;
    }
    Normalise();
    SetSelection(caret + inserted, caret + inserted);
    return true;
}

bool ZoRichText::SameContent(const ZoRichText& other) const {
    return runs_.size() == other.runs_.size() &&
           std::equal(runs_.begin(), runs_.end(), other.runs_.begin(),
                      [](const ZoTextRun& a, const ZoTextRun& b) {
                          return a.text == b.text && a.format->SameAppearance(*b.format);
                      });
}

void ZoRichText::SetPageSize(int32_t width, int32_t height) noexcept {
    settings_.pageWidth = width;
    settings_.pageHeight = height;
    Changed();
}

void ZoRichText::SetDefaultTabWidth(int32_t pixels) noexcept {
    settings_.defaultTabWidth = std::max(pixels, 1);
    Changed();
}

void ZoRichText::SetZoom(double zoom) noexcept {
    settings_.zoom = zoom > 0 ? zoom : 1.0;
    Changed();
}

void ZoRichText::SetVerticalAlignment(ZoVerticalAlignment alignment) noexcept {
    settings_.verticalAlignment = alignment;
    Changed();
}

const std::vector<ZoTextLine>& ZoRichText::Lines() {
    if (!layoutValid_) {
        lines_ = ZoLayOutText(runs_, settings_);
        layoutValid_ = true;
    }
    return lines_;
}

void ZoRichText::GetTextSize(int32_t& width, int32_t& height) {
    const ZoSize size = ZoLaidOutSize(Lines());
    width = size.cx;
    height = size.cy;
}
