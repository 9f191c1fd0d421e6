#include "app/app_settings.h"

#include <QSettings>
#include <QStandardPaths>

namespace {

int ReadInt(QSettings& settings, const char* section, const char* value) {
    return settings.value(TeskSettingKey(section, value), TeskWindowPlacement::kNotStored).toInt();
}

}  // namespace

QString TeskSettingKey(const char* section, const char* value) {
    return QString::fromUtf8(section) + QLatin1Char('/') + QString::fromUtf8(value);
}

std::filesystem::path TeskReadDialogFolder(QSettings& settings, const char* value) {
    const QString stored =
        settings.value(TeskSettingKey(kTeskFileDialogsSection, value)).toString();
    if (!stored.isEmpty())
        return stored.toStdString();
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
}

void TeskWriteDialogFolder(QSettings& settings, const char* value,
                           const std::filesystem::path& folder) {
    settings.setValue(TeskSettingKey(kTeskFileDialogsSection, value),
                      QString::fromStdString(folder.string()));
}

bool TeskWindowPlacement::HasGeometry() const noexcept {
    return x != kNotStored && y != kNotStored && width != kNotStored && height != kNotStored;
}

TeskWindowPlacement TeskReadWindowPlacement(QSettings& settings, const char* section) {
    TeskWindowPlacement placement;
    placement.x = ReadInt(settings, section, "Window x pos");
    placement.y = ReadInt(settings, section, "Window y pos");
    placement.width = ReadInt(settings, section, "Window width");
    placement.height = ReadInt(settings, section, "Window height");
    placement.divider = ReadInt(settings, section, "Window divider position");
    return placement;
}

void TeskWriteWindowPlacement(QSettings& settings, const char* section,
                              const TeskWindowPlacement& placement) {
    settings.setValue(TeskSettingKey(section, "Window x pos"), placement.x);
    settings.setValue(TeskSettingKey(section, "Window y pos"), placement.y);
    settings.setValue(TeskSettingKey(section, "Window width"), placement.width);
    settings.setValue(TeskSettingKey(section, "Window height"), placement.height);
    settings.setValue(TeskSettingKey(section, "Window divider position"), placement.divider);
}

void TeskResetSettings(QSettings& settings) {
    settings.clear();
    settings.sync();
}
