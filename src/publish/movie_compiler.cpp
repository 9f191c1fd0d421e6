#include "publish/movie_compiler.h"

#include "document/file.h"
#include "effects/effect.h"
#include "flash/byte_stream.h"
#include "flash/swf_button.h"
#include "flash/swf_frame.h"
#include "flash/swf_script.h"
#include "flash/swf_sequence.h"
#include "flash/swf_shape.h"
#include "media/swf_movie.h"
#include "objects/object.h"
#include "platform/atomic_file.h"
#include "platform/zo_exception.h"
#include "platform/zo_units.h"

using namespace ZoFlash;

namespace {

// Inserts `count` copies of frame `held` right after it.
void HoldFrame(ZoSWFScene& scene, int held, int count) {
    for (int i = 0; i < count; ++i) {
        scene.InsertFrame(held + 1)->CopyPlacementsFrom(scene.GetFrame(held));
    }
}

// Appends `count` copies of the scene's last frame.
void HoldLastFrame(ZoSWFScene& scene, int count) {
    const ZoSWFFrame* last = scene.GetLastFrame();
    for (int i = 0; i < count; ++i)
        scene.AddFrame()->CopyPlacementsFrom(last);
}

void PlacePermanently(ZoSWFFrame& frame, ZoAutoInterface2<ZoSWFObject> object, int depth,
                      int clipDepth = 0) {
    frame.PlaceObjectPermanent(std::move(object), nullptr, depth, ZoSWFTransformation(), clipDepth,
                               -1, ZoSWFColourTransformation());
}

ZoAutoInterface2<ZoSWFShape> BlackRectangle(const ZoRect& rect) {
    auto shape = ZoMakeCounted<ZoSWFShape>();
    shape->SetSolidFill(0x000000, 255);
    shape->Rectangle(rect);
    return shape;
}

// An invisible button over the whole movie: only its hit area is drawn.
ZoAutoInterface2<ZoSWFButton> LinkButton(const ZoRect& rect, const ZoString& url,
                                         const ZoString& target) {
    auto button = ZoMakeCounted<ZoSWFButton>();
    button->AddObject(kZoButtonHitTest, BlackRectangle(rect), 1, ZoSWFTransformation(),
                      ZoSWFColourTransformation());
    const int condition = button->AddActionRecord(kZoButtonOverDownToOverUp);
    button->GetActionList(condition).AddActionRecord(
        ZoAutoPtr2<ZoFActionRecord>(new ZoFGetURLAction(url, target)));
    return button;
}

}  // namespace

void CompileEffectFrames(TeskSWFMovie& movie, TeskEffect& effect, int frameRate) {
    ZoSWFScene& scene = *movie.GetScene(0);
    const int first = scene.TotalFrames();
    effect.Compile(movie, true);
    if (scene.TotalFrames() == 0)
        scene.AddFrame();
    const auto& timing = effect.GetTiming();
    HoldFrame(scene, first, ZoHoldFrames(ZoMilliseconds(timing.startHold), frameRate));
    HoldLastFrame(scene, ZoHoldFrames(ZoMilliseconds(timing.finishHold), frameRate));
}

void AddMovieWideObjects(TeskSWFMovie& movie, TeskObject* foreground, TeskObject* background,
                         bool clip, const ZoString& url, const ZoString& target) {
    ZoSWFFrame& frame = *movie.GetScene(0)->GetFrame(0);
    const ZoRect movieRect{0, 0, ZoPixelsToTwips(movie.GetWidth()),
                           ZoPixelsToTwips(movie.GetHeight())};
    if (foreground) {
        PlacePermanently(frame, foreground->MakeShape(movie, movieRect), kTeskForegroundDepth);
    }
    if (background) {
        PlacePermanently(frame, background->MakeShape(movie, movieRect), kTeskBackgroundDepth);
    }
    if (clip) {
        PlacePermanently(frame, BlackRectangle(movieRect), kTeskClipMaskDepth,
                         kTeskForegroundDepth);
    }
    if (!url.empty()) {
        PlacePermanently(frame, LinkButton(movieRect, url, target), kTeskLinkButtonDepth);
    }
}

ZoAutoPtr<TeskSWFMovie> TeskBuildMovie(const TeskFile& file) {
    auto movie = std::make_unique<TeskSWFMovie>();
    movie->SetWidth(file.GetWidth());
    movie->SetHeight(file.GetHeight());
    movie->SetBackgroundColour(ZoSWFColour(file.GetBackgroundColour(), 255));
    movie->SetFrameRate(file.GetFrameRate());
    movie->AddScene();
    for (int i = 0; i < file.GetEffectCount(); ++i) {
        CompileEffectFrames(*movie, *file.GetEffect(i), file.GetFrameRate());
    }
    // A document without effects still makes a movie with one frame to hold
    // the movie-wide pieces.
    ZoSWFScene& scene = *movie->GetScene(0);
    if (scene.TotalFrames() == 0)
        scene.AddFrame();
    if (file.GetDisableRightClick()) {
        ZoSWFScript(kTeskHideMenuScript).TransferActionRecords(scene.GetFrame(0));
    }
    const ZoString url = file.GetLinkEnabled() ? file.GetLinkURL() : ZoString();
    AddMovieWideObjects(*movie, file.GetForegroundObject(), file.GetBackgroundObject(),
                        file.GetClipToMovieSize(), url, file.GetLinkTarget());
    return movie;
}

void TeskWriteMovie(const TeskFile& file, const std::filesystem::path& swfPath) {
    ZoAutoPtr<TeskSWFMovie> movie = TeskBuildMovie(file);
    ZoFMemorySink bytes;
    movie->WriteMovie(bytes);
    ZoAtomicFile out(swfPath);
    out.Write(bytes.Bytes());
    out.Commit();
}

void TeskFile::Compile(const char* swfPath) {
    // Publishing checks the file system for the result; nothing here is shown.
    try {
        TeskWriteMovie(*this, swfPath);
    } catch (const ZoException&) {
    }
}
