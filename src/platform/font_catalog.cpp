#include "platform/font_catalog.h"

#include <fontconfig/fontconfig.h>

#include <map>
#include <mutex>
#include <tuple>
#include <vector>

#include "platform/zo_exception.h"

namespace {

struct Match {
    ZoString path;
    int32_t index = 0;
    bool acceptable = false;  // the requested family or one of its strong aliases
};

class PatternHolder {
  public:
    explicit PatternHolder(FcPattern* pattern) : pattern_(pattern) {}
    ~PatternHolder() {
        if (pattern_ != nullptr) {
            FcPatternDestroy(pattern_);
        }
    }
    PatternHolder(const PatternHolder&) = delete;
    PatternHolder& operator=(const PatternHolder&) = delete;
    FcPattern* get() const noexcept { return pattern_; }

  private:
    FcPattern* pattern_;
};

// Families fontconfig binds strongly to the request: the family itself and
// its metric-compatible aliases. Weakly bound families are mere look-alikes.
std::vector<ZoString> StronglyBoundFamilies(FcPattern* substituted) {
    std::vector<ZoString> families;
    FcValue value;
    FcValueBinding binding;
    for (int id = 0;
         FcPatternGetWithBinding(substituted, FC_FAMILY, id, &value, &binding) == FcResultMatch;
         ++id) {
        if (value.type == FcTypeString && binding == FcValueBindingStrong) {
            families.push_back(ZoToLowerAscii(reinterpret_cast<const char*>(value.u.s)));
        }
    }
    return families;
}

bool HasAnyFamily(FcPattern* font, const std::vector<ZoString>& families) {
    FcChar8* name = nullptr;
    for (int id = 0; FcPatternGetString(font, FC_FAMILY, id, &name) == FcResultMatch; ++id) {
        const ZoString lower = ZoToLowerAscii(reinterpret_cast<const char*>(name));
        for (const auto& family : families) {
            if (family == lower) {
                return true;
            }
        }
    }
    return false;
}

Match FindMatch(FcConfig* config, std::string_view family, bool bold, bool italic) {
    PatternHolder pattern(FcPatternCreate());
    const ZoString name(family);
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(name.c_str()));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);
    const std::vector<ZoString> families = StronglyBoundFamilies(pattern.get());
    FcDefaultSubstitute(pattern.get());

    FcResult result = FcResultNoMatch;
    PatternHolder font(FcFontMatch(config, pattern.get(), &result));
    Match match;
    FcChar8* file = nullptr;
    if (font.get() == nullptr ||
        FcPatternGetString(font.get(), FC_FILE, 0, &file) != FcResultMatch) {
        return match;
    }
    match.path = reinterpret_cast<const char*>(file);
    int index = 0;
    if (FcPatternGetInteger(font.get(), FC_INDEX, 0, &index) == FcResultMatch) {
        match.index = index;
    }
    match.acceptable = HasAnyFamily(font.get(), families);
    return match;
}

class Catalog {
  public:
    static Catalog& Instance() {
        static Catalog catalog;
        return catalog;
    }

    std::shared_ptr<ZoFontFace> Find(std::string_view family, bool bold, bool italic) {
        std::lock_guard lock(mutex_);
        const auto key = std::make_tuple(ZoToLowerAscii(family), bold, italic);
        if (const auto found = requests_.find(key); found != requests_.end()) {
            return found->second;
        }
        Match match = FindMatch(config_, family, bold, italic);
        if (!match.acceptable && family != kZoFallbackFontFamily) {
            const Match fallback = FindMatch(config_, kZoFallbackFontFamily, bold, italic);
            if (!fallback.path.empty()) {
                match = fallback;
            }
        }
        if (match.path.empty()) {
            throw ZoException("No font could be found on this system.");
        }
        auto face = Open(match.path, match.index);
        requests_.emplace(key, face);
        return face;
    }

    bool Has(std::string_view family) {
        std::lock_guard lock(mutex_);
        return FindMatch(config_, family, false, false).acceptable;
    }

    ~Catalog() { FcConfigDestroy(config_); }
    Catalog(const Catalog&) = delete;
    Catalog& operator=(const Catalog&) = delete;

  private:
    Catalog() : config_(FcInitLoadConfigAndFonts()) {
        if (config_ == nullptr) {
            throw ZoException("The font configuration could not be loaded.");
        }
    }

    // Requests that resolve to the same file share one face, and so one set
    // of cached sizes.
    std::shared_ptr<ZoFontFace> Open(const ZoString& path, int32_t index) {
        auto& slot = files_[{path, index}];
        if (!slot) {
            slot = std::make_shared<ZoFontFace>(path, index);
        }
        return slot;
    }

    std::mutex mutex_;
    FcConfig* config_;
    std::map<std::tuple<ZoString, bool, bool>, std::shared_ptr<ZoFontFace>> requests_;
    std::map<std::pair<ZoString, int32_t>, std::shared_ptr<ZoFontFace>> files_;
};

}  // namespace

std::shared_ptr<ZoFontFace> ZoFindFontFace(std::string_view family, bool bold, bool italic) {
    return Catalog::Instance().Find(family, bold, italic);
}

bool ZoHasFontFamily(std::string_view family) {
    return Catalog::Instance().Has(family);
}
