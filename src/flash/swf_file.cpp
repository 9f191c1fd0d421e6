#include "flash/swf_file.h"

#include <atomic>
#include <system_error>

#include "platform/atomic_file.h"
#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

// Offsets inside the header: "FWS", version, then the file length.
constexpr size_t kLengthOffset = 4;

std::atomic<uint64_t> gNextFileSerial{1};

}  // namespace

ZoFFile::ZoFFile() = default;
ZoFFile::~ZoFFile() = default;

void ZoFFile::SetFrameRate(double frameRate) {
    if (!(frameRate > 0))
        throw ZoException("The frame rate must be greater than zero.");
    frameRate_ = ZoToFixed8(frameRate);
}

bool ZoFFile::OpenWriteFile(const char* path, bool overwrite) {
    std::error_code error;
    if (!path || !*path || (!overwrite && std::filesystem::exists(path, error)))
        return false;
    path_ = path;
    fileBytes_ = std::make_unique<ZoFMemorySink>();
    Begin(*fileBytes_);
    return true;
}

void ZoFFile::OpenWriteSink(ZoFByteSink& sink) {
    path_.clear();
    fileBytes_.reset();
    Begin(sink);
}

void ZoFFile::Begin(ZoFByteSink& sink) {
    stream_ = std::make_unique<ZoFFileStream>(sink);
    frameCount_ = 0;
    const uint8_t signature[4] = {'F', 'W', 'S', kZoSWFVersion};
    stream_->PutBytes(signature);
    stream_->PutU32(0);  // length, patched on Close
    ZoFByteBuffer rect;
    ZoWriteRect(rect, {ZoCheckedTwips(rect_.left), ZoCheckedTwips(rect_.right),
                       ZoCheckedTwips(rect_.top), ZoCheckedTwips(rect_.bottom)});
    stream_->PutBytes(rect.Bytes());
    stream_->PutU16(static_cast<uint16_t>(frameRate_.raw));
    frameCountOffset_ = stream_->Size();
    stream_->PutU16(0);  // frame count, patched on Close
}

ZoFFileStream& ZoFFile::OpenStream() {
    if (!stream_)
        throw ZoException("A tag was written before the SWF file was opened.");
    return *stream_;
}

int ZoFFile::WriteTag(const ZoFTag* tag) {
    const size_t before = OpenStream().Size();
    tag->Write(*stream_);
    if (tag->GetCode() == ZoFTagCode::kShowFrame)
        ++frameCount_;
    return static_cast<int>(stream_->Size() - before);
}

void ZoFFile::WriteRawTag(ZoFTagCode code, std::span<const uint8_t> body, bool forceLong) {
    ZoWriteTag(OpenStream(), code, body, forceLong);
    if (code == ZoFTagCode::kShowFrame)
        ++frameCount_;
}

void ZoFFile::WriteFrameTags(std::span<const uint8_t> tags) {
    OpenStream().PutBytes(tags);
    ++frameCount_;
}

void ZoFFile::Finish() {
    if (frameCount_ > 0xFFFF)
        throw ZoException("A movie cannot have more than 65535 frames.");
    if (stream_->Size() > 0xFFFFFFFFu)
        throw ZoException("A movie cannot be larger than 4 GB.");
    stream_->PatchU32(kLengthOffset, static_cast<uint32_t>(stream_->Size()));
    stream_->PatchU16(frameCountOffset_, static_cast<uint16_t>(frameCount_));
}

bool ZoFFile::Close() {
    if (!stream_)
        return false;
    Finish();
    std::unique_ptr<ZoFFileStream> stream = std::move(stream_);
    stream->Flush();
    if (!fileBytes_)
        return true;
    const std::unique_ptr<ZoFMemorySink> bytes = std::move(fileBytes_);
    try {
        ZoAtomicFile file(path_);
        file.Write(bytes->Bytes());
        file.Commit();
        return true;
    } catch (const ZoException&) {
        return false;
    }
}

ZoSWFFile::ZoSWFFile(ZoFFile& file) : file_(file), serial_(gNextFileSerial++) {}

void ZoSWFFile::AddDefinitionTag(const ZoFDefineTag* tag) {
    file_.WriteTag(tag);
}

int ZoSWFFile::TakeCharacterID() {
    if (nextId_ > 0xFFFF)
        throw ZoException("A movie cannot hold more than 65535 characters.");
    return nextId_++;
}

}  // namespace ZoFlash
