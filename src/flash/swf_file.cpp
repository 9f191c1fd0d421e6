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

class AtomicFileSink : public ZoFByteSink {
  public:
    explicit AtomicFileSink(ZoAtomicFile& file) : file_(file) {}
    void Append(std::span<const uint8_t> bytes) override { file_.Write(bytes); }

  private:
    ZoAtomicFile& file_;
};

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
    sink_ = nullptr;
    Begin();
    return true;
}

void ZoFFile::OpenWriteSink(ZoFByteSink& sink) {
    path_.clear();
    sink_ = &sink;
    Begin();
}

void ZoFFile::Begin() {
    stream_ = std::make_unique<ZoFFileStream>();
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

int ZoFFile::WriteTag(const ZoFTag* tag) {
    if (!stream_)
        throw ZoException("A tag was written before the SWF file was opened.");
    const size_t before = stream_->Size();
    tag->Write(*stream_);
    if (tag->GetCode() == ZoFTagCode::kShowFrame)
        ++frameCount_;
    return static_cast<int>(stream_->Size() - before);
}

void ZoFFile::WriteRawTag(ZoFTagCode code, std::span<const uint8_t> body, bool forceLong) {
    if (!stream_)
        throw ZoException("A tag was written before the SWF file was opened.");
    ZoWriteTag(*stream_, code, body, forceLong);
    if (code == ZoFTagCode::kShowFrame)
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
    if (sink_) {
        stream->CopyTo(*sink_);
        return true;
    }
    try {
        ZoAtomicFile file(path_);
        AtomicFileSink sink(file);
        stream->CopyTo(sink);
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
