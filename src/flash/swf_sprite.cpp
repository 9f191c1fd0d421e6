#include "flash/swf_sprite.h"

#include "flash/sequence_writer.h"
#include "flash/swf_file.h"
#include "platform/zo_exception.h"

namespace ZoFlash {

ZoSWFSprite::ZoSWFSprite() = default;
ZoSWFSprite::~ZoSWFSprite() = default;

void ZoSWFSprite::Write(ZoSWFFile& file) {
    // A sprite body may hold only control tags: everything its frames use
    // is defined at movie level first.
    ZoFByteBuffer body;
    body.PutU16(0);  // id, known once the dependencies have theirs
    body.PutU16(static_cast<uint16_t>(TotalFrames()));
    ZoFTagOutputOf out([&body](std::span<const uint8_t> tags) { body.PutBytes(tags); });
    ZoFSequenceWriter writer(file, out);
    for (int i = 0; i < TotalFrames(); ++i)
        writer.WriteFrame(*GetFrame(i));
    ZoWriteTag(body, ZoFTagCode::kEnd, {});
    if (TotalFrames() > 0xFFFF)
        throw ZoException("A sprite cannot have more than 65535 frames.");
    body.PatchU16(0, static_cast<uint16_t>(ClaimCharacterID(file)));
    file.GetFile().WriteRawTag(ZoFTagCode::kDefineSprite, body.Bytes());
}

void ZoSWFSprite::InitialiseForRewriting() {
    ZoSWFObject::InitialiseForRewriting();
    for (int i = 0; i < TotalFrames(); ++i) {
        const ZoSWFFrame& frame = *GetFrame(i);
        for (size_t p = 0; p < frame.GetPlacementCount(); ++p)
            frame.GetEncodedPlacement(p).object->InitialiseForRewriting();
    }
}

}  // namespace ZoFlash
