#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "document/file_storage.h"
#include "document/json_project.h"
#include "document_fakes.h"
#include "editor/edit_transaction.h"
#include "effects/cross_fade_effect.h"
#include "effects/register_effects.h"
#include "effects/wave_effect.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"
#include "platform/atomic_file.h"
#include "platform/compiled_file.h"
#include "platform/image_codec.h"
#include "platform/temp_directory.h"
#include "platform/zo_exception.h"
#include "random_fields.h"

namespace {

namespace fs = std::filesystem;
using document_test::RandomFieldVisitor;
using document_test::RecordingObserver;

// Every effect type the tests store, registered whether or not the program
// registers it yet.
void RegisterStoredEffects() {
    TeskRegisterEffects();
    for (const TeskEffectInfo* info : {&TeskCrossFadeEffect::Info(), &TeskWaveEffect::Info()}) {
        if (!TeskEffect::FindInfo(info->guid))
            TeskEffect::Register(*info);
    }
}

class ScriptedPrompter : public TeskFilePrompter {
  public:
    explicit ScriptedPrompter(bool answer = false) : answer_(answer) {}
    bool AskYesNo(std::string_view text) override {
        questions.emplace_back(text);
        return answer_;
    }
    void ShowMessage(std::string_view text) override { messages.emplace_back(text); }

    std::vector<std::string> questions;
    std::vector<std::string> messages;

  private:
    bool answer_;
};

void ClearEffects(TeskFile& document) {
    while (document.GetEffectCount() > 0)
        document.RemoveEffect(0, nullptr);
}

void Randomise(TeskFile& document, uint32_t seed) {
    RandomFieldVisitor random(seed);
    ClearEffects(document);
    for (int i = 0, count = 1 + static_cast<int>(seed % 4); i < count; ++i) {
        ZoAutoPtr<TeskEffect> effect;
        TeskEffect::Create(static_cast<int>((seed + i) % TeskEffect::GetCount()), effect);
        effect->GetState().VisitFields(random);
        document.InsertEffect(effect, i, nullptr);
    }
    ZoAutoPtr<TeskFile::State> state = std::make_unique<TeskFile::RealState>();
    static_cast<TeskFile::RealState&>(*state).VisitFields(random);
    document.SwapState(state);
}

std::vector<std::string> EffectNames(const TeskFile& document) {
    std::vector<std::string> names;
    for (int i = 0; i < document.GetEffectCount(); ++i)
        names.push_back(document.GetEffect(i)->GetInfo().name);
    return names;
}

class FileStorage : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { RegisterStoredEffects(); }
};

TEST_F(FileStorage, SeededRandomDocumentsRoundTripThroughBytesAndJson) {
    for (uint32_t seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        TeskFile original;
        Randomise(original, seed);
        const std::string bytes = TeskDocumentToBytes(original);
        TeskFile loaded;
        TeskLoadDocumentFromBytes(loaded, bytes, "a.vmb");
        EXPECT_EQ(TeskDocumentToBytes(loaded), bytes);

        // JSON may carry settings the project file does not store, so the
        // JSON round trip starts from what a project file gives back.
        const ZoString json = TeskDocumentToJson(loaded);
        TeskFile built;
        TeskAdoptDocument(built, TeskDocumentFromJson(json), "");
        EXPECT_EQ(TeskDocumentToBytes(built), bytes);
        EXPECT_EQ(TeskDocumentToJson(built), json);
    }
}

// A project whose settings and effect list records are written by the callers.
std::string Project(const std::function<void(ZoFolderFile&)>& settings,
                    const std::function<void(ZoFolderFile&)>& effects,
                    const ZoGuid& identifier = kTeskProjectFileGuid) {
    ZoCompiledFile file(kTeskProjectTypeTag, kTeskProjectVersion);
    file.Open(true, true);
    {
        ZoFolderGuard folder(file, 1u, true);
        file.WriteGuid(identifier);
    }
    {
        ZoFolderGuard folder(file, 2u, true);
        settings(file);
    }
    ZoFolderGuard folder(file, 3u, true);
    effects(file);
    return file.ToBytes();
}

void OneWave(ZoFolderFile& file) {
    file.WriteInt32(1);
    ZoFolderGuard effectFolder(file, true);
    TeskWaveEffect wave;
    file.WriteGuid(wave.GetInfo().guid);
    wave.Write(file);
}

// Settings fields 1 to `count` (of 13) with values unlike any default.
void WriteSettings(ZoFolderFile& file, int count) {
    const std::function<void()> fields[] = {
        [&] { file.WriteInt32(640); },
        [&] { file.WriteInt32(480); },
        [&] { file.WriteInt32(25); },
        [&] { file.WriteUInt32(0x123456); },
        [&] {
            ZoFolderGuard publish(file, true);
            file.WriteString("out/movie.swf");
            file.WriteInt32(7);
            for (int i = 0; i < 4; ++i)
                file.WriteBool(true);
        },
        [&] { file.WriteInt32(kTeskResizeKeepAspect); },
        [&] { file.WriteBool(false); },
        [&] { file.WriteBool(true); },
        [&] { WriteObject(file, nullptr); },
        [&] {
            TeskSolidObject solid(0x0000FF);
            WriteObject(file, &solid);
        },
        [&] { file.WriteBool(true); },
        [&] { file.WriteString("https://example.org/"); },
        [&] { file.WriteString("_top"); },
    };
    for (int i = 0; i < count; ++i)
        fields[i]();
}

TEST_F(FileStorage, ShortSettingsRecordsFallBackToTheLoadDefaults) {
    struct Expected {
        int32_t width, height, frameRate;
        uint32_t background;
        bool linkEnabled;
        const char* url;
        const char* target;
        const char* location;
    };
    const struct {
        const char* what;
        int fields;
        Expected expected;
        ZoGuid identifier = kTeskProjectFileGuid;
    } cases[] = {
        {"all fields, another identifier in folder one",
         13,
         {640, 480, 25, 0x123456, true, "https://example.org/", "_top", "out/movie.swf"},
         ZoGuid::NewRandom()},
        {"without the link fields",
         10,
         {640, 480, 25, 0x123456, false, TeskFile::kDefaultLinkURL, "_blank", "out/movie.swf"}},
        {"without the link target",
         12,
         {640, 480, 25, 0x123456, true, "https://example.org/", "_blank", "out/movie.swf"}},
        {"truncated after the frame rate",
         3,
         {400, 300, 12, 0, false, TeskFile::kDefaultLinkURL, "_blank", ""}},
        {"truncated after the publish settings",
         5,
         {400, 300, 12, 0, false, TeskFile::kDefaultLinkURL, "_blank", "out/movie.swf"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        TeskFile document;
        TeskLoadDocumentFromBytes(
            document,
            Project([&](ZoFolderFile& file) { WriteSettings(file, c.fields); }, OneWave,
                    c.identifier),
            "");
        EXPECT_EQ(document.GetWidth(), c.expected.width);
        EXPECT_EQ(document.GetHeight(), c.expected.height);
        EXPECT_EQ(document.GetFrameRate(), c.expected.frameRate);
        EXPECT_EQ(document.GetBackgroundColour(), c.expected.background);
        EXPECT_EQ(document.GetLinkEnabled(), c.expected.linkEnabled);
        EXPECT_EQ(document.GetLinkURL(), c.expected.url);
        EXPECT_EQ(document.GetLinkTarget(), c.expected.target);
        EXPECT_EQ(document.GetPublishSettings().GetLocation(), c.expected.location);
        EXPECT_TRUE(document.GetPublishSettings().GetConfirmOverwrite());
        if (c.fields < 10) {
            EXPECT_EQ(document.GetResizeMode(), kTeskFixedSize);
            EXPECT_TRUE(document.GetDisableRightClick());
            EXPECT_FALSE(document.GetClipToMovieSize());
        } else {
            EXPECT_EQ(document.GetResizeMode(), kTeskResizeKeepAspect);
            EXPECT_FALSE(document.GetDisableRightClick());
            EXPECT_TRUE(document.GetClipToMovieSize());
            EXPECT_EQ(document.GetForegroundObject(), nullptr);
            ASSERT_NE(document.GetBackgroundObject(), nullptr);
            EXPECT_EQ(document.GetBackgroundObject()->GetType(), kTeskSolidObject);
        }
        EXPECT_EQ(EffectNames(document), std::vector<std::string>{"Wave"});
    }
}

TEST_F(FileStorage, EachEffectHasOneFolderInListOrder) {
    TeskFile document;
    ClearEffects(document);
    ZoAutoPtr<TeskEffect> a = std::make_unique<TeskCrossFadeEffect>();
    ZoAutoPtr<TeskEffect> b = std::make_unique<TeskWaveEffect>();
    ZoAutoPtr<TeskEffect> c = std::make_unique<TeskCrossFadeEffect>();
    document.InsertEffect(a, 0, nullptr);
    document.InsertEffect(b, 1, nullptr);
    document.InsertEffect(c, 2, nullptr);

    auto file = ZoCompiledFile::FromBytes(TeskDocumentToBytes(document), kTeskProjectTypeTag);
    ZoFolderGuard list(file, 3u, false);
    EXPECT_EQ(file.ReadInt32(), 3);
    for (const TeskEffect* expected :
         {document.GetEffect(0), document.GetEffect(1), document.GetEffect(2)}) {
        ZoFolderGuard effect(file, false);
        EXPECT_EQ(file.ReadGuid(), expected->GetInfo().guid);
    }
    EXPECT_THROW(file.DescendFolder(nullptr, false, true), ZoFileNonFatalException);

    TeskFile loaded;
    TeskLoadDocumentFromBytes(loaded, TeskDocumentToBytes(document), "");
    EXPECT_EQ(EffectNames(loaded), (std::vector<std::string>{"Cross Fade", "Wave", "Cross Fade"}));
    EXPECT_EQ(loaded.GetSelectedEffectIndex(), 0);
}

// A project with all settings and the effect list `list` writes.
std::string ProjectWithEffectList(const std::function<void(ZoFolderFile&)>& list) {
    return Project([](ZoFolderFile& file) { WriteSettings(file, 13); }, list);
}

TEST_F(FileStorage, FailedLoadsLeaveTheOpenDocumentUnchanged) {
    TeskFile source;
    Randomise(source, 7);
    const std::string good = TeskDocumentToBytes(source);
    std::string flipped = good;
    flipped[good.size() / 2] ^= 0x10;
    const ZoGuid unknown = *ZoGuid::Parse("{00000000-1111-2222-3333-444444444444}");
    const struct {
        const char* what;
        std::string bytes;
        const char* message;
    } cases[] = {
        {"unknown effect GUID", ProjectWithEffectList([&](ZoFolderFile& file) {
             file.WriteInt32(1);
             ZoFolderGuard effect(file, true);
             file.WriteGuid(unknown);
         }),
         "{00000000-1111-2222-3333-444444444444}"},
        {"more effects counted than stored",
         ProjectWithEffectList([](ZoFolderFile& file) { file.WriteInt32(2); }), "effect list"},
        {"negative effect count",
         ProjectWithEffectList([](ZoFolderFile& file) { file.WriteInt32(-1); }), "effect list"},
        {"no effect count", ProjectWithEffectList([](ZoFolderFile&) {}), "effect list"},
        {"truncated", good.substr(0, good.size() - 9), "damaged"},
        {"bit flipped", flipped, "damaged"},
        {"oversized", good + std::string(100, '\0'), "damaged"},
        {"another type tag",
         [&] {
             ZoCompiledFile other(ZoFourCC("TSK2"), kTeskProjectVersion);
             other.Open(true, true);
             return other.ToBytes();
         }(),
         "'TSK2' data, not 'TSK1'"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        TeskFile document;
        Randomise(document, 3);
        RecordingObserver observer;
        observer.AttachToFile(&document);
        const std::string before = TeskDocumentToBytes(document);
        const TeskEffect* firstEffect = document.GetEffect(0);
        try {
            TeskLoadDocumentFromBytes(document, c.bytes, "bad.vmb");
            ADD_FAILURE() << "loaded";
        } catch (const ZoException& error) {
            EXPECT_NE(std::string(error.what()).find(c.message), std::string::npos) << error.what();
        }
        EXPECT_EQ(TeskDocumentToBytes(document), before);
        EXPECT_EQ(document.GetEffect(0), firstEffect);
        EXPECT_EQ(observer.detaches, 0);
    }
}

TEST_F(FileStorage, AnEmptyEffectListLoadsWithNothingSelected) {
    TeskFile document;
    TeskLoadDocumentFromBytes(
        document, ProjectWithEffectList([](ZoFolderFile& file) { file.WriteInt32(0); }), "");
    EXPECT_EQ(document.GetEffectCount(), 0);
    EXPECT_EQ(document.GetSelectedEffectIndex(), -1);
}

std::string ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class FileStorageOnDisk : public FileStorage {
  protected:
    void SetUp() override {
        folder_ = ZoMakeTempFileName("");
        fs::create_directories(folder_);
        path_ = (folder_ / "Movie.vmb").string();
    }
    void TearDown() override { TeskSetFilePrompter(nullptr); }

    fs::path folder_;
    ZoString path_;
};

TEST_F(FileStorageOnDisk, LoadGivesAFreshlyOpenedDocument) {
    TeskFile saved;
    Randomise(saved, 11);
    saved.SetWidth(321, nullptr);
    ASSERT_TRUE(saved.Save(path_.c_str()));
    EXPECT_EQ(saved.GetFilename(), path_);
    EXPECT_FALSE(saved.IsModified());
    EXPECT_EQ(ReadAll(path_), TeskDocumentToBytes(saved));

    TeskFile document;
    RecordingObserver observer;
    observer.AttachToFile(&document);
    auto transaction = std::make_unique<ZoEditor::ZoEditTransaction>("Edit Width");
    document.GetUndoList().Begin(transaction.get());
    document.SetWidth(99, transaction.get());
    ASSERT_TRUE(document.GetUndoList().Add(transaction));
    ASSERT_TRUE(document.IsModified());
    ASSERT_TRUE(document.Load(path_.c_str()));
    EXPECT_EQ(document.GetWidth(), 321);
    EXPECT_EQ(document.GetFilename(), path_);
    EXPECT_EQ(document.GetSelectedEffectIndex(), 0);
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(observer.detaches, 1);
    EXPECT_EQ(observer.attaches, 2);
    EXPECT_FALSE(document.Load((folder_ / "absent.vmb").c_str()));
}

TEST_F(FileStorageOnDisk, ReadOnlyTargetsAreOverwrittenOnlyWhenTheUserAgrees) {
    for (const bool answer : {false, true}) {
        SCOPED_TRACE(answer);
        ZoWriteFileAtomically(path_, "old");
        ::chmod(path_.c_str(), 0444);
        ScriptedPrompter prompter(answer);
        TeskFile document;
        EXPECT_EQ(TeskSaveProject(document, path_, prompter), answer);
        ASSERT_EQ(prompter.questions.size(), 1u);
        EXPECT_EQ(prompter.questions[0],
                  "The file " + path_ +
                      " is write-protected.\n\nDo you want to unprotect the file and save "
                      "it?\n\nIf \"\"no\"\" you should save your project under another "
                      "name\n(use the \"\"Save As...\"\" option on the file menu");
        if (answer) {
            EXPECT_TRUE(prompter.messages.empty());
            EXPECT_EQ(ReadAll(path_), TeskDocumentToBytes(document));
        } else {
            EXPECT_EQ(prompter.messages, std::vector<std::string>{
                                             "An error occurred saving the file '" + path_ + "'"});
            EXPECT_EQ(ReadAll(path_), "old");
        }
        fs::remove(path_);
    }
}

TEST_F(FileStorageOnDisk, OpenReportsMissingAndUnreadableFiles) {
    const ZoString missing = (folder_ / "absent.vmb").string();
    const ZoString notProject = (folder_ / "notes.vmb").string();
    ZoWriteFileAtomically(notProject, "just some text that is not a project");
    const struct {
        const ZoString& path;
        std::string message;
    } cases[] = {
        {missing, "The file '" + missing + "' does not exist"},
        {notProject, "An error occurred opening the file '" + notProject + "'"},
    };
    for (const auto& c : cases) {
        TeskFile document;
        document.SetWidth(77, nullptr);
        ScriptedPrompter prompter;
        EXPECT_FALSE(TeskOpenProject(document, c.path, prompter));
        EXPECT_EQ(prompter.messages, std::vector<std::string>{c.message});
        EXPECT_EQ(document.GetWidth(), 77);
    }
}

TEST_F(FileStorageOnDisk, MissingAndDamagedImageFilesAreReportedOncePerObject) {
    const ZoString present = (folder_ / "present.png").string();
    ZoWriteFileAtomically(present, std::string(ZoBuiltInPictureFile("<PreviewImage1>")));
    const ZoString damaged = (folder_ / "damaged.png").string();
    ZoWriteFileAtomically(damaged, "png");
    TeskFile document;
    ClearEffects(document);
    ZoAutoPtr<TeskEffect> fade = std::make_unique<TeskCrossFadeEffect>();
    ZoAutoPtr<TeskObject> start = std::make_unique<TeskImageObject>("/nowhere/start.png");
    ZoAutoPtr<TeskObject> end = std::make_unique<TeskImageObject>(present);
    fade->SetObject(start, 0);
    fade->SetObject(end, 1);
    document.InsertEffect(fade, 0, nullptr);
    // A second effect is never checked.
    ZoAutoPtr<TeskEffect> second = std::make_unique<TeskCrossFadeEffect>();
    ZoAutoPtr<TeskObject> unchecked = std::make_unique<TeskImageObject>("/nowhere/other.png");
    second->SetObject(unchecked, 0);
    document.InsertEffect(second, 1, nullptr);
    ZoAutoPtr<TeskObject> foreground = std::make_unique<TeskImageObject>(damaged);
    ZoAutoPtr<TeskObject> background = std::make_unique<TeskImageObject>("<PreviewImage2>");
    document.SetForegroundObject(foreground, nullptr);
    document.SetBackgroundObject(background, nullptr);

    ScriptedPrompter sink;
    TeskCheckImageFiles(document, sink);
    EXPECT_EQ(sink.messages,
              (std::vector<std::string>{
                  "Image file '/nowhere/start.png' used by the effect cannot be found.\nClick on "
                  "the Change button to open the object dialog and then click Browse to locate "
                  "the file, or a replacement.",
                  "Image file '" + damaged +
                      "' used for the foreground object cannot be read: The file is not a "
                      "picture in a supported format (PNG, JPEG, GIF or BMP).\nSelect Foreground "
                      "Object from the Edit menu and then click Browse to locate the file, or a "
                      "replacement."}));
}

}  // namespace
