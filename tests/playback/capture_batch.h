#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace playback {

/// One movie to play and the frames to keep of it. Frames are zero based and
/// counted in frames played, so a looping movie of n frames shows frame k % n
/// at frame k.
/// A mouse click at stage pixel (x, y) once `frame` has been drawn.
struct Click {
    int frame = 0;
    int x = 0;
    int y = 0;
};

struct CaptureJob {
    std::filesystem::path movie;
    std::vector<int> frames;
    std::filesystem::path outDir;  ///< receives frame_<n>.png
    std::vector<Click> clicks;
};

/// What the player said about one movie.
struct JobReport {
    std::filesystem::path movie;
    std::vector<std::string> errors;  ///< console errors, panics, page errors, our own checks
    std::vector<std::string> warnings;
    std::map<int, std::filesystem::path> frames;
    std::vector<std::string> openedUrls;  ///< what the movie tried to open, never fetched
    std::string renderer;
    int loadMs = 0;
    int captureMs = 0;
};

/// What one browser run did. `error` is set when the run as a whole failed
/// (Chromium did not start, Node or its packages are missing); it is one line.
struct BatchReport {
    std::string error;
    std::string renderer;  ///< the renderer every movie was asked to use
    std::string browserVersion;
    std::string ruffleVersion;
    int browserStartMs = 0;
    int totalMs = 0;
    std::vector<JobReport> jobs;  ///< in the order of the jobs
};

/// Plays every job in one Chromium run. `workDir` receives the batch and report
/// files and the runner's error output. Never throws for player or browser
/// trouble: that is reported in the result.
BatchReport RunCaptureBatch(const std::vector<CaptureJob>& jobs,
                            const std::filesystem::path& workDir);

/// Reads a report the runner wrote; `error` says why when it cannot.
BatchReport ReadBatchReport(const std::filesystem::path& reportFile);

}  // namespace playback
