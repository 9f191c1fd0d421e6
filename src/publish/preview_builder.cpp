#include "publish/preview_builder.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

#include "document/file.h"
#include "effects/effect.h"
#include "flash/byte_stream.h"
#include "media/swf_movie.h"
#include "objects/object.h"
#include "platform/atomic_file.h"
#include "platform/temp_directory.h"
#include "publish/movie_compiler.h"

namespace {

// Without a wake-up the worker looks for work this often anyway.
constexpr std::chrono::milliseconds kIdleWait{1000};
// Below normal: the editor's thread stays responsive while a mesh compiles.
constexpr int kWorkerNiceness = 5;

// Linux gives each thread its own nice value; this lowers only the caller's.
void LowerThisThreadsPriority() {
    const auto thread = static_cast<id_t>(gettid());
    setpriority(PRIO_PROCESS, thread, getpriority(PRIO_PROCESS, thread) + kWorkerNiceness);
}

// What compiling a preview needs, so the worker never touches the document:
// the settings, the first effect and the movie-wide objects. Previews never
// hide the player's context menu.
std::unique_ptr<TeskFile> PreviewCopy(const TeskFile& document) {
    auto copy = std::make_unique<TeskFile>();
    ZoAutoPtr<TeskFile::State> state = std::make_unique<TeskFile::RealState>(document.GetState());
    copy->SwapState(state);
    copy->SetDisableRightClick(false, nullptr);
    copy->RemoveEffect(0, nullptr);
    if (document.GetEffectCount() > 0) {
        ZoAutoPtr<TeskEffect> effect;
        document.GetEffect(0)->Clone(effect);
        copy->InsertEffect(effect, 0, nullptr);
    }
    return copy;
}

}  // namespace

struct TeskPreviewBuilder::Request {
    bool quit = false;
    std::unique_ptr<TeskFile> document;
    std::filesystem::path fileName;
    int32_t tag = 0;
};

TeskPreviewBuilder::TeskPreviewBuilder(Compiler compiler)
    : compiler_(compiler ? std::move(compiler) : Compiler(TeskBuildMovie)) {}

TeskPreviewBuilder::~TeskPreviewBuilder() {
    if (!thread_.joinable())
        return;
    Quit();
    thread_.join();
}

void TeskPreviewBuilder::Start() {
    std::lock_guard guard(lock_);
    if (thread_.joinable())
        return;
    ended_ = false;
    thread_ = std::thread(&TeskPreviewBuilder::Run, this);
}

void TeskPreviewBuilder::Build(const TeskFile& document, const std::filesystem::path& fileName,
                               int32_t tag) {
    auto request = std::make_unique<Request>();
    request->document = PreviewCopy(document);
    request->fileName = fileName;
    request->tag = tag;
    std::unique_ptr<Request> dropped;  // deleted outside the lock
    {
        std::lock_guard guard(lock_);
        dropped = std::exchange(pending_, std::move(request));
        woken_ = true;
    }
    wake_.notify_one();
}

void TeskPreviewBuilder::Quit() {
    auto request = std::make_unique<Request>();
    request->quit = true;
    std::unique_ptr<Request> dropped;
    {
        std::lock_guard guard(lock_);
        dropped = std::exchange(pending_, std::move(request));
        woken_ = true;
    }
    wake_.notify_one();
}

int32_t TeskPreviewBuilder::GetLastBuilt(std::filesystem::path& fileName) const {
    std::lock_guard guard(lock_);
    fileName = lastBuiltFile_;
    return lastBuiltTag_;
}

ZoString TeskPreviewBuilder::GetLastError() const {
    std::lock_guard guard(lock_);
    return lastError_;
}

bool TeskPreviewBuilder::IsRunning() const {
    std::lock_guard guard(lock_);
    return thread_.joinable();
}

bool TeskPreviewBuilder::HasEnded() const {
    std::lock_guard guard(lock_);
    return thread_.joinable() && ended_;
}

void TeskPreviewBuilder::Run() {
    LowerThisThreadsPriority();
    while (ProcessRequest()) {
        std::unique_lock guard(lock_);
        wake_.wait_for(guard, kIdleWait, [this] { return woken_; });
        woken_ = false;
    }
    std::lock_guard guard(lock_);
    ended_ = true;
}

// False once the worker has taken a quit request.
bool TeskPreviewBuilder::ProcessRequest() {
    {
        std::lock_guard guard(lock_);
        if (!pending_)
            return true;
        current_ = std::move(pending_);
    }
    if (current_->quit)
        return false;
    BuildCurrent();
    current_.reset();
    return true;
}

bool TeskPreviewBuilder::Superseded() const {
    std::lock_guard guard(lock_);
    return pending_ != nullptr;
}

// Cancelling is cooperative: a build always runs to its end, and only its
// writing is skipped when a newer request arrived meanwhile.
void TeskPreviewBuilder::BuildCurrent() {
    {
        std::lock_guard guard(lock_);
        // The file is about to be replaced: nothing finished is there now.
        if (current_->fileName == lastBuiltFile_)
            lastBuiltFile_.clear();
    }
    ZoString error;
    try {
        ZoAutoPtr<TeskSWFMovie> movie = compiler_(*current_->document);
        if (Superseded())
            return;
        ZoFlash::ZoFMemorySink bytes;
        movie->WriteMovie(bytes);
        ZoAtomicFile out(current_->fileName);
        out.Write(bytes.Bytes());
        out.Commit();
    } catch (const std::exception& e) {
        error = e.what();
    }
    std::lock_guard guard(lock_);
    lastError_ = error;
    if (error.empty()) {
        lastBuiltFile_ = current_->fileName;
        lastBuiltTag_ = current_->tag;
    }
}

int32_t TeskContinuationFrame(int32_t currentFrame, int32_t oldFrameRate, int32_t newFrameRate,
                              int32_t newFrameCount) noexcept {
    if (oldFrameRate <= 0)
        return 0;
    const int64_t timeMs = int64_t{currentFrame} * 1000 / oldFrameRate;
    const int64_t frame = (timeMs * newFrameRate + 500) / 1000;
    return static_cast<int32_t>(std::clamp<int64_t>(frame, 0, std::max(newFrameCount - 1, 0)));
}

TeskPreviewSession::TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

TeskPreviewSession::TeskPreviewSession() : file_{ZoMakeTempFileName(".swf")} {
    builder_.Start();
}

TeskPreviewSession::~TeskPreviewSession() = default;

void TeskPreviewSession::RequestPreview(const TeskFile& document) {
    builder_.Build(document, file_.path, requestCounter_++);
}

std::optional<std::filesystem::path> TeskPreviewSession::PollPreview() {
    std::filesystem::path name;
    const int32_t tag = builder_.GetLastBuilt(name);
    if (tag == loadedTag_ || name.empty())
        return std::nullopt;
    loadedTag_ = tag;
    return name;
}
