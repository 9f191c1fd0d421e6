#include "flash/swf_entity.h"

#include "flash/swf_file.h"

namespace ZoFlash {

void ZoSWFEntity::InitialiseForRewriting() {
    fileSerial_ = 0;
    characterId_ = 0;
}

bool ZoSWFEntity::IsDefinedIn(const ZoSWFFile& file) const noexcept {
    return fileSerial_ == file.GetSerial();
}

int ZoSWFEntity::ClaimCharacterID(ZoSWFFile& file) {
    characterId_ = file.TakeCharacterID();
    fileSerial_ = file.GetSerial();
    return characterId_;
}

}  // namespace ZoFlash
