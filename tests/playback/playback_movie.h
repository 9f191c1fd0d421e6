#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "playback/capture_batch.h"
#include "playback/png_image.h"

namespace playback {

/// Thrown by the queries below with one line that says why a frame is not
/// there; GoogleTest turns it into a failure of the test that asked.
class PlaybackError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Writes a movie to the given file.
using MovieWriter = std::function<void(const std::filesystem::path& file)>;

/// A movie that its test program plays in Ruffle, together with every other
/// PlaybackMovie of the program, in one browser run. Define them at namespace
/// scope; the first query writes all movies and plays them all.
///
/// CTest runs each test in a process of its own, so a finished batch is kept in
/// the build folder and reused for a few minutes by processes of the same
/// program that would play exactly the same bytes; a file lock makes the others
/// wait while the first one plays.
class PlaybackMovie {
  public:
    /// `name` is unique within the program and names the movie's files;
    /// `frames` are the zero-based frames to capture; `clicks` press and
    /// release the mouse once their frame has been drawn and captured.
    PlaybackMovie(std::string name, std::vector<int> frames, MovieWriter writer,
                  std::vector<Click> clicks = {});

    /// The movie's file after writing.
    std::filesystem::path File() const;

    /// What is wrong with the movie: what the strict SWF validator of
    /// tests/support finds (players forgive much), then every error the
    /// player reported. Throws PlaybackError when nothing could be
    /// played (Chromium did not start, the movie could not be written).
    std::vector<std::string> Problems() const;

    /// The PNG file of a captured frame. Throws PlaybackError when the batch
    /// failed, the movie has problems or the frame was not asked for.
    std::filesystem::path FrameFile(int frame) const;

    /// The captured frame, decoded.
    PngImage Frame(int frame) const;

    /// The URLs the movie tried to open (after clicks on link buttons), in
    /// order; they are refused, never fetched. Throws as Problems().
    std::vector<std::string> OpenedUrls() const;

    /// What the player said about this movie (warnings, renderer, timings).
    const JobReport& Report() const;

    /// The report of the program's whole batch, playing it if needed.
    static const BatchReport& Batch();

  private:
    std::size_t index_;
};

}  // namespace playback
