#include "flash/swf_movie.h"

#include "flash/sequence_writer.h"
#include "flash/swf_file.h"
#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

// The frame size is stored in twips in 31 signed bits.
constexpr int kMaxMoviePixels = static_cast<int>(kZoSWFMaxSignedField / 20);

}  // namespace

ZoSWFMovie::ZoSWFMovie(const char* filename, int width, int height, int frameRate,
                       const ZoSWFColour& background)
    : filename_(filename ? filename : ""),
      width_(width),
      height_(height),
      frameRate_(frameRate),
      background_(background) {}

ZoSWFMovie::~ZoSWFMovie() = default;

ZoSWFScene* ZoSWFMovie::AddScene() {
    return scenes_.emplace_back(std::make_unique<ZoSWFScene>()).get();
}

ZoSWFScene* ZoSWFMovie::GetScene(int index) const noexcept {
    if (index < 0 || index >= GetSceneCount())
        return nullptr;
    return scenes_[index].get();
}

int ZoSWFMovie::TotalFrames() const noexcept {
    int total = 0;
    for (const auto& scene : scenes_)
        total += scene->TotalFrames();
    return total;
}

bool ZoSWFMovie::WriteMovieFile() {
    // The whole file is encoded in memory first, so bad values throw before
    // any file is touched and a failed write leaves no partial file.
    ZoFFile file;
    SetUp(file);
    if (!file.OpenWriteFile(filename_.c_str(), true))
        return false;
    WriteTo(file);
    return file.Close();
}

void ZoSWFMovie::WriteMovie(ZoFByteSink& sink) {
    ZoFFile file;
    SetUp(file);
    file.OpenWriteSink(sink);
    WriteTo(file);
    file.Close();
}

void ZoSWFMovie::SetUp(ZoFFile& file) const {
    if (width_ < 1 || height_ < 1 || width_ > kMaxMoviePixels || height_ > kMaxMoviePixels)
        throw ZoException(ZoFormat("The movie size %d x %d is out of range.", width_, height_));
    if (frameRate_ < 1 || frameRate_ > 255)
        throw ZoException(ZoFormat("The frame rate %d is outside 1 to 255.", frameRate_));
    if (TotalFrames() > 0xFFFF)
        throw ZoException("A movie cannot have more than 65535 frames.");
    file.SetMovieRect({0, 0, width_ * 20, height_ * 20});
    file.SetFrameRate(frameRate_);
}

void ZoSWFMovie::WriteTo(ZoFFile& file) {
    ZoFSetBackgroundColorTag background(background_);
    file.WriteTag(&background);

    ZoSWFFile swf(file);
    ZoFTagOutputOf out([&file](std::span<const uint8_t> tags) { file.WriteFrameTags(tags); });
    ZoFSequenceWriter writer(swf, out);
    for (const auto& scene : scenes_) {
        // Each scene starts from an empty picture: what the last scene showed
        // is removed by the first frame's difference.
        writer.ForgetPermanents();
        for (int i = 0; i < scene->TotalFrames(); ++i)
            writer.WriteFrame(*scene->GetFrame(i));
    }
    ZoFEndTag end;
    file.WriteTag(&end);
}

}  // namespace ZoFlash
