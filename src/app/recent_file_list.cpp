#include "app/recent_file_list.h"

#include <QSettings>
#include <algorithm>

namespace {

constexpr const char* kSection = "Recent Files";

QString SlotKey(int index) {
    return QStringLiteral("%1/Recent File%2").arg(QLatin1String(kSection)).arg(index);
}

QString NumberKey() {
    return QStringLiteral("%1/Number").arg(QLatin1String(kSection));
}

}  // namespace

void TeskRecentFileList::Load() {
    entries_.clear();
    max_ = std::max(0, settings_.value(NumberKey(), kDefaultMax).toInt());
    for (int i = 0; i < max_; ++i) {
        const QString path = settings_.value(SlotKey(i)).toString();
        if (!path.isEmpty())
            entries_.push_back(path.toStdString());
    }
}

void TeskRecentFileList::Add(const ZoString& path) {
    std::erase(entries_, path);
    entries_.insert(entries_.begin(), path);
    if (entries_.size() > static_cast<size_t>(max_))
        entries_.erase(entries_.begin() + max_, entries_.end());
    Save();
}

void TeskRecentFileList::Save() {
    if (entries_.size() > static_cast<size_t>(max_))
        entries_.erase(entries_.begin() + max_, entries_.end());
    settings_.setValue(NumberKey(), max_);
    for (int i = 0; i < max_; ++i) {
        if (static_cast<size_t>(i) < entries_.size())
            settings_.setValue(SlotKey(i),
                               QString::fromStdString(entries_[static_cast<size_t>(i)]));
        else
            settings_.remove(SlotKey(i));
    }
}
