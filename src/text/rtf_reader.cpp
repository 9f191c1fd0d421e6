#include "text/rtf_reader.h"

#include <algorithm>
#include <functional>

#include "text/code_page.h"

namespace {

// The parameter value that means "no parameter given".
constexpr int32_t kNoParameter = 100000;
// Pixel distances and sizes beyond these are damage, not formatting; keeping
// them in range keeps layout arithmetic far from overflow.
constexpr int64_t kMaxPixels = 32767;
constexpr int64_t kMaxPointSize = 1638;
constexpr int64_t kMaxLineSpacing = 64 * kZoSingleLineSpacing;
constexpr int32_t kMaxUnicodeSkip = 16;

struct ControlWord {
    std::string_view word;
    int32_t parameter = kNoParameter;
    bool hasParameter = false;

    bool Is(std::string_view name) const noexcept { return word == name; }
    bool IsOff() const noexcept { return hasParameter && parameter == 0; }
};

bool IsLetter(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

int HexValue(char c) noexcept {
    if (IsDigit(c)) {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

// The byte of a "'hh" control word, if both digits are hexadecimal.
std::optional<uint8_t> HexByte(std::string_view word) noexcept {
    if (word.size() != 3 || word[0] != '\'') {
        return std::nullopt;
    }
    const int high = HexValue(word[1]);
    const int low = HexValue(word[2]);
    if (high < 0 || low < 0) {
        return std::nullopt;
    }
    return static_cast<uint8_t>(high * 16 + low);
}

void AppendCp1252(ZoString& out, std::string_view bytes) {
    for (const char byte : bytes) {
        ZoAppendUtf8(out, ZoCp1252ToUnicode(static_cast<uint8_t>(byte)));
    }
}

int32_t Clamp(int64_t value, int64_t low, int64_t high) noexcept {
    return static_cast<int32_t>(std::clamp(value, low, high));
}

class Cursor {
  public:
    // Input ends at the first NUL, as a C string would.
    explicit Cursor(std::string_view input) : input_(input.substr(0, input.find('\0'))) {}

    bool AtEnd() const noexcept { return position_ >= input_.size(); }
    char Peek() const noexcept { return input_[position_]; }
    char Take() noexcept { return input_[position_++]; }
    bool StartsWith(std::string_view prefix) const noexcept {
        return input_.substr(position_).starts_with(prefix);
    }
    void Skip(size_t count) noexcept { position_ = std::min(input_.size(), position_ + count); }

    // Bytes up to (not including) the next one in `stops`.
    std::string_view TakeUntil(std::string_view stops) noexcept {
        const size_t begin = position_;
        while (!AtEnd() && stops.find(Peek()) == std::string_view::npos) {
            ++position_;
        }
        return input_.substr(begin, position_ - begin);
    }

    // Reads the control word after a backslash.
    ControlWord ReadControlWord() noexcept {
        ControlWord result;
        if (AtEnd()) {
            return result;
        }
        if (Peek() == '\'' && input_.size() - position_ >= 3) {
            result.word = input_.substr(position_, 3);
            position_ += 3;
            return result;
        }
        if (!IsLetter(Peek())) {
            result.word = input_.substr(position_++, 1);
            return result;
        }
        const size_t begin = position_;
        while (!AtEnd() && IsLetter(Peek())) {
            ++position_;
        }
        if (AtEnd()) {
            return result;  // a word cut off by the end of the input is no word
        }
        result.word = input_.substr(begin, position_ - begin);
        ReadParameter(result);
        if (!AtEnd() && Peek() == ' ') {
            ++position_;
        }
        return result;
    }

    ControlWord PeekControlWord() const noexcept {
        Cursor copy = *this;
        return copy.ReadControlWord();
    }

    // Skips the rest of a group whose "{" has been read, its "}" included.
    void SkipGroup() noexcept {
        size_t depth = 1;
        while (!AtEnd()) {
            const char c = Take();
            if (c == '\\') {
                SkipBinary(ReadControlWord());
            } else if (c == '{') {
                ++depth;
            } else if (c == '}' && --depth == 0) {
                return;
            }
        }
    }

    // "\binN" is followed by N raw bytes that may hold anything, braces too.
    void SkipBinary(const ControlWord& word) noexcept {
        if (word.Is("bin") && word.hasParameter && word.parameter > 0) {
            Skip(static_cast<size_t>(word.parameter));
        }
    }

  private:
    void ReadParameter(ControlWord& result) noexcept {
        const size_t begin = position_;
        const bool negative = Peek() == '-';
        if (negative) {
            ++position_;
        }
        int64_t value = 0;
        bool digits = false;
        while (!AtEnd() && IsDigit(Peek())) {
            value = std::min<int64_t>(value * 10 + (Take() - '0'), INT32_MAX);
            digits = true;
        }
        if (!digits) {
            position_ = begin;  // a lone "-" is text, not a sign
            return;
        }
        if (AtEnd()) {
            return;  // digits cut off by the end of the input mean nothing
        }
        result.parameter = static_cast<int32_t>(negative ? -value : value);
        result.hasParameter = true;
    }

    std::string_view input_;
    size_t position_ = 0;
};

struct FontEntry {
    ZoString name;
    int32_t number;
};

struct Group {
    ZoTextFormat format;
    int32_t unicodeSkip = 1;  // fallback characters after each \uN
};

class Reader {
  public:
    Reader(std::string_view input, const std::shared_ptr<const ZoTextFormat>& style,
           int32_t logPixels, bool suppressIds)
        : cursor_(input), logPixels_(logPixels), suppressIds_(suppressIds) {
        ZoTextFormat empty;
        empty.parent = style;
        groups_.push_back({std::move(empty), 1});
    }

    std::optional<std::vector<ZoTextRun>> Read() {
        if (!cursor_.StartsWith("{\\rtf")) {
            return std::nullopt;
        }
        // "\rtf1" is a control word like any other: its version and the
        // space that ends it are no text.
        cursor_.Skip(4);
        cursor_.ReadControlWord();
        while (!cursor_.AtEnd() && !groups_.empty()) {
            const char c = cursor_.Peek();
            if (c == '\r' || c == '\n') {
                cursor_.Skip(1);
            } else if (c == '\\') {
                cursor_.Skip(1);
                HandleControlWord(cursor_.ReadControlWord());
            } else if (c == '{') {
                cursor_.Skip(1);
                OpenGroup();
            } else if (c == '}') {
                cursor_.Skip(1);
                CloseGroup();
            } else {
                ReadText();
            }
        }
        return std::move(runs_);
    }

  private:
    ZoTextFormat& Mutable() noexcept {
        snapshot_.reset();
        return groups_.back().format;
    }
    const ZoTextFormat& Current() const noexcept { return groups_.back().format; }

    void AppendText(std::string_view utf8) {
        if (utf8.empty()) {
            return;
        }
        if (!snapshot_) {
            snapshot_ = std::make_shared<const ZoTextFormat>(Current());
        }
        if (!runs_.empty() && runs_.back().format == snapshot_) {
            runs_.back().text += utf8;
        } else {
            runs_.push_back({ZoString(utf8), snapshot_});
        }
    }

    void OpenGroup() {
        pendingSkip_ = 0;
        if (!cursor_.AtEnd() && cursor_.Peek() == '\\' && ReadDestination()) {
            return;
        }
        if (groups_.size() >= kZoRtfMaxGroupDepth) {
            cursor_.SkipGroup();
            return;
        }
        groups_.push_back(groups_.back());
        snapshot_.reset();
    }

    void CloseGroup() {
        pendingSkip_ = 0;
        groups_.pop_back();
        snapshot_.reset();
    }

    // A group whose first word names a destination is consumed here whole.
    bool ReadDestination() {
        static constexpr std::string_view kSkipped[] = {"*",
                                                        "stylesheet",
                                                        "pict",
                                                        "info",
                                                        "pntext",
                                                        "pntxta",
                                                        "pntxtb",
                                                        "header",
                                                        "headerl",
                                                        "headerr",
                                                        "headerf",
                                                        "footer",
                                                        "footerl",
                                                        "footerr",
                                                        "footerf",
                                                        "footnote",
                                                        "object",
                                                        "listtable",
                                                        "listoverridetable",
                                                        "revtbl",
                                                        "rsidtbl",
                                                        "filetbl",
                                                        "themedata",
                                                        "colorschememapping",
                                                        "latentstyles",
                                                        "datastore",
                                                        "fldinst"};
        Cursor lookahead = cursor_;
        lookahead.Skip(1);
        const ControlWord first = lookahead.ReadControlWord();
        if (first.Is("fonttbl")) {
            cursor_ = lookahead;
            ReadFontTable();
        } else if (first.Is("colortbl")) {
            cursor_ = lookahead;
            ReadColourTable();
        } else if (std::find(std::begin(kSkipped), std::end(kSkipped), first.word) !=
                   std::end(kSkipped)) {
            cursor_ = lookahead;
            cursor_.SkipBinary(first);
            cursor_.SkipGroup();
        } else {
            return false;
        }
        return true;
    }

    // The common shape of the font and colour tables: entries end with ";",
    // nested groups only add depth, and "\*" groups are skipped.
    void ReadTable(const std::function<void(const ControlWord&)>& onWord,
                   const std::function<void(std::string_view)>& onText,
                   const std::function<void()>& onEntry) {
        int depth = 1;
        while (!cursor_.AtEnd()) {
            const char c = cursor_.Peek();
            if (c == '\r' || c == '\n') {
                cursor_.Skip(1);
            } else if (c == '{') {
                cursor_.Skip(1);
                ++depth;
            } else if (c == '}') {
                cursor_.Skip(1);
                if (!cursor_.AtEnd() && cursor_.Peek() == ' ') {
                    cursor_.Skip(1);
                }
                if (--depth < 1) {
                    return;
                }
            } else if (c == '\\') {
                cursor_.Skip(1);
                const ControlWord word = cursor_.ReadControlWord();
                if (word.Is("*")) {
                    cursor_.SkipGroup();
                    if (--depth < 1) {
                        return;
                    }
                } else {
                    cursor_.SkipBinary(word);
                    onWord(word);
                }
            } else if (c == ';') {
                cursor_.Skip(1);
                onEntry();
            } else {
                onText(cursor_.TakeUntil("{}\\\r\n;"));
            }
        }
    }

    void ReadFontTable() {
        int32_t number = -1;
        ZoString name;
        ReadTable(
            [&](const ControlWord& word) {
                if (word.Is("f") && word.hasParameter) {
                    number = word.parameter;
                } else if (const auto byte = HexByte(word.word)) {
                    ZoAppendUtf8(name, ZoCp1252ToUnicode(*byte));
                }
            },
            [&](std::string_view text) { AppendCp1252(name, text); },
            [&] {
                fonts_.push_back({name.empty() ? ZoString("Times New Roman") : name, number});
                name.clear();
            });
    }

    // A component that is not given counts as 0, so an empty entry is black.
    void ReadColourTable() {
        uint8_t red = 0;
        uint8_t green = 0;
        uint8_t blue = 0;
        ReadTable(
            [&](const ControlWord& word) {
                const auto value = static_cast<uint8_t>(word.parameter & 0xFF);
                if (!word.hasParameter) {
                    return;
                }
                if (word.Is("red")) {
                    red = value;
                } else if (word.Is("green")) {
                    green = value;
                } else if (word.Is("blue")) {
                    blue = value;
                }
            },
            [](std::string_view) {},
            [&] {
                colours_.push_back(ZoRGB(red, green, blue));
                red = green = blue = 0;
            });
    }

    void ReadText() {
        std::string_view bytes = cursor_.TakeUntil("{}\\\r\n");
        const size_t skipped = std::min<size_t>(pendingSkip_, bytes.size());
        pendingSkip_ -= static_cast<int32_t>(skipped);
        bytes.remove_prefix(skipped);
        ZoString text;
        AppendCp1252(text, bytes);
        AppendText(text);
    }

    void HandleControlWord(const ControlWord& word) {
        cursor_.SkipBinary(word);
        if (pendingSkip_ > 0) {
            --pendingSkip_;  // a control word stands for one fallback character
            return;
        }
        if (!CharacterKeyword(word) && !ParagraphKeyword(word)) {
            SpecialCharacter(word);
        }
    }

    const COLORREF* ColourEntry(int32_t index) const noexcept {
        return index >= 0 && static_cast<size_t>(index) < colours_.size() ? &colours_[index]
                                                                          : nullptr;
    }

    bool CharacterKeyword(const ControlWord& word) {
        ZoTextFormat& format = groups_.back().format;
        if (word.Is("plain")) {
            Plain();
        } else if (word.Is("b") || word.Is("i") || word.Is("ul")) {
            const auto attribute = word.Is("b")   ? kZoTextBold
                                   : word.Is("i") ? kZoTextItalic
                                                  : kZoTextUnderline;
            Mutable().SetFlag(attribute, !word.IsOff());
        } else if (word.Is("ulnone")) {
            Mutable().SetFlag(kZoTextUnderline, false);
        } else if (word.Is("dn") || word.Is("sub")) {
            Mutable().SetFlag(kZoTextSubscript, !word.IsOff());
        } else if (word.Is("up") || word.Is("super")) {
            Mutable().SetFlag(kZoTextSuperscript, !word.IsOff());
        } else if (word.Is("nosupersub")) {
            Mutable().SetFlag(kZoTextSubscript, false);
            Mutable().SetFlag(kZoTextSuperscript, false);
        } else if (word.Is("f")) {
            const auto font = std::find_if(fonts_.begin(), fonts_.end(), [&](const FontEntry& f) {
                return word.hasParameter && f.number == word.parameter;
            });
            if (font != fonts_.end()) {
                Mutable().SetFontName(font->name);
            }
        } else if (word.Is("fs")) {
            if (word.hasParameter && word.parameter >= 0) {
                Mutable().SetPointSize(Clamp(word.parameter / 2, 0, kMaxPointSize));
            }
        } else if (word.Is("cf")) {
            if (const COLORREF* colour = ColourEntry(word.parameter)) {
                Mutable().SetColour(*colour);
            }
        } else if (word.Is("cb") || word.Is("highlight")) {
            if (const COLORREF* colour = ColourEntry(word.parameter)) {
                Mutable().SetBackColour(*colour, false);
            }
        } else if (word.Is("shad")) {
            if (const COLORREF* colour = ColourEntry(word.parameter)) {
                Mutable().SetShadow(*colour, true);
            }
        } else if (word.Is("id")) {
            if (!suppressIds_ && word.hasParameter) {
                std::vector<int32_t> ids = format.Ids();
                ids.push_back(word.parameter);
                Mutable().SetIds(std::move(ids));
            }
        } else {
            return false;
        }
        return true;
    }

    void Plain() {
        ZoTextFormat& format = Mutable();
        for (const auto attribute :
             {kZoTextBold, kZoTextItalic, kZoTextUnderline, kZoTextSubscript, kZoTextSuperscript}) {
            format.SetFlag(attribute, false);
        }
        if (!colours_.empty()) {
            format.SetColour(colours_.front());
        }
        format.SetBackColour(format.BackColour(), true);
        format.SetShadow(format.ShadowColour(), false);
        format.SetIds({});
    }

    // Rounds halves away from zero, so that negative indents written by the
    // writer (which truncates toward zero) read back as they were.
    int32_t TwipsToPixels(int32_t twips) const noexcept {
        const int64_t scaled = int64_t{twips} * logPixels_;
        const int64_t pixels = scaled < 0 ? (scaled - 720) / 1440 : (scaled + 720) / 1440;
        return Clamp(pixels, -kMaxPixels, kMaxPixels);
    }

    bool ParagraphKeyword(const ControlWord& word) {
        static constexpr std::pair<std::string_view, ZoTextAlignment> kAlignments[] = {
            {"ql", ZoTextAlignment::Left},
            {"qr", ZoTextAlignment::Right},
            {"qc", ZoTextAlignment::Centre},
            {"qj", ZoTextAlignment::Justify}};
        static constexpr std::pair<std::string_view, ZoTabKind> kTabKinds[] = {
            {"tqr", ZoTabKind::Right}, {"tqc", ZoTabKind::Centre}, {"tqdec", ZoTabKind::Decimal}};
        for (const auto& [name, alignment] : kAlignments) {
            if (word.Is(name)) {
                Mutable().SetAlignment(alignment);
                return true;
            }
        }
        for (const auto& [name, kind] : kTabKinds) {
            if (word.Is(name)) {
                pendingTabKind_ = kind;
                return true;
            }
        }
        if (word.Is("pard")) {
            ZoTextFormat& format = Mutable();
            format.SetAlignment(ZoTextAlignment::Left);
            format.SetLeftIndent(0);
            format.SetRightIndent(0);
            format.SetFirstIndent(0);
            format.SetTabs({});
            format.SetFlag(kZoTextBullet, false);
        } else if (word.Is("bullet")) {
            Mutable().SetFlag(kZoTextBullet, true);
        } else if (!word.hasParameter) {
            return word.Is("sl") || word.Is("li") || word.Is("ri") || word.Is("fi") ||
                   word.Is("tx");
        } else if (word.Is("sl")) {
            LineSpacing(word.parameter);
        } else if (word.Is("li")) {
            Mutable().SetLeftIndent(TwipsToPixels(word.parameter));
        } else if (word.Is("ri")) {
            Mutable().SetRightIndent(TwipsToPixels(word.parameter));
        } else if (word.Is("fi")) {
            Mutable().SetFirstIndent(TwipsToPixels(word.parameter));
        } else if (word.Is("tx")) {
            std::vector<ZoTabStop> tabs = Current().Tabs();
            tabs.push_back({TwipsToPixels(word.parameter), pendingTabKind_});
            Mutable().SetTabs(std::move(tabs));
            pendingTabKind_ = ZoTabKind::Left;
        } else {
            return false;
        }
        return true;
    }

    void LineSpacing(int32_t twips) {
        if (twips < 0) {
            const int64_t pixels = (-int64_t{twips} * logPixels_ + 720) / 1440;
            Mutable().SetLineSpacing(Clamp(-pixels, -kMaxPixels, -1));
            return;
        }
        // Other editors write "\sl0" for automatic spacing; no spacing at all
        // would stack every line on the first.
        if (twips == 0) {
            Mutable().SetLineSpacing(kZoSingleLineSpacing);
            return;
        }
        const int64_t points = Current().PointSize();
        if (points != 0) {
            Mutable().SetLineSpacing(
                Clamp(int64_t{twips} * 1024 / (points * 24), 1, kMaxLineSpacing));
        }
    }

    void SpecialCharacter(const ControlWord& word) {
        static constexpr std::pair<std::string_view, std::string_view> kCharacters[] = {
            {"par", "\n"},       {"line", "\n"},     {"\\", "\\"},    {"tab", "\t"},
            {"{", "{"},          {"}", "}"},         {"~", " "},      {"_", "-"},
            {"emdash", "-"},     {"endash", "-"},    {"lquote", "'"}, {"rquote", "'"},
            {"ldblquote", "\""}, {"rdblquote", "\""}};
        for (const auto& [name, text] : kCharacters) {
            if (word.Is(name)) {
                AppendText(text);
                return;
            }
        }
        if (const auto byte = HexByte(word.word)) {
            AppendCharacter(ZoCp1252ToUnicode(*byte));
        } else if (word.Is("u") && word.hasParameter) {
            Unicode(word.parameter);
        } else if (word.Is("uc") && word.hasParameter) {
            groups_.back().unicodeSkip = std::clamp(word.parameter, 0, kMaxUnicodeSkip);
        }
    }

    // \uN carries a signed 16-bit code unit; pairs of them form characters
    // beyond the basic plane.
    void Unicode(int32_t parameter) {
        const auto unit = static_cast<char32_t>(static_cast<uint16_t>(parameter));
        pendingSkip_ = groups_.back().unicodeSkip;
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            highSurrogate_ = unit;
            return;
        }
        char32_t character = unit;
        if (unit >= 0xDC00 && unit <= 0xDFFF) {
            character = highSurrogate_ != 0
                            ? 0x10000 + ((highSurrogate_ - 0xD800) << 10) + (unit - 0xDC00)
                            : 0xFFFD;
        }
        highSurrogate_ = 0;
        AppendCharacter(character);
    }

    // Escapes can name characters that raw text cannot carry: NUL would end
    // the RTF written from the document and CR would be skipped reading it.
    void AppendCharacter(char32_t character) {
        if (character == 0 || character == '\r') {
            return;
        }
        ZoString text;
        ZoAppendUtf8(text, character);
        AppendText(text);
    }

    Cursor cursor_;
    int32_t logPixels_;
    bool suppressIds_;
    std::vector<Group> groups_;
    std::vector<FontEntry> fonts_;
    std::vector<COLORREF> colours_;
    ZoTabKind pendingTabKind_ = ZoTabKind::Left;
    int32_t pendingSkip_ = 0;
    char32_t highSurrogate_ = 0;
    std::shared_ptr<const ZoTextFormat> snapshot_;
    std::vector<ZoTextRun> runs_;
};

}  // namespace

std::optional<std::vector<ZoTextRun>> ZoReadRtf(std::string_view rtf,
                                                const std::shared_ptr<const ZoTextFormat>& style,
                                                int32_t logPixels, bool suppressIds) {
    return Reader(rtf, style, logPixels > 0 ? logPixels : 96, suppressIds).Read();
}
