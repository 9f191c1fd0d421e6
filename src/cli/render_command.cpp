#include "cli/render_command.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "document/json_project.h"
#include "effects/register_effects.h"
#include "flash/byte_stream.h"
#include "media/swf_movie.h"
#include "platform/atomic_file.h"
#include "platform/image_codec.h"
#include "platform/zo_exception.h"
#include "publish/movie_compiler.h"
#include "render/frame_export.h"
#include "render/movie_player.h"

namespace {

struct RenderOptions {
    std::string input;
    std::string outputFolder;
    std::string frames;
    double scale = 1.0;
    std::string gif;
};

bool IsMovie(const std::vector<uint8_t>& bytes) {
    return bytes.size() >= 3 && (bytes[0] == 'F' || bytes[0] == 'C') && bytes[1] == 'W' &&
           bytes[2] == 'S';
}

// A movie file plays as it is; a project is compiled the way publishing does.
ZoMoviePlayer LoadMovie(const std::string& input) {
    const std::vector<uint8_t> bytes = ZoImageCodec::ReadFileBytes(input);
    if (IsMovie(bytes))
        return ZoMoviePlayer::FromFile(input);
    TeskRegisterEffects();
    TeskFile document;
    TeskLoadProjectFile(document, input);
    ZoFlash::ZoFMemorySink movie;
    TeskBuildMovie(document)->WriteMovie(movie);
    return ZoMoviePlayer(movie.Bytes());
}

int32_t FrameNumber(const std::string& text, int32_t count) {
    size_t used = 0;
    int32_t number = 0;
    try {
        number = std::stoi(text, &used);
    } catch (const std::exception&) {
        used = 0;
    }
    if (used == 0 || used != text.size())
        throw ZoException(ZoFormat("'%s' is not a frame number", text.c_str()));
    if (number < 1 || number > count)
        throw ZoException(ZoFormat("frame %d is not in the movie's frames 1 to %d", number, count));
    return number;
}

// "1,4,10-12" in the frame numbers the editor shows (from 1); nothing
// means every frame.
std::vector<int32_t> ParseFrames(const std::string& list, int32_t count) {
    std::vector<int32_t> frames;
    if (list.empty()) {
        for (int32_t f = 1; f <= count; ++f)
            frames.push_back(f);
        return frames;
    }
    std::stringstream items(list);
    for (std::string item; std::getline(items, item, ',');) {
        const size_t dash = item.find('-');
        const int32_t first = FrameNumber(item.substr(0, dash), count);
        const int32_t last =
            dash == std::string::npos ? first : FrameNumber(item.substr(dash + 1), count);
        if (last < first)
            throw ZoException(ZoFormat("the frame range '%s' runs backwards", item.c_str()));
        for (int32_t f = first; f <= last; ++f)
            frames.push_back(f);
    }
    return frames;
}

// Shown on a terminal only, and only once rendering takes a while.
class ProgressBar {
  public:
    explicit ProgressBar(size_t total) : total_(total), shown_(isatty(STDERR_FILENO) != 0) {}
    ~ProgressBar() {
        if (drawn_)
            std::cerr << "\n";
    }

    void Done(size_t finished) {
        using namespace std::chrono;
        if (!shown_ || steady_clock::now() - start_ < milliseconds(500))
            return;
        constexpr size_t kWidth = 30;
        const size_t filled = finished * kWidth / total_;
        std::cerr << "\rRendering [" << std::string(filled, '#')
                  << std::string(kWidth - filled, ' ') << "] " << finished << "/" << total_
                  << std::flush;
        drawn_ = true;
    }

  private:
    size_t total_;
    bool shown_;
    bool drawn_ = false;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

std::string FrameFileName(int32_t frame) {
    char name[32];
    std::snprintf(name, sizeof name, "frame_%04d.png", frame);
    return name;
}

void RunRender(const RenderOptions& options) {
    const ZoMoviePlayer player = LoadMovie(options.input);
    const std::vector<int32_t> frames = ParseFrames(options.frames, player.FrameCount());
    const std::filesystem::path folder = options.outputFolder;
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw ZoException(
            ZoFormat("cannot create '%s': %s", folder.c_str(), error.message().c_str()));
    std::unique_ptr<ZoGifEncoder> gif;
    ZoRgbaImage image;
    ProgressBar progress(frames.size());
    for (size_t i = 0; i < frames.size(); ++i) {
        player.RenderFrameInto(frames[i] - 1, options.scale, image);
        ZoWriteFileAtomically(folder / FrameFileName(frames[i]), [&] {
            const std::vector<uint8_t> png = ZoEncodePng(image);
            return std::string(png.begin(), png.end());
        }());
        if (!options.gif.empty()) {
            if (!gif)
                gif = std::make_unique<ZoGifEncoder>(image.width, image.height, player.FrameRate());
            gif->AddFrame(image);
        }
        progress.Done(i + 1);
    }
    if (gif) {
        const std::vector<uint8_t> bytes = gif->Finish();
        ZoWriteFileAtomically(options.gif,
                              {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
}

}  // namespace

void VimboAddRenderCommand(CLI::App& app) {
    auto options = std::make_shared<RenderOptions>();
    CLI::App* command = app.add_subcommand(
        "render", "Draw frames of a movie (.swf) or project (.vmb, .json) as PNG files");
    command->add_option("input", options->input, "Movie or project file to draw")->required();
    command
        ->add_option("-o,--output", options->outputFolder,
                     "Folder that receives frame_NNNN.png files")
        ->required();
    command->add_option("--frames", options->frames,
                        "Frames to draw, counted from 1, e.g. 1,5,10-12 (default: all)");
    command->add_option("--scale", options->scale, "Size factor of the frames (default 1)")
        ->check(CLI::Range(0.01, 16.0));
    command->add_option("--gif", options->gif,
                        "Also write the drawn frames as an animated GIF at the movie's frame rate");
    command->callback([options] { RunRender(*options); });
}
