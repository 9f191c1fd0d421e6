#include "flash/swf_resource_manager.h"

namespace ZoFlash {

ZoSWFResourceManager::ZoSWFResourceManager(ZoSWFMovie* movie) : movie_(movie) {}

ZoSWFResourceManager::~ZoSWFResourceManager() = default;

ZoAutoInterface2<ZoSWFFont> ZoSWFResourceManager::GetFont(const ZoString& name, bool bold,
                                                          bool italic) {
    for (const auto& font : fonts_)
        if (font->GetName() == name && font->IsBold() == bold && font->IsItalic() == italic)
            return font;
    auto font = ZoMakeCounted<ZoSWFFont>(name.c_str(), bold, italic);
    font->SetGlyphSource(source_);
    fonts_.push_back(font);
    return font;
}

}  // namespace ZoFlash
