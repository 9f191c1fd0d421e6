#pragma once
// Two writers. ZoFFile is the low-level one: header, tags in the order given,
// the file length and frame count patched on Close. ZoSWFFile is the context
// the entities write their definitions into while a movie is written.
#include <cstdint>
#include <filesystem>

#include "flash/byte_stream.h"
#include "flash/swf_tags.h"
#include "platform/zo_rect.h"

namespace ZoFlash {

/// SWF version of every file Vimbo writes.
inline constexpr uint8_t kZoSWFVersion = 5;

/// Low-level SWF file writer. Frames are counted from the ShowFrame tags.
class ZoFFile {
  public:
    ZoFFile();
    ~ZoFFile();
    ZoFFile(const ZoFFile&) = delete;
    ZoFFile& operator=(const ZoFFile&) = delete;

    /// The frame size in twips; before opening.
    void SetMovieRect(const ZoRect& rect) noexcept { rect_ = rect; }
    /// Whole frames per second; before opening. Throws ZoException when
    /// not a positive 8.8 value.
    void SetFrameRate(double frameRate);
    /// Starts a file at `path`; false when `overwrite` is false and the
    /// file exists. The file appears complete on Close() or not at all.
    bool OpenWriteFile(const char* path, bool overwrite);
    /// Starts a file whose bytes go to `sink` as they are written; Close()
    /// patches the header there. After a throw the sink holds a part.
    void OpenWriteSink(ZoFByteSink& sink);
    /// Appends a tag; returns the bytes written.
    int WriteTag(const ZoFTag* tag);
    /// Appends a tag already encoded in `body`.
    void WriteRawTag(ZoFTagCode code, std::span<const uint8_t> body, bool forceLong = false);
    /// Appends the encoded tags of one frame, which end with its ShowFrame.
    void WriteFrameTags(std::span<const uint8_t> tags);
    /// Patches length and frame count and sends the last bytes; false when
    /// the file cannot be written.
    bool Close();
    /// The stream of the open file, for writers that encode tags in place.
    ZoFFileStream& Stream() noexcept { return *stream_; }
    /// ShowFrame tags written so far.
    int GetFrameCount() const noexcept { return frameCount_; }

  private:
    void Begin(ZoFByteSink& sink);
    // The stream of the open file; throws when none is open.
    ZoFFileStream& OpenStream();
    void Finish();
    ZoRect rect_;
    Fixed8 frameRate_{12 << 8};
    std::filesystem::path path_;
    // A file path collects the bytes here, to be renamed into place whole.
    std::unique_ptr<ZoFMemorySink> fileBytes_;
    std::unique_ptr<ZoFFileStream> stream_;
    int frameCount_ = 0;
    size_t frameCountOffset_ = 0;
};

/// The writing context of one movie file: character ids, definitions.
class ZoSWFFile {
  public:
    explicit ZoSWFFile(ZoFFile& file);
    ZoSWFFile(const ZoSWFFile&) = delete;
    ZoSWFFile& operator=(const ZoSWFFile&) = delete;

    /// Defines `entity` (via its Write) unless it already is in this file.
    template <typename Entity>
    void Define(Entity& entity) {
        if (!entity.IsDefinedIn(*this))
            entity.Write(*this);
    }
    /// Appends a definition tag; used by entity Write overrides.
    void AddDefinitionTag(const ZoFDefineTag* tag);
    /// The next free character id; throws ZoException beyond 65535.
    int TakeCharacterID();
    /// Unique over the process, so entities can tell files apart.
    uint64_t GetSerial() const noexcept { return serial_; }
    ZoFFile& GetFile() noexcept { return file_; }

  private:
    ZoFFile& file_;
    uint64_t serial_;
    int nextId_ = 1;
};

}  // namespace ZoFlash
