#include "playback/playback_movie.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <set>

#include "support/swf_reader.h"

namespace playback {

namespace {

const std::filesystem::path kWorkRoot = VIMBO_PLAYBACK_WORK_DIR;
const std::filesystem::path kRunnerDir = VIMBO_PLAYBACK_RUNNER_DIR;

// Long enough for a release run and the sanitizer run after it, which share
// their captures; short enough that a later run plays the movies again.
constexpr auto kReuseWindow = std::chrono::minutes(30);

struct Registration {
    std::string name;
    std::vector<int> frames;
    MovieWriter writer;
    std::vector<Click> clicks;
};

struct MovieState {
    std::filesystem::path file;
    std::string writeError;            // the movie could not be written: nothing to play
    std::vector<std::string> invalid;  // written, but the strict validator objects
    std::size_t job = 0;               // index in the batch when written
    JobReport report;
};

struct Suite {
    std::vector<Registration> registrations;
    bool played = false;
    std::vector<MovieState> movies;
    BatchReport batch;
};

Suite& TheSuite() {
    static Suite suite;
    return suite;
}

std::vector<std::uint8_t> ReadBytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// FNV-1a: only has to tell batches of one program apart.
class Fingerprint {
  public:
    void Add(const void* data, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            hash_ = (hash_ ^ static_cast<const std::uint8_t*>(data)[i]) * 0x100000001B3ULL;
        }
    }
    void Add(const std::vector<std::uint8_t>& bytes) { Add(bytes.data(), bytes.size()); }
    void Add(const std::string& text) { Add(text.data(), text.size() + 1); }
    std::string Hex() const {
        char text[17];
        std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash_));
        return text;
    }

  private:
    std::uint64_t hash_ = 0xCBF29CE484222325ULL;
};

class FileLock {
  public:
    explicit FileLock(const std::filesystem::path& file)
        : fd_(::open(file.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0644)) {
        if (fd_ >= 0) {
            ::flock(fd_, LOCK_EX);
        }
    }
    ~FileLock() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

  private:
    int fd_;
};

std::filesystem::path ProgramWorkDir() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return kWorkRoot / (error ? std::string("tests") : self.stem().string());
}

bool IsFresh(const std::filesystem::path& file) {
    std::error_code error;
    const auto written = std::filesystem::last_write_time(file, error);
    return !error && std::filesystem::file_time_type::clock::now() - written < kReuseWindow;
}

bool CanReuse(const std::filesystem::path& captureDir, const BatchReport& report) {
    if (!report.error.empty() || !IsFresh(captureDir / "report.json")) {
        return false;
    }
    for (const JobReport& job : report.jobs) {
        for (const auto& [frame, file] : job.frames) {
            if (!std::filesystem::exists(file)) {
                return false;
            }
        }
    }
    return true;
}

void RemoveStaleCaptures(const std::filesystem::path& workDir, const std::filesystem::path& keep) {
    for (const auto& entry : std::filesystem::directory_iterator(workDir)) {
        const bool capture = entry.path().filename().string().starts_with("capture-");
        if (capture && entry.path() != keep && !IsFresh(entry.path() / "report.json")) {
            std::filesystem::remove_all(entry.path());
        }
    }
}

std::vector<std::string> Validate(const std::vector<std::uint8_t>& bytes) {
    try {
        return SwfTest::ValidateSwf(bytes).problems;
    } catch (const std::exception& error) {
        return {std::string("the validator gave up: ") + error.what()};
    }
}

// Another process of the program may be playing the same files, so each movie
// appears whole, by renaming. Jobs get their movie's name as output folder.
void WriteMovies(Suite& suite, const std::filesystem::path& movieDir, std::vector<CaptureJob>& jobs,
                 Fingerprint& fingerprint) {
    std::set<std::string> names;
    for (const Registration& registration : suite.registrations) {
        MovieState& movie = suite.movies.emplace_back();
        movie.file = movieDir / (registration.name + ".swf");
        if (!names.insert(registration.name).second) {
            movie.writeError = "two playback movies are named \"" + registration.name + "\"";
            continue;
        }
        // Writers may put files beside the movie (an HTML page), so the draft
        // keeps the movie's own name, in a folder of this process.
        const std::filesystem::path draft =
            movieDir / ("draft-" + std::to_string(::getpid())) / movie.file.filename();
        try {
            std::filesystem::create_directories(draft.parent_path());
            registration.writer(draft);
        } catch (const std::exception& error) {
            std::filesystem::remove(draft);
            movie.writeError = "writing the movie failed: " + std::string(error.what());
            continue;
        }
        const std::vector<std::uint8_t> bytes = ReadBytes(draft);
        if (bytes.empty()) {
            movie.writeError = "the writer left no movie at " + draft.string();
            continue;
        }
        std::filesystem::rename(draft, movie.file);
        std::filesystem::remove_all(draft.parent_path());
        movie.invalid = Validate(bytes);
        movie.job = jobs.size();
        jobs.push_back({movie.file, registration.frames, registration.name, registration.clicks});
        fingerprint.Add(registration.name);
        fingerprint.Add(std::to_string(registration.frames.size()));
        fingerprint.Add(registration.frames.data(), registration.frames.size() * sizeof(int));
        fingerprint.Add(std::to_string(registration.clicks.size()));
        fingerprint.Add(registration.clicks.data(), registration.clicks.size() * sizeof(Click));
        fingerprint.Add(bytes);
    }
}

void ReportTimes(std::size_t movies, const BatchReport& batch) {
    if (!batch.error.empty()) {
        std::printf("[ playback ] failed: %s\n", batch.error.c_str());
        return;
    }
    std::printf("[ playback ] %zu movies in %d ms (browser start %d ms, renderer %s)\n", movies,
                batch.totalMs, batch.browserStartMs, batch.renderer.c_str());
}

void PlayOnce(Suite& suite) {
    const std::filesystem::path workDir = ProgramWorkDir();
    std::filesystem::create_directories(workDir / "movies");
    // The runner and its pinned packages are part of what a capture depends on.
    Fingerprint fingerprint;
    fingerprint.Add(ReadBytes(kRunnerDir / "capture.mjs"));
    fingerprint.Add(ReadBytes(kRunnerDir / "package-lock.json"));

    const FileLock lock(workDir / "capture.lock");
    std::vector<CaptureJob> jobs;
    WriteMovies(suite, workDir / "movies", jobs, fingerprint);
    const std::filesystem::path captureDir = workDir / ("capture-" + fingerprint.Hex());
    for (CaptureJob& job : jobs) {
        job.outDir = captureDir / job.outDir;
    }
    RemoveStaleCaptures(workDir, captureDir);
    suite.batch = ReadBatchReport(captureDir / "report.json");
    if (!CanReuse(captureDir, suite.batch)) {
        std::filesystem::remove_all(captureDir);
        suite.batch = RunCaptureBatch(jobs, captureDir);
        ReportTimes(jobs.size(), suite.batch);
    }
    for (MovieState& movie : suite.movies) {
        if (movie.writeError.empty() && movie.job < suite.batch.jobs.size()) {
            movie.report = suite.batch.jobs[movie.job];
        }
    }
}

// Whatever goes wrong on the way fails every query with the same line.
void Play(Suite& suite) {
    if (suite.played) {
        return;
    }
    suite.played = true;
    try {
        PlayOnce(suite);
    } catch (const std::exception& error) {
        suite.batch.error = std::string("preparing the batch failed: ") + error.what();
    }
    suite.movies.resize(suite.registrations.size());
}

const MovieState& PlayedMovie(std::size_t index) {
    Suite& suite = TheSuite();
    Play(suite);
    const MovieState& movie = suite.movies.at(index);
    const std::string& name = suite.registrations[index].name;
    if (!suite.batch.error.empty()) {
        throw PlaybackError("playback: " + suite.batch.error);
    }
    if (!movie.writeError.empty()) {
        throw PlaybackError("playback of \"" + name + "\": " + movie.writeError);
    }
    return movie;
}

}  // namespace

PlaybackMovie::PlaybackMovie(std::string name, std::vector<int> frames, MovieWriter writer,
                             std::vector<Click> clicks)
    : index_(TheSuite().registrations.size()) {
    TheSuite().registrations.push_back(
        {std::move(name), std::move(frames), std::move(writer), std::move(clicks)});
}

std::filesystem::path PlaybackMovie::File() const {
    return PlayedMovie(index_).file;
}

std::vector<std::string> PlaybackMovie::Problems() const {
    const MovieState& movie = PlayedMovie(index_);
    std::vector<std::string> problems;
    for (const std::string& problem : movie.invalid) {
        problems.push_back("invalid SWF: " + problem);
    }
    problems.insert(problems.end(), movie.report.errors.begin(), movie.report.errors.end());
    return problems;
}

std::filesystem::path PlaybackMovie::FrameFile(int frame) const {
    const std::vector<std::string> problems = Problems();
    const std::string& name = TheSuite().registrations[index_].name;
    if (!problems.empty()) {
        std::string message = "playback of \"" + name + "\": " + problems.front();
        if (problems.size() > 1) {
            message += " (and " + std::to_string(problems.size() - 1) + " more)";
        }
        throw PlaybackError(message);
    }
    const auto& frames = PlayedMovie(index_).report.frames;
    const auto found = frames.find(frame);
    if (found == frames.end()) {
        throw PlaybackError("playback of \"" + name + "\": frame " + std::to_string(frame) +
                            " was not captured; list it when defining the movie");
    }
    return found->second;
}

std::vector<std::string> PlaybackMovie::OpenedUrls() const {
    return PlayedMovie(index_).report.openedUrls;
}

PngImage PlaybackMovie::Frame(int frame) const {
    return ReadPng(FrameFile(frame));
}

const JobReport& PlaybackMovie::Report() const {
    return PlayedMovie(index_).report;
}

const BatchReport& PlaybackMovie::Batch() {
    Suite& suite = TheSuite();
    Play(suite);
    return suite.batch;
}

}  // namespace playback
