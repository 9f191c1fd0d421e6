#pragma once
// The background builder of the editor's preview. The user never waits for a
// preview: requests replace each other instead of queueing, a build that a
// newer request overtook is not written, and the editor picks finished files
// up by polling without blocking.
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "platform/zo_auto_ptr.h"
#include "platform/zo_string.h"

class TeskFile;
class TeskSWFMovie;

/// Builds preview movies on a worker thread below normal priority. The
/// worker sees only copies made by Build: the settings and clones of the
/// first effect and of the movie-wide objects, so the document needs no lock.
/// All members may be called from any thread.
class TeskPreviewBuilder {
  public:
    /// Turns a document copy into a movie; TeskBuildMovie unless a test
    /// needs builds it can hold up.
    using Compiler = std::function<ZoAutoPtr<TeskSWFMovie>(const TeskFile&)>;

    explicit TeskPreviewBuilder(Compiler compiler = {});
    TeskPreviewBuilder(const TeskPreviewBuilder&) = delete;
    TeskPreviewBuilder& operator=(const TeskPreviewBuilder&) = delete;
    /// Stops a running worker first; a build in progress runs to its end but
    /// is not written.
    ~TeskPreviewBuilder();

    /// Starts the worker unless it runs already.
    void Start();
    /// Asks for a preview of `document` written to `fileName`, tagged `tag`.
    /// Replaces a request that is still waiting, and makes a build in
    /// progress be dropped instead of written. Copies what compiling needs:
    /// the movie settings (the context-menu switch left off), the first
    /// effect and the movie-wide objects.
    void Build(const TeskFile& document, const std::filesystem::path& fileName, int32_t tag);
    /// Asks the worker to end once it has taken this request.
    void Quit();

    /// The tag of the newest preview written (-1 before the first) and, in
    /// `fileName`, its file; the name is empty while that file is being
    /// written again.
    int32_t GetLastBuilt(std::filesystem::path& fileName) const;
    /// Why the newest finished build wrote nothing ("" after a success).
    ZoString GetLastError() const;

    /// Whether a worker has been started (and not yet joined).
    bool IsRunning() const;
    /// Whether the worker has been started and has ended.
    bool HasEnded() const;

  private:
    struct Request;
    void Run();
    bool ProcessRequest();
    void BuildCurrent();
    bool Superseded() const;

    Compiler compiler_;
    mutable std::mutex lock_;
    std::condition_variable wake_;
    bool woken_ = false;
    std::unique_ptr<Request> pending_;
    std::unique_ptr<Request> current_;
    int32_t lastBuiltTag_ = -1;
    std::filesystem::path lastBuiltFile_;
    ZoString lastError_;
    bool ended_ = false;
    std::thread thread_;  // last: joined before the members above go
};

/// The frame a player continues at when a rebuilt preview replaces the movie
/// it showed: the same time, in whole milliseconds, at the new frame rate,
/// rounded, and at most the new movie's last frame. Frames are zero based.
int32_t TeskContinuationFrame(int32_t currentFrame, int32_t oldFrameRate, int32_t newFrameRate,
                              int32_t newFrameCount) noexcept;

/// What the preview pane does with its builder, without a window: one
/// temporary preview file, a counter of requests, and the tag of the movie
/// shown, so that polling reports each finished preview once.
class TeskPreviewSession {
  public:
    /// Starts a builder that writes to a fresh temporary file (removed when
    /// the session ends).
    TeskPreviewSession();
    ~TeskPreviewSession();

    /// Asks for a preview of the document as it is now; call it on every
    /// change of the document.
    void RequestPreview(const TeskFile& document);
    /// The preview file when a newer preview than the one shown has been
    /// written since the last poll, otherwise nothing. Call it every 100 ms;
    /// it never blocks on a build.
    std::optional<std::filesystem::path> PollPreview();
    /// Whether the movie last reported by PollPreview is the newest request's
    /// (read-outs are left empty while a newer one is being built).
    bool ShowsNewestRequest() const noexcept { return loadedTag_ == requestCounter_ - 1; }
    /// Why the newest build failed, or "".
    ZoString LastError() const { return builder_.GetLastError(); }
    const std::filesystem::path& PreviewFile() const noexcept { return file_.path; }

  private:
    struct TemporaryFile {
        std::filesystem::path path;
        ~TemporaryFile();
    };

    TemporaryFile file_;
    int32_t requestCounter_ = 0;
    int32_t loadedTag_ = -1;
    TeskPreviewBuilder builder_;  // last: its worker ends before the file goes
};
