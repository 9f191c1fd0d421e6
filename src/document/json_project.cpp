#include "document/json_project.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "document/json_field_reader.h"
#include "document/json_field_writer.h"
#include "effects/wave_effect.h"
#include "media/image_path.h"
#include "objects/object.h"
#include "platform/zo_exception.h"

namespace {

constexpr const char* kEffectKey = "effect";
constexpr const char* kEffectsKey = "effects";

const TeskEffectInfo* FindEffectByName(std::string_view name) {
    for (int i = 0; i < TeskEffect::GetCount(); ++i) {
        if (TeskEffect::GetInfo(i).name == name)
            return &TeskEffect::GetInfo(i);
    }
    return nullptr;
}

ZoAutoPtr<TeskEffect> ReadEffect(const TeskJson& entry, const std::string& path) {
    TeskJsonFieldReader reader(entry, path);
    const auto name = entry.find(kEffectKey);
    if (name == entry.end() || !name->is_string())
        throw ZoException(ZoFormat("Key '%s.effect' must name an effect", path.c_str()));
    const TeskEffectInfo* info = FindEffectByName(name->get<std::string>());
    if (!info) {
        throw ZoException(ZoFormat("Key '%s.effect' names no effect: '%s'", path.c_str(),
                                   name->get<std::string>().c_str()));
    }
    ZoAutoPtr<TeskEffect> effect = info->factory();
    reader.Consume(kEffectKey);
    effect->GetState().VisitFields(reader);
    reader.CheckAllKeysUsed();
    return effect;
}

std::vector<ZoAutoPtr<TeskEffect>> ReadEffects(const TeskJson& list) {
    if (!list.is_array())
        throw ZoException("Key 'effects' must be an array");
    std::vector<ZoAutoPtr<TeskEffect>> effects;
    for (size_t i = 0; i < list.size(); ++i)
        effects.push_back(ReadEffect(list[i], "effects[" + std::to_string(i) + "]"));
    return effects;
}

}  // namespace

ZoString TeskDocumentToJson(const TeskFile& document) {
    TeskJson json;
    TeskJsonFieldWriter writer(json);
    // The visitor interface is shared with reading, so it takes the fields
    // by reference; a copy keeps the document itself untouched.
    TeskFile::RealState state(document.GetState());
    state.VisitFields(writer);
    TeskJson& effects = json[kEffectsKey] = TeskJson::array();
    for (int i = 0; i < document.GetEffectCount(); ++i) {
        TeskEffect& effect = *document.GetEffect(i);
        TeskJson entry{{kEffectKey, effect.GetInfo().name}};
        TeskJsonFieldWriter effectWriter(entry);
        effect.GetState().VisitFields(effectWriter);
        effects.push_back(std::move(entry));
    }
    return json.dump(2) + "\n";
}

TeskLoadedDocument TeskDocumentFromJson(std::string_view text) {
    TeskJson json;
    try {
        json = TeskJson::parse(text);
    } catch (const TeskJson::parse_error& error) {
        throw ZoException(ZoFormat("The JSON project cannot be parsed: %s", error.what()));
    }
    TeskLoadedDocument loaded;
    loaded.state = std::make_unique<TeskFile::RealState>();
    TeskJsonFieldReader reader(json, "");
    reader.Consume(kEffectsKey);
    loaded.state->VisitFields(reader);
    reader.CheckAllKeysUsed();
    if (const auto list = json.find(kEffectsKey); list != json.end())
        loaded.effects = ReadEffects(*list);
    else
        loaded.effects.push_back(std::make_unique<TeskWaveEffect>());
    return loaded;
}

namespace {

ZoString ReadTextFile(const ZoString& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw ZoException(ZoFormat("The file '%s' does not exist or cannot be read", path.c_str()));
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void LoadJsonProject(TeskFile& document, const ZoString& path) {
    TeskLoadedDocument loaded;
    try {
        loaded = TeskDocumentFromJson(ReadTextFile(path));
    } catch (const ZoException& error) {
        throw ZoException(ZoFormat("%s: %s", path.c_str(), error.what()));
    }
    // Image names in the JSON are relative to the JSON file's folder, made
    // absolute so that they resolve whatever the working folder is later.
    std::error_code error;
    TeskSetProjectFolder(std::filesystem::absolute(path, error).parent_path().string());
    TeskAdoptDocument(document, std::move(loaded), "");
}

void LoadBinaryProject(TeskFile& document, const ZoString& path) {
    bool loaded = false;
    try {
        loaded = document.Load(path.c_str());
    } catch (const std::exception& error) {
        throw ZoException(ZoFormat("%s: %s", path.c_str(), error.what()));
    }
    if (!loaded) {
        std::error_code error;
        throw ZoException(ZoFormat(std::filesystem::exists(path, error)
                                       ? "An error occurred opening the file '%s'"
                                       : "The file '%s' does not exist",
                                   path.c_str()));
    }
}

}  // namespace

void TeskLoadProjectFile(TeskFile& document, const ZoString& path) {
    if (ZoToLowerAscii(std::filesystem::path(path).extension().string()) == ".json")
        LoadJsonProject(document, path);
    else
        LoadBinaryProject(document, path);
    // Missing or damaged pictures are warnings: the project still publishes,
    // drawing nothing for them.
    TeskCheckImageFiles(document, TeskGetFilePrompter());
}
