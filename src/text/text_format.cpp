#include "text/text_format.h"

#include <utility>

namespace {

// Setting an attribute also makes the format define it.
template <class T, class V>
void Define(uint32_t& validMask, ZoTextAttribute attribute, T& field, V&& value) {
    validMask |= attribute;
    field = std::forward<V>(value);
}

}  // namespace

ZoTextFormat ZoTextFormat::DefaultStyle() {
    ZoTextFormat style;
    style.name = "<default>";
    style.validMask = kZoAllTextAttributes;
    style.flags = kZoTextBackColour | kZoTextShadowColour;
    style.fontName = "Times New Roman";
    style.pointSize = 12;
    style.colour = 0;
    style.backColour = 0xFFFFFF;
    style.shadowColour = 0x969696;
    style.lineSpacing = kZoSingleLineSpacing;
    return style;
}

const ZoTextFormat& ZoTextFormat::Owner(ZoTextAttribute attribute) const noexcept {
    for (const ZoTextFormat* format = this; format != nullptr; format = format->parent.get()) {
        if ((format->validMask & attribute) != 0) {
            return *format;
        }
    }
    return *this;
}

bool ZoTextFormat::Flag(ZoTextAttribute attribute) const noexcept {
    return (Owner(attribute).flags & attribute) != 0;
}

ZoTextAlignment ZoTextFormat::Alignment() const noexcept {
    const int32_t value = Owner(kZoTextAlignment).alignment;
    return value >= 0 && value <= 3 ? static_cast<ZoTextAlignment>(value) : ZoTextAlignment::Left;
}

void ZoTextFormat::SetFlag(ZoTextAttribute attribute, bool on) noexcept {
    validMask |= attribute;
    flags = on ? flags | attribute : flags & ~static_cast<uint32_t>(attribute);
}

void ZoTextFormat::SetFontName(ZoString value) {
    Define(validMask, kZoTextFontName, fontName, std::move(value));
}

void ZoTextFormat::SetPointSize(int32_t value) noexcept {
    Define(validMask, kZoTextPointSize, pointSize, value);
}

void ZoTextFormat::SetColour(COLORREF value) noexcept {
    Define(validMask, kZoTextColour, colour, value);
}

void ZoTextFormat::SetBackColour(COLORREF value, bool transparent) noexcept {
    SetFlag(kZoTextBackColour, transparent);
    backColour = value;
}

void ZoTextFormat::SetShadow(COLORREF value, bool on) noexcept {
    SetFlag(kZoTextShadowColour, !on);
    shadowColour = value;
}

void ZoTextFormat::SetIds(std::vector<int32_t> value) {
    Define(validMask, kZoTextIds, ids, std::move(value));
}

void ZoTextFormat::SetAlignment(ZoTextAlignment value) noexcept {
    validMask |= kZoTextAlignment;
    alignment = static_cast<int32_t>(value);
}

void ZoTextFormat::SetLineSpacing(int32_t value) noexcept {
    Define(validMask, kZoTextLineSpacing, lineSpacing, value);
}

void ZoTextFormat::SetLeftIndent(int32_t value) noexcept {
    Define(validMask, kZoTextLeftIndent, leftIndent, value);
}

void ZoTextFormat::SetRightIndent(int32_t value) noexcept {
    Define(validMask, kZoTextRightIndent, rightIndent, value);
}

void ZoTextFormat::SetFirstIndent(int32_t value) noexcept {
    Define(validMask, kZoTextFirstIndent, firstIndent, value);
}

void ZoTextFormat::SetTabs(std::vector<ZoTabStop> value) {
    Define(validMask, kZoTextTabs, tabs, std::move(value));
}

bool ZoTextFormat::SameAppearance(const ZoTextFormat& other) const noexcept {
    // A colour that is switched off shows nothing, so it does not count.
    constexpr ZoTextAttribute kFlags[] = {kZoTextBold,       kZoTextItalic,      kZoTextUnderline,
                                          kZoTextSubscript,  kZoTextSuperscript, kZoTextBullet,
                                          kZoTextBackColour, kZoTextShadowColour};
    for (const auto flag : kFlags) {
        if (Flag(flag) != other.Flag(flag)) {
            return false;
        }
    }
    return FontName() == other.FontName() && PointSize() == other.PointSize() &&
           Colour() == other.Colour() &&
           (HasTransparentBack() || BackColour() == other.BackColour()) &&
           (!HasShadow() || ShadowColour() == other.ShadowColour()) && Ids() == other.Ids() &&
           Alignment() == other.Alignment() && LineSpacing() == other.LineSpacing() &&
           LeftIndent() == other.LeftIndent() && RightIndent() == other.RightIndent() &&
           FirstIndent() == other.FirstIndent() && Tabs() == other.Tabs();
}
