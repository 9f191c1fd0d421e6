#pragma once
// The File menu's most recently opened or saved projects, newest first,
// written back to the settings on every change.
#include <vector>

#include "platform/zo_string.h"

class QSettings;

class TeskRecentFileList {
  public:
    static constexpr int kDefaultMax = 4;

    explicit TeskRecentFileList(QSettings& settings) : settings_(settings) {}

    /// Reads the list and its length limit from "Recent Files".
    void Load();
    /// Puts `path` first (dropping an equal entry and the oldest beyond the
    /// limit), then saves.
    void Add(const ZoString& path);
    /// Writes the limit and one value per slot, deleting unused slots.
    void Save();

    const std::vector<ZoString>& GetEntries() const noexcept { return entries_; }
    int GetMax() const noexcept { return max_; }

  private:
    QSettings& settings_;
    std::vector<ZoString> entries_;
    int max_ = kDefaultMax;
};
