// JPEG through libjpeg-turbo. libjpeg reports errors by calling error_exit,
// which must not return; ours longjmps back into the one function that called
// setjmp. Everything with a destructor is constructed before setjmp, so the
// jump skips no destructor, and jpeg_destroy_decompress frees libjpeg's pools.
#include "platform/image_codec_internal.h"

#include <csetjmp>
#include <cstdio>  // jpeglib.h uses FILE without including it

#include <jerror.h>
#include <jpeglib.h>

namespace ZoImageCodec::Detail {
namespace {

// Progressive files may hold any number of scans, each a full pass over the
// coefficients; a few hundred is far beyond any real encoder.
constexpr int kMaxScans = 500;

struct JpegErrorManager {
    jpeg_error_mgr manager{};
    std::jmp_buf jump{};
    char message[JMSG_LENGTH_MAX] = {};
};

JpegErrorManager& ErrorsOf(j_common_ptr info) noexcept {
    return *reinterpret_cast<JpegErrorManager*>(info->err);
}

[[noreturn]] void ExitWithError(j_common_ptr info) {
    JpegErrorManager& errors = ErrorsOf(info);
    info->err->format_message(info, errors.message);
    std::longjmp(errors.jump, 1);
}

// libjpeg only warns about damaged entropy data and fills in grey; a picture
// that is cut short or garbled is refused instead. Harmless oddities (stray
// bytes between markers, unusual versions) are let through.
bool IsDamageWarning(int code) noexcept {
    return code == JWRN_JPEG_EOF || code == JWRN_HIT_MARKER || code == JWRN_MUST_RESYNC ||
           code == JWRN_HUFF_BAD_CODE;
}

void OnMessage(j_common_ptr info, int level) {
    if (level < 0 && IsDamageWarning(info->err->msg_code)) {
        ExitWithError(info);
    }
}

void OnProgress(j_common_ptr info) {
    const auto* decompress = reinterpret_cast<j_decompress_ptr>(info);
    if (decompress->input_scan_number > kMaxScans) {
        std::snprintf(ErrorsOf(info).message, JMSG_LENGTH_MAX, "more than %d scans", kMaxScans);
        std::longjmp(ErrorsOf(info).jump, 1);
    }
}

// Owns the decompressor; constructed before setjmp so that its destructor
// runs on every path.
struct JpegDecompressor {
    jpeg_decompress_struct info{};
    JpegErrorManager errors;
    jpeg_progress_mgr progress{};

    JpegDecompressor() {
        info.err = jpeg_std_error(&errors.manager);
        errors.manager.error_exit = ExitWithError;
        errors.manager.emit_message = OnMessage;
        progress.progress_monitor = OnProgress;
    }
    // Safe on a decompressor that was never created: libjpeg checks its pools.
    ~JpegDecompressor() { jpeg_destroy_decompress(&info); }
    JpegDecompressor(const JpegDecompressor&) = delete;
    JpegDecompressor& operator=(const JpegDecompressor&) = delete;

    // Creation may fail too, so it happens here, after the caller's setjmp.
    void ReadHeader(std::span<const uint8_t> bytes) {
        jpeg_create_decompress(&info);
        info.progress = &progress;
        jpeg_mem_src(&info, bytes.data(), static_cast<unsigned long>(bytes.size()));
        jpeg_read_header(&info, TRUE);
    }
};

// Adobe writes CMYK and YCCK inverted; libjpeg hands both back as CMYK.
void CmykToRgba(const uint8_t* cmyk, uint8_t* rgba, JDIMENSION width) noexcept {
    for (JDIMENSION x = 0; x < width; ++x, cmyk += 4, rgba += 4) {
        const unsigned k = cmyk[3];
        for (int c = 0; c < 3; ++c) {
            rgba[c] = static_cast<uint8_t>((cmyk[c] * k + 127) / 255);
        }
        rgba[3] = 0xFF;
    }
}

void ReadRows(jpeg_decompress_struct& info, ZoDecodedImage& image, std::vector<uint8_t>& cmykRow) {
    const std::size_t stride = static_cast<std::size_t>(image.width) * 4;
    while (info.output_scanline < info.output_height) {
        uint8_t* row = image.rgba.data() + info.output_scanline * stride;
        JSAMPROW target = cmykRow.empty() ? row : cmykRow.data();
        jpeg_read_scanlines(&info, &target, 1);
        if (!cmykRow.empty()) {
            CmykToRgba(cmykRow.data(), row, info.output_width);
        }
    }
}

}  // namespace

ZoDecodedImage DecodeJpeg(std::span<const uint8_t> bytes) {
    JpegDecompressor jpeg;
    ZoDecodedImage image;
    std::vector<uint8_t> cmykRow;
    if (setjmp(jpeg.errors.jump) != 0) {
        ThrowCorrupt("JPEG", jpeg.errors.message);
    }
    jpeg.ReadHeader(bytes);
    const bool cmyk =
        jpeg.info.jpeg_color_space == JCS_CMYK || jpeg.info.jpeg_color_space == JCS_YCCK;
    jpeg.info.out_color_space = cmyk ? JCS_CMYK : JCS_EXT_RGBA;
    // Hostile sizes are refused before libjpeg allocates its buffers. Our own
    // picture comes after the start, by which a progressive file has been read
    // whole, so one that is cut short fails before costing that memory too.
    CheckSize(jpeg.info.image_width, jpeg.info.image_height);
    jpeg_start_decompress(&jpeg.info);
    image = MakeImage(jpeg.info.output_width, jpeg.info.output_height, ZoImageFormat::Jpeg);
    if (cmyk) {
        cmykRow.resize(static_cast<std::size_t>(image.width) * 4);
    }
    ReadRows(jpeg.info, image, cmykRow);
    jpeg_finish_decompress(&jpeg.info);
    return image;
}

std::optional<ZoSize> PeekJpegSize(std::span<const uint8_t> bytes) noexcept {
    JpegDecompressor jpeg;
    if (setjmp(jpeg.errors.jump) != 0) {
        return std::nullopt;
    }
    jpeg.ReadHeader(bytes);
    if (!IsAcceptableSize(jpeg.info.image_width, jpeg.info.image_height)) {
        return std::nullopt;
    }
    return ZoSize{static_cast<int32_t>(jpeg.info.image_width),
                  static_cast<int32_t>(jpeg.info.image_height)};
}

}  // namespace ZoImageCodec::Detail

namespace ZoImageCodec {

bool IsBaselineJpeg(std::span<const uint8_t> bytes) noexcept {
    if (DetectFormat(bytes) != ZoImageFormat::Jpeg) {
        return false;
    }
    Detail::JpegDecompressor jpeg;
    if (setjmp(jpeg.errors.jump) != 0) {
        return false;
    }
    jpeg.ReadHeader(bytes);
    const J_COLOR_SPACE space = jpeg.info.jpeg_color_space;
    return !jpeg.info.progressive_mode && !jpeg.info.arith_code &&
           (space == JCS_GRAYSCALE || space == JCS_YCbCr);
}

}  // namespace ZoImageCodec
