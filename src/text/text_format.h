#pragma once
// The character-and-paragraph format of rich text. A format defines only the
// attributes whose bit is set in `validMask` and inherits the others along
// `parent`; the default style defines them all.
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/zo_colour.h"
#include "platform/zo_string.h"

/// Attribute bits of `ZoTextFormat::validMask`. For the on/off attributes
/// (and the two colour switches) the same bit of `flags` holds the value.
enum ZoTextAttribute : uint32_t {
    kZoTextBold = 0x1,
    kZoTextItalic = 0x2,
    kZoTextUnderline = 0x4,
    kZoTextSubscript = 0x8,
    kZoTextSuperscript = 0x10,
    kZoTextFontName = 0x20,
    kZoTextPointSize = 0x40,
    kZoTextColour = 0x80,
    kZoTextBackColour = 0x100,    ///< flag set: transparent background
    kZoTextShadowColour = 0x200,  ///< flag set: no shadow
    kZoTextIds = 0x400,
    kZoTextAlignment = 0x800,
    kZoTextLineSpacing = 0x1000,
    kZoTextLeftIndent = 0x2000,
    kZoTextRightIndent = 0x4000,
    kZoTextFirstIndent = 0x8000,
    kZoTextBullet = 0x10000,
    kZoTextTabs = 0x20000,
};
inline constexpr uint32_t kZoAllTextAttributes = 0x3FFFF;

enum class ZoTextAlignment : int32_t { Left = 0, Right = 1, Centre = 2, Justify = 3 };
enum class ZoTabKind : int32_t { Left = 0, Right = 1, Centre = 2, Decimal = 3 };

struct ZoTabStop {
    int32_t position = 0;  ///< pixels
    ZoTabKind kind = ZoTabKind::Left;
    friend bool operator==(const ZoTabStop&, const ZoTabStop&) = default;
};

/// Line spacing that means "single": a multiple of the normal line height in
/// 1/1024 units. Negative values are exact line heights in pixels.
inline constexpr int32_t kZoSingleLineSpacing = 1024;

class ZoTextFormat {
  public:
    ZoString name;
    uint32_t validMask = 0;
    uint32_t flags = 0;
    ZoString fontName;
    int32_t pointSize = 0;
    COLORREF colour = 0;
    COLORREF backColour = 0;
    COLORREF shadowColour = 0;
    std::vector<int32_t> ids;
    int32_t alignment = 0;
    int32_t lineSpacing = 0;
    int32_t leftIndent = 0;  ///< pixels, as are the other two indents
    int32_t rightIndent = 0;
    int32_t firstIndent = 0;
    std::vector<ZoTabStop> tabs;
    std::shared_ptr<const ZoTextFormat> parent;

    /// "<default>": Times New Roman 12 points, black on a transparent white,
    /// grey shadow switched off, single spacing, left aligned.
    static ZoTextFormat DefaultStyle();

    /// The format that supplies `attribute`: the first along the parent chain
    /// that defines it, or this one when none does.
    const ZoTextFormat& Owner(ZoTextAttribute attribute) const noexcept;

    bool Flag(ZoTextAttribute attribute) const noexcept;
    bool IsBold() const noexcept { return Flag(kZoTextBold); }
    bool IsItalic() const noexcept { return Flag(kZoTextItalic); }
    bool IsUnderlined() const noexcept { return Flag(kZoTextUnderline); }
    bool IsSubscript() const noexcept { return Flag(kZoTextSubscript); }
    bool IsSuperscript() const noexcept { return Flag(kZoTextSuperscript); }
    bool HasBullet() const noexcept { return Flag(kZoTextBullet); }
    bool HasTransparentBack() const noexcept { return Flag(kZoTextBackColour); }
    bool HasShadow() const noexcept { return !Flag(kZoTextShadowColour); }
    const ZoString& FontName() const noexcept { return Owner(kZoTextFontName).fontName; }
    int32_t PointSize() const noexcept { return Owner(kZoTextPointSize).pointSize; }
    COLORREF Colour() const noexcept { return Owner(kZoTextColour).colour; }
    COLORREF BackColour() const noexcept { return Owner(kZoTextBackColour).backColour; }
    COLORREF ShadowColour() const noexcept { return Owner(kZoTextShadowColour).shadowColour; }
    const std::vector<int32_t>& Ids() const noexcept { return Owner(kZoTextIds).ids; }
    ZoTextAlignment Alignment() const noexcept;
    int32_t LineSpacing() const noexcept { return Owner(kZoTextLineSpacing).lineSpacing; }
    int32_t LeftIndent() const noexcept { return Owner(kZoTextLeftIndent).leftIndent; }
    int32_t RightIndent() const noexcept { return Owner(kZoTextRightIndent).rightIndent; }
    int32_t FirstIndent() const noexcept { return Owner(kZoTextFirstIndent).firstIndent; }
    const std::vector<ZoTabStop>& Tabs() const noexcept { return Owner(kZoTextTabs).tabs; }

    void SetFlag(ZoTextAttribute attribute, bool on) noexcept;
    void SetFontName(ZoString value);
    void SetPointSize(int32_t value) noexcept;
    void SetColour(COLORREF value) noexcept;
    /// `transparent` keeps the colour but shows no background.
    void SetBackColour(COLORREF value, bool transparent) noexcept;
    /// `on` false keeps the colour but draws no shadow.
    void SetShadow(COLORREF value, bool on) noexcept;
    void SetIds(std::vector<int32_t> value);
    void SetAlignment(ZoTextAlignment value) noexcept;
    void SetLineSpacing(int32_t value) noexcept;
    void SetLeftIndent(int32_t value) noexcept;
    void SetRightIndent(int32_t value) noexcept;
    void SetFirstIndent(int32_t value) noexcept;
    void SetTabs(std::vector<ZoTabStop> value);

    /// True when both formats show text the same way: every attribute, as
    /// inherited, is equal. Names and parents do not matter.
    bool SameAppearance(const ZoTextFormat& other) const noexcept;
};
