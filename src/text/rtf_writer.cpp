#include "text/rtf_writer.h"

#include <algorithm>

#include "text/code_page.h"

namespace {

struct FontEntry {
    ZoString name;
    int32_t number;
};

// The runs the selection touches, as [first, last] indices and the byte
// offset at which `first` begins.
struct RunRange {
    size_t first = 0;
    size_t last = 0;
    size_t firstBegin = 0;
};

RunRange SelectedRuns(const std::vector<ZoTextRun>& runs, size_t start, size_t end) {
    RunRange range;
    const size_t lastByte = end > start ? end - 1 : start;
    size_t begin = 0;
    bool foundFirst = false;
    for (size_t i = 0; i < runs.size(); ++i) {
        const size_t next = begin + runs[i].text.size();
        if (!foundFirst && (start < next || i + 1 == runs.size())) {
            range.first = i;
            range.firstBegin = begin;
            foundFirst = true;
        }
        range.last = i;
        if (lastByte < next) {
            break;
        }
        begin = next;
    }
    return range;
}

class Writer {
  public:
    Writer(const std::vector<ZoTextRun>& runs, const ZoTextFormat& style,
           const ZoRtfWriteOptions& options)
        : runs_(runs), style_(style), options_(options) {
        range_ = SelectedRuns(runs, options.selectionStart, options.selectionEnd);
    }

    ZoString Write() {
        BuildTables();
        out_.reserve(Estimate());
        out_ += "{\\rtf1\\ansi\\deff0\n{\\fonttbl";
        for (auto font = fonts_.rbegin(); font != fonts_.rend(); ++font) {
            out_ += ZoFormat("{\\f%d ", font->number);
            WriteFontName(font->name);
            out_ += ";}";
        }
        out_ += "}\n{\\colortbl";
        for (const COLORREF colour : colours_) {
            out_ += ZoFormat("\\red%u\\green%u\\blue%u;", ZoGetRed(colour), ZoGetGreen(colour),
                             ZoGetBlue(colour));
        }
        out_ += "}\n";
        size_t begin = range_.firstBegin;
        for (size_t i = range_.first; i <= range_.last; ++i) {
            const ZoTextRun& run = runs_[i];
            WriteCharacterFormat(*run.format);
            if (i == range_.first || runs_[i - 1].text.back() == '\n') {
                WriteParagraphFormat(*run.format);
            }
            WriteText(run.text, begin, i + 1 == runs_.size());
            begin += run.text.size();
        }
        out_ += "}";
        return std::move(out_);
    }

  private:
    void AddFont(const ZoString& name) {
        const bool known = std::any_of(fonts_.begin(), fonts_.end(),
                                       [&](const FontEntry& font) { return font.name == name; });
        if (!known) {
            fonts_.push_back({name, static_cast<int32_t>(fonts_.size())});
        }
    }

    void AddColour(COLORREF colour) {
        if (std::find(colours_.begin(), colours_.end(), colour) == colours_.end()) {
            colours_.push_back(colour);
        }
    }

    void AddColours(const ZoTextFormat& format) {
        AddColour(format.Colour());
        if (!format.HasTransparentBack()) {
            AddColour(format.BackColour());
        }
        if (format.HasShadow()) {
            AddColour(format.ShadowColour());
        }
    }

    void BuildTables() {
        AddFont(style_.FontName());
        AddColours(style_);
        for (size_t i = range_.first; i <= range_.last; ++i) {
            AddFont(runs_[i].format->FontName());
            AddColours(*runs_[i].format);
        }
    }

    size_t Estimate() const {
        size_t textLength = 0;
        for (size_t i = range_.first; i <= range_.last; ++i) {
            textLength += runs_[i].text.size();
        }
        return 50 * fonts_.size() + 120 + 50 * colours_.size() +
               100 * (range_.last - range_.first + 1) + 2 * textLength;
    }

    int32_t FontNumber(const ZoString& name) const {
        for (const auto& font : fonts_) {
            if (font.name == name) {
                return font.number;
            }
        }
        return 0;
    }

    int32_t ColourIndex(COLORREF colour) const {
        return static_cast<int32_t>(std::find(colours_.begin(), colours_.end(), colour) -
                                    colours_.begin());
    }

    int32_t PixelsToTwips(int32_t pixels) const {
        const int64_t dpi = options_.logPixels;
        return static_cast<int32_t>((int64_t{pixels} * 1440 + dpi / 2) / dpi);
    }

    void WriteCharacterFormat(const ZoTextFormat& format) {
        out_ += "\\plain";
        if (format.IsBold()) {
            out_ += "\\b";
        }
        if (format.IsItalic()) {
            out_ += "\\i";
        }
        if (format.IsUnderlined()) {
            out_ += "\\ul";
        }
        if (const int32_t index = ColourIndex(format.Colour()); index != 0) {
            out_ += ZoFormat("\\cf%d", index);
        }
        if (!format.HasTransparentBack()) {
            out_ += ZoFormat("\\cb%d", ColourIndex(format.BackColour()));
        }
        if (format.HasShadow()) {
            out_ += ZoFormat("\\shad%d", ColourIndex(format.ShadowColour()));
        }
        const int32_t halfPoints = 2 * format.PointSize();
        out_ += ZoFormat("\\f%d\\fs%d", FontNumber(format.FontName()), halfPoints);
        if (format.IsSubscript()) {
            out_ += ZoFormat("\\dn%d", halfPoints / 4);
        }
        if (format.IsSuperscript()) {
            out_ += ZoFormat("\\up%d", halfPoints / 4);
        }
        if (!options_.suppressIds) {
            for (const int32_t id : format.Ids()) {
                out_ += ZoFormat("\\id%d", id);
            }
        }
        out_ += ' ';
    }

    void WriteParagraphFormat(const ZoTextFormat& format) {
        static constexpr const char* kAlignments[] = {"\\ql", "\\qr", "\\qc", "\\qj"};
        out_ += "\\pard";
        out_ += kAlignments[static_cast<int32_t>(format.Alignment())];
        out_ += ZoFormat("\\sl%d", LineSpacingTwips(format));
        out_ += ZoFormat("\\li%d\\ri%d\\fi%d", PixelsToTwips(format.LeftIndent()),
                         PixelsToTwips(format.RightIndent()), PixelsToTwips(format.FirstIndent()));
        static constexpr const char* kTabKinds[] = {"", "\\tqr", "\\tqc", "\\tqdec"};
        for (const ZoTabStop& tab : format.Tabs()) {
            const auto kind = static_cast<size_t>(tab.kind);
            out_ += kind < 4 ? kTabKinds[kind] : "";
            out_ += ZoFormat("\\tx%d", PixelsToTwips(tab.position));
        }
        if (format.HasBullet()) {
            out_ += "\\bullet";
        }
        out_ += ' ';
    }

    int32_t LineSpacingTwips(const ZoTextFormat& format) const {
        const int64_t spacing = format.LineSpacing();
        const int64_t dpi = options_.logPixels;
        if (spacing < 0) {
            return static_cast<int32_t>(-((dpi / 2 - spacing * 1440) / dpi));
        }
        return static_cast<int32_t>(int64_t{format.PointSize()} * 24 * spacing / 1024);
    }

    // `begin` is the run's offset in the whole text, for clipping to the
    // selection.
    void WriteText(const ZoString& text, size_t begin, bool lastOfDocument) {
        const size_t from = std::max(options_.selectionStart, begin) - begin;
        size_t to = std::min(options_.selectionEnd, begin + text.size());
        to = to > begin ? to - begin : 0;
        if (lastOfDocument && to == text.size() && to > from) {
            --to;  // the document's final paragraph mark is implied
        }
        std::string_view piece(text);
        for (size_t i = from; i < to;) {
            WriteCharacter(ZoNextUtf8(piece, i));
        }
    }

    void WriteCharacter(char32_t character) {
        switch (character) {
            case '\n':
                out_ += "\\par";
                return;
            case '\\':
            case '{':
            case '}':
                out_ += '\\';
                out_ += static_cast<char>(character);
                return;
            default:
                break;
        }
        if (const auto byte = ZoUnicodeToCp1252(character)) {
            out_ += static_cast<char>(*byte);
            return;
        }
        // RTF's \u takes a signed 16-bit value, so characters beyond the
        // basic plane go out as a surrogate pair.
        if (character > 0xFFFF) {
            const char32_t value = character - 0x10000;
            WriteUnicode(0xD800 + (value >> 10));
            WriteUnicode(0xDC00 + (value & 0x3FF));
            return;
        }
        WriteUnicode(character);
    }

    // Face names are plain Windows-1252; the bytes that would end the entry
    // or the table go out as hexadecimal escapes.
    void WriteFontName(std::string_view name) {
        for (size_t i = 0; i < name.size();) {
            const char32_t character = ZoNextUtf8(name, i);
            const uint8_t byte = ZoUnicodeToCp1252(character).value_or('?');
            if (byte == '\\' || byte == '{' || byte == '}' || byte == ';' || byte < 0x20) {
                out_ += ZoFormat("\\'%02x", byte);
            } else {
                out_ += static_cast<char>(byte);
            }
        }
    }

    void WriteUnicode(char32_t unit) {
        out_ += ZoFormat("\\u%d?", static_cast<int16_t>(static_cast<uint16_t>(unit)));
    }

    const std::vector<ZoTextRun>& runs_;
    const ZoTextFormat& style_;
    const ZoRtfWriteOptions& options_;
    RunRange range_;
    std::vector<FontEntry> fonts_;
    std::vector<COLORREF> colours_;
    ZoString out_;
};

}  // namespace

ZoString ZoWriteRtf(const std::vector<ZoTextRun>& runs, const ZoTextFormat& defaultStyle,
                    const ZoRtfWriteOptions& options) {
    return Writer(runs, defaultStyle, options).Write();
}
