#include "playback/capture_batch.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace playback {

namespace {

const std::filesystem::path kRunnerDir = VIMBO_PLAYBACK_RUNNER_DIR;

std::string ShellQuote(const std::string& text) {
    std::string quoted = "'";
    for (char c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

std::string FirstLine(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::string line;
    while (std::getline(in, line)) {
        if (line.find_first_not_of(" \t\r") != std::string::npos) {
            return line;
        }
    }
    return {};
}

BatchReport Failed(std::string error) {
    BatchReport report;
    report.error = std::move(error);
    return report;
}

void WriteBatchFile(const std::vector<CaptureJob>& jobs, const std::filesystem::path& file) {
    nlohmann::json list = nlohmann::json::array();
    for (const CaptureJob& job : jobs) {
        nlohmann::json clicks = nlohmann::json::array();
        for (const Click& click : job.clicks) {
            clicks.push_back({{"frame", click.frame}, {"x", click.x}, {"y", click.y}});
        }
        list.push_back({{"movie", std::filesystem::absolute(job.movie).string()},
                        {"frames", job.frames},
                        {"outDir", std::filesystem::absolute(job.outDir).string()},
                        {"clicks", clicks}});
    }
    std::ofstream(file) << nlohmann::json{{"jobs", list}}.dump(2) << '\n';
}

std::vector<std::string> Lines(const nlohmann::json& value) {
    return value.is_array() ? value.get<std::vector<std::string>>() : std::vector<std::string>{};
}

JobReport ReadJob(const nlohmann::json& job) {
    JobReport report;
    report.movie = job.value("movie", "");
    report.errors = Lines(job.value("errors", nlohmann::json()));
    report.warnings = Lines(job.value("warnings", nlohmann::json()));
    report.openedUrls = Lines(job.value("openedUrls", nlohmann::json()));
    report.renderer = job["renderer"].is_string() ? job["renderer"].get<std::string>() : "";
    report.loadMs = job.value("loadMs", 0);
    report.captureMs = job.value("captureMs", 0);
    for (const nlohmann::json& frame : job.value("frames", nlohmann::json::array())) {
        report.frames[frame.at("frame").get<int>()] = frame.at("file").get<std::string>();
    }
    return report;
}

}  // namespace

BatchReport ReadBatchReport(const std::filesystem::path& reportFile) {
    std::ifstream in(reportFile);
    if (!in) {
        return Failed("no report at " + reportFile.string());
    }
    try {
        const nlohmann::json json = nlohmann::json::parse(in);
        BatchReport report;
        report.error = json.value("error", "");
        report.renderer = json.value("renderer", "");
        report.browserVersion = json.value("browserVersion", "");
        report.ruffleVersion = json.value("ruffleVersion", "");
        report.browserStartMs = json.value("browserStartMs", 0);
        report.totalMs = json.value("totalMs", 0);
        for (const nlohmann::json& job : json.value("jobs", nlohmann::json::array())) {
            report.jobs.push_back(ReadJob(job));
        }
        return report;
    } catch (const nlohmann::json::exception& error) {
        return Failed("unreadable report " + reportFile.string() + ": " + error.what());
    }
}

BatchReport RunCaptureBatch(const std::vector<CaptureJob>& jobs,
                            const std::filesystem::path& workDir) {
    if (!std::filesystem::exists(kRunnerDir / "node_modules" / "playwright-core")) {
        return Failed("the playback Node packages are missing in " + kRunnerDir.string() +
                      "; run scripts/setup");
    }
    std::filesystem::create_directories(workDir);
    const std::filesystem::path batchFile = workDir / "batch.json";
    const std::filesystem::path reportFile = workDir / "report.json";
    const std::filesystem::path errorFile = workDir / "runner-stderr.txt";
    std::filesystem::remove(reportFile);
    WriteBatchFile(jobs, batchFile);

    const char* node = std::getenv("VIMBO_NODE");
    const std::string command =
        ShellQuote(node ? node : "node") + " " + ShellQuote((kRunnerDir / "capture.mjs").string()) +
        " " + ShellQuote(batchFile.string()) + " " + ShellQuote(reportFile.string()) + " 2>" +
        ShellQuote(errorFile.string()) + " >/dev/null";
    const int status = std::system(command.c_str());
    if (!std::filesystem::exists(reportFile)) {
        const std::string why = FirstLine(errorFile);
        return Failed("the playback runner failed (status " + std::to_string(status) + ")" +
                      (why.empty() ? "" : ": " + why));
    }
    BatchReport report = ReadBatchReport(reportFile);
    if (report.error.empty() && report.jobs.size() != jobs.size()) {
        report.error = "the playback runner reported " + std::to_string(report.jobs.size()) +
                       " movies of " + std::to_string(jobs.size());
    }
    return report;
}

}  // namespace playback
