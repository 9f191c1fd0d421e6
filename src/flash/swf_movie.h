#pragma once
#include <memory>
#include <vector>

#include "flash/byte_stream.h"
#include "flash/swf_colour.h"
#include "flash/swf_sequence.h"
#include "platform/zo_string.h"

namespace ZoFlash {

class ZoFFile;

/// The whole movie: header values, scenes, output file.
class ZoSWFMovie {
  public:
    /// Width and height in pixels, frame rate in frames per second.
    ZoSWFMovie(const char* filename, int width, int height, int frameRate,
               const ZoSWFColour& background);
    ZoSWFMovie(const ZoSWFMovie&) = delete;
    ZoSWFMovie& operator=(const ZoSWFMovie&) = delete;
    virtual ~ZoSWFMovie();

    void SetWidth(int width) noexcept { width_ = width; }
    void SetHeight(int height) noexcept { height_ = height; }
    int GetWidth() const noexcept { return width_; }
    int GetHeight() const noexcept { return height_; }
    void SetFrameRate(int frameRate) noexcept { frameRate_ = frameRate; }
    int GetFrameRate() const noexcept { return frameRate_; }
    void SetBackgroundColour(const ZoSWFColour& colour) noexcept { background_ = colour; }
    const ZoSWFColour& GetBackgroundColour() const noexcept { return background_; }
    void SetFilename(const char* filename) { filename_ = filename ? filename : ""; }
    const ZoString& GetFilename() const noexcept { return filename_; }

    /// Appends an empty scene.
    ZoSWFScene* AddScene();
    /// Null when `index` (0-based) is out of range.
    ZoSWFScene* GetScene(int index) const noexcept;
    int GetSceneCount() const noexcept { return static_cast<int>(scenes_.size()); }
    /// Frames over all scenes.
    int TotalFrames() const noexcept;

    /// Writes the file named by SetFilename; false when it cannot be created
    /// or written (no partial file is left). Throws ZoException when the
    /// movie holds values SWF cannot express (size, frame rate, coordinates,
    /// more than 65535 characters or frames).
    bool WriteMovieFile();
    /// Writes the movie's bytes to `sink`; throws as WriteMovieFile.
    void WriteMovie(ZoFByteSink& sink);

  private:
    void SetUp(ZoFFile& file) const;
    void WriteTo(ZoFFile& file);
    ZoString filename_;
    int width_, height_, frameRate_;
    ZoSWFColour background_;
    std::vector<std::unique_ptr<ZoSWFScene>> scenes_;
};

}  // namespace ZoFlash
