#pragma once
#include <cstdint>

#include "platform/zo_string.h"

class TeskFieldVisitor;

/// Where and how the movie was last published. Never undoable; copied with
/// the document's state.
class TeskPublishSettings {
  public:
    /// Path of the published movie (".swf").
    const ZoString& GetLocation() const noexcept { return location_; }
    /// A different location asks for confirmation before overwriting again.
    void SetLocation(const ZoString& location);

    /// Whether publishing must ask before overwriting existing output. Not
    /// stored in the project file: every loaded document asks again.
    bool GetConfirmOverwrite() const noexcept { return confirmOverwrite_; }
    void SetConfirmOverwrite(bool confirm) noexcept { confirmOverwrite_ = confirm; }

    /// The stored fields; reading them asks for confirmation again.
    void VisitFields(TeskFieldVisitor& visitor);

    int32_t reserved = 0;
    bool embedHTML = false;
    bool reservedFlag = false;
    bool testImmediately = false;
    /// Effects draw centred on the movie's origin, to suit a movie clip.
    bool offsetForMovieClip = false;

  private:
    ZoString location_;
    bool confirmOverwrite_ = true;
};
