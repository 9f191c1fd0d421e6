// GIF through giflib, first frame only (an image object shows a still
// picture). The transparent palette entry is kept as the picture's own
// transparent colour rather than turned into alpha.
#include "platform/image_codec_internal.h"

#include <gif_lib.h>
#include <algorithm>
#include <cstring>

namespace ZoImageCodec::Detail {
namespace {

struct MemoryReader {
    std::span<const uint8_t> bytes;
    std::size_t position = 0;
};

int ReadFromMemory(GifFileType* gif, GifByteType* target, int count) {
    auto& reader = *static_cast<MemoryReader*>(gif->UserData);
    const std::size_t available = reader.bytes.size() - reader.position;
    const std::size_t copied = std::min(available, static_cast<std::size_t>(std::max(count, 0)));
    std::memcpy(target, reader.bytes.data() + reader.position, copied);
    reader.position += copied;
    return static_cast<int>(copied);
}

// giflib has no text for some failures (a malformed control block, say).
std::string_view Reason(int error) noexcept {
    const char* text = GifErrorString(error);
    return text != nullptr ? text : "";
}

class GifReader {
  public:
    explicit GifReader(std::span<const uint8_t> bytes) : reader_{bytes} {
        int error = 0;
        gif_ = DGifOpen(&reader_, ReadFromMemory, &error);
        if (gif_ == nullptr) {
            ThrowCorrupt("GIF", Reason(error));
        }
    }
    ~GifReader() {
        int error = 0;
        DGifCloseFile(gif_, &error);
    }
    GifReader(const GifReader&) = delete;
    GifReader& operator=(const GifReader&) = delete;

    GifFileType& operator*() const noexcept { return *gif_; }
    GifFileType* operator->() const noexcept { return gif_; }

    void Check(int result) const {
        if (result != GIF_OK) {
            ThrowCorrupt("GIF", Reason(gif_->Error));
        }
    }

  private:
    MemoryReader reader_;
    GifFileType* gif_ = nullptr;
};

// Reads the records up to the first image descriptor, remembering the
// transparent index of a graphic control extension on the way.
int ReadUpToFirstImage(GifReader& gif) {
    int transparentIndex = NO_TRANSPARENT_COLOR;
    for (;;) {
        GifRecordType type = UNDEFINED_RECORD_TYPE;
        gif.Check(DGifGetRecordType(&*gif, &type));
        if (type == IMAGE_DESC_RECORD_TYPE) {
            gif.Check(DGifGetImageDesc(&*gif));
            return transparentIndex;
        }
        if (type != EXTENSION_RECORD_TYPE) {
            ThrowCorrupt("GIF", "no image in the file");
        }
        int code = 0;
        GifByteType* block = nullptr;
        gif.Check(DGifGetExtension(&*gif, &code, &block));
        GraphicsControlBlock control{};
        // A control block of the wrong length is ignored, as browsers do.
        if (code == GRAPHICS_EXT_FUNC_CODE && block != nullptr &&
            DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) {
            transparentIndex = control.TransparentColor;
        }
        while (block != nullptr) {
            gif.Check(DGifGetExtensionNext(&*gif, &block));
        }
    }
}

// Rows in the order the file stores them: interlaced frames come in four
// passes of every 8th, 8th, 4th and 2nd row.
std::vector<int> RowOrder(int height, bool interlaced) {
    std::vector<int> rows;
    rows.reserve(static_cast<std::size_t>(height));
    if (!interlaced) {
        for (int y = 0; y < height; ++y) {
            rows.push_back(y);
        }
        return rows;
    }
    constexpr int kStart[] = {0, 4, 2, 1};
    constexpr int kStep[] = {8, 8, 4, 2};
    for (int pass = 0; pass < 4; ++pass) {
        for (int y = kStart[pass]; y < height; y += kStep[pass]) {
            rows.push_back(y);
        }
    }
    return rows;
}

void PutColour(uint8_t* pixel, const GifColorType& colour) noexcept {
    pixel[0] = colour.Red;
    pixel[1] = colour.Green;
    pixel[2] = colour.Blue;
    pixel[3] = 0xFF;
}

// Areas the first frame does not cover show the transparent colour when the
// file has one, and are otherwise see-through.
void FillUncovered(ZoDecodedImage& image, const ColorMapObject& map, int transparentIndex) {
    if (transparentIndex == NO_TRANSPARENT_COLOR) {
        return;  // MakeImage left every pixel as RGBA (0, 0, 0, 0)
    }
    for (std::size_t at = 0; at < image.rgba.size(); at += 4) {
        PutColour(&image.rgba[at], map.Colors[transparentIndex]);
    }
}

// The frame's palette indices, top-down. They are read before the picture
// is allocated, and grow only as the data really decodes, so a tiny file that
// claims a huge frame fails before it costs memory.
std::vector<GifPixelType> ReadIndices(GifReader& gif) {
    const GifImageDesc& frame = gif->Image;
    const auto width = static_cast<std::size_t>(frame.Width);
    std::vector<GifPixelType> line(width);
    std::vector<GifPixelType> indices;
    const std::vector<int> rows = RowOrder(frame.Height, frame.Interlace);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        gif.Check(DGifGetLine(&*gif, line.data(), frame.Width));
        indices.insert(indices.end(), line.begin(), line.end());
    }
    if (!frame.Interlace) {
        return indices;
    }
    std::vector<GifPixelType> ordered(indices.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::copy_n(&indices[i * width], width,
                    &ordered[static_cast<std::size_t>(rows[i]) * width]);
    }
    return ordered;
}

void PaintFrame(const GifImageDesc& frame, const std::vector<GifPixelType>& indices,
                const ColorMapObject& map, ZoDecodedImage& image) {
    const GifColorType black{0, 0, 0};
    const GifPixelType* index = indices.data();
    for (int y = 0; y < frame.Height; ++y) {
        uint8_t* row =
            &image.rgba[(static_cast<std::size_t>(frame.Top + y) * image.width + frame.Left) * 4];
        for (int x = 0; x < frame.Width; ++x, ++index) {
            // Indices past the palette are a common defect; they show black.
            const bool known = *index < map.ColorCount;
            PutColour(row + x * 4, known ? map.Colors[*index] : black);
        }
    }
}

// The picture's size: the logical screen, widened (as browsers do) when the
// first frame reaches past it, rather than losing pixels.
ZoSize CanvasSize(const GifReader& gif) {
    const GifImageDesc& frame = gif->Image;
    if (frame.Width <= 0 || frame.Height <= 0 || frame.Left < 0 || frame.Top < 0) {
        ThrowCorrupt("GIF", "empty image");
    }
    const int64_t width = std::max<int64_t>(gif->SWidth, int64_t{frame.Left} + frame.Width);
    const int64_t height = std::max<int64_t>(gif->SHeight, int64_t{frame.Top} + frame.Height);
    CheckSize(width, height);
    return {static_cast<int32_t>(width), static_cast<int32_t>(height)};
}

}  // namespace

ZoDecodedImage DecodeGif(std::span<const uint8_t> bytes) {
    GifReader gif(bytes);
    int transparentIndex = ReadUpToFirstImage(gif);
    const ColorMapObject* map =
        gif->Image.ColorMap != nullptr ? gif->Image.ColorMap : gif->SColorMap;
    if (map == nullptr) {
        ThrowCorrupt("GIF", "no colour table");
    }
    if (transparentIndex >= map->ColorCount) {
        transparentIndex = NO_TRANSPARENT_COLOR;
    }
    const ZoSize size = CanvasSize(gif);
    const std::vector<GifPixelType> indices = ReadIndices(gif);
    ZoDecodedImage image = MakeImage(size.cx, size.cy, ZoImageFormat::Gif);
    FillUncovered(image, *map, transparentIndex);
    PaintFrame(gif->Image, indices, *map, image);
    if (transparentIndex != NO_TRANSPARENT_COLOR) {
        const GifColorType& key = map->Colors[transparentIndex];
        image.transparentColour = ZoRGB(key.Red, key.Green, key.Blue);
    }
    UpdateHasAlpha(image);
    return image;
}

std::optional<ZoSize> PeekGifSize(std::span<const uint8_t> bytes) noexcept {
    try {
        GifReader gif(bytes);
        ReadUpToFirstImage(gif);
        return CanvasSize(gif);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}  // namespace ZoImageCodec::Detail
